// A direction of single precision.
#pragma once
#include <maya/MStatus.h>

#include <cmath>
#include <iostream>
OPENMAYA_MAJOR_NAMESPACE_OPEN
#define MFloatVector_kTol 1.0e-5F
class MFloatVector {
 public:
  MFloatVector() = default;
  MFloatVector(float xx, float yy, float zz = 0) : x(xx), y(yy), z(zz) {}
  MFloatVector(const float v[3]) : x(v[0]), y(v[1]), z(v[2]) {}
  MFloatVector(const double v[3]) : x(float(v[0])), y(float(v[1])), z(float(v[2])) {}
  MFloatVector(const MVector& v);
  MFloatVector(const MFloatPoint& p);
  float operator[](unsigned int i) const { return (&x)[i]; }
  float& operator[](unsigned int i) { return (&x)[i]; }
  float operator()(unsigned int i) const { return (&x)[i]; }
  float& operator()(unsigned int i) { return (&x)[i]; }
  MFloatVector operator+(const MFloatVector& o) const { return {x + o.x, y + o.y, z + o.z}; }
  MFloatVector operator-(const MFloatVector& o) const { return {x - o.x, y - o.y, z - o.z}; }
  MFloatVector operator-() const { return {-x, -y, -z}; }
  MFloatVector operator*(float s) const { return {x * s, y * s, z * s}; }
  MFloatVector operator/(float s) const { return {x / s, y / s, z / s}; }
  MFloatVector operator*(const MFloatMatrix& m) const;
  MFloatVector operator^(const MFloatVector& o) const { return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x}; }
  MFloatVector& operator+=(const MFloatVector& o) { return *this = *this + o; }
  MFloatVector& operator-=(const MFloatVector& o) { return *this = *this - o; }
  MFloatVector& operator*=(float s) { return *this = *this * s; }
  MFloatVector& operator/=(float s) { return *this = *this / s; }
  MFloatVector& operator*=(const MFloatMatrix& m) { return *this = *this * m; }
  float operator*(const MFloatVector& o) const { return x * o.x + y * o.y + z * o.z; }
  bool operator==(const MFloatVector& o) const { return x == o.x && y == o.y && z == o.z; }
  bool operator!=(const MFloatVector& o) const { return !(*this == o); }
  float length() const { return std::sqrt(*this * *this); }
  MFloatVector normal() const { return length() > 0 ? *this * (1 / length()) : *this; }
  MStatus normalize() { return *this = normal(), MStatus::kSuccess; }
  float angle(const MFloatVector& o) const { return std::acos(std::fmax(-1.0F, std::fmin(1.0F, normal() * o.normal()))); }
  bool isEquivalent(const MFloatVector& o, float tolerance = MFloatVector_kTol) const { return (*this - o).length() <= tolerance; }
  bool isParallel(const MFloatVector& o, float tolerance = MFloatVector_kTol) const { return 1 - std::fabs(normal() * o.normal()) <= tolerance; }
  MStatus get(float d[3]) const { return d[0] = x, d[1] = y, d[2] = z, MStatus::kSuccess; }
  static const MFloatVector zero, one, xAxis, yAxis, zAxis, xNegAxis, yNegAxis, zNegAxis;
  float x = 0, y = 0, z = 0;
};
inline MFloatVector operator*(float s, const MFloatVector& v) { return v * s; }
inline std::ostream& operator<<(std::ostream& os, const MFloatVector& v) { return os << "[" << v.x << ", " << v.y << ", " << v.z << "]"; }
OPENMAYA_MAJOR_NAMESPACE_CLOSE
