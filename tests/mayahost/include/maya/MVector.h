// A direction with a length.
#pragma once
#include <maya/MStatus.h>

#include <cmath>
#include <iostream>
OPENMAYA_MAJOR_NAMESPACE_OPEN
#define MVector_kTol 1.0e-10
class MVector {
 public:
  enum Axis { kXaxis, kYaxis, kZaxis, kWaxis };
  MVector() = default;
  MVector(double xx, double yy, double zz = 0) : x(xx), y(yy), z(zz) {}
  MVector(const double v[3]) : x(v[0]), y(v[1]), z(v[2]) {}
  MVector(const float v[3]) : x(v[0]), y(v[1]), z(v[2]) {}
  MVector(const MPoint& p);
  MVector(const MFloatVector& v);
  double operator[](unsigned int i) const { return (&x)[i]; }
  double& operator[](unsigned int i) { return (&x)[i]; }
  double operator()(unsigned int i) const { return (&x)[i]; }
  double& operator()(unsigned int i) { return (&x)[i]; }
  MVector operator+(const MVector& o) const { return {x + o.x, y + o.y, z + o.z}; }
  MVector operator-(const MVector& o) const { return {x - o.x, y - o.y, z - o.z}; }
  MVector operator-() const { return {-x, -y, -z}; }
  MVector operator*(double s) const { return {x * s, y * s, z * s}; }
  MVector operator/(double s) const { return {x / s, y / s, z / s}; }
  MVector& operator+=(const MVector& o) { return *this = *this + o; }
  MVector& operator-=(const MVector& o) { return *this = *this - o; }
  MVector& operator*=(double s) { return *this = *this * s; }
  MVector& operator/=(double s) { return *this = *this / s; }
  double operator*(const MVector& o) const { return x * o.x + y * o.y + z * o.z; }
  MVector operator^(const MVector& o) const { return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x}; }
  MVector operator*(const MMatrix& m) const;
  MVector& operator*=(const MMatrix& m) { return *this = *this * m; }
  bool operator==(const MVector& o) const { return x == o.x && y == o.y && z == o.z; }
  bool operator!=(const MVector& o) const { return !(*this == o); }
  double length() const { return std::sqrt(*this * *this); }
  MVector normal() const { return length() > 0 ? *this / length() : *this; }
  MStatus normalize() { return *this = normal(), MStatus::kSuccess; }
  double angle(const MVector& o) const { return std::acos(std::fmax(-1.0, std::fmin(1.0, normal() * o.normal()))); }
  bool isEquivalent(const MVector& o, double tolerance = MVector_kTol) const { return (*this - o).length() <= tolerance; }
  bool isParallel(const MVector& o, double tolerance = MVector_kTol) const { return 1 - std::fabs(normal() * o.normal()) <= tolerance; }
  MVector rotateBy(double xx, double yy, double zz, double ww) const;
  MVector rotateBy(const MQuaternion& q) const;
  MVector rotateBy(const MEulerRotation& e) const;
  MVector rotateBy(Axis axis, double angle) const;
  MQuaternion rotateTo(const MVector& o) const;
  MVector transformAsNormal(const MMatrix& m) const;
  MStatus get(double d[3]) const { return d[0] = x, d[1] = y, d[2] = z, MStatus::kSuccess; }
  static const MVector zero, one, xAxis, yAxis, zAxis, xNegAxis, yNegAxis, zNegAxis;
  double x = 0, y = 0, z = 0;
};
inline MVector operator*(double s, const MVector& v) { return v * s; }
MVector operator*(const MMatrix& m, const MVector& v);
inline std::ostream& operator<<(std::ostream& os, const MVector& v) { return os << "[" << v.x << ", " << v.y << ", " << v.z << "]"; }
OPENMAYA_MAJOR_NAMESPACE_CLOSE
