// A place.
#pragma once
#include <maya/MVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
#define MPoint_kTol 1.0e-10
class MPoint {
 public:
  MPoint() = default;
  MPoint(double xx, double yy, double zz = 0, double ww = 1) : x(xx), y(yy), z(zz), w(ww) {}
  MPoint(const MVector& v) : x(v.x), y(v.y), z(v.z) {}
  MPoint(const MFloatPoint& p);
  MPoint(const double p[4]) : x(p[0]), y(p[1]), z(p[2]), w(p[3]) {}
  MPoint(const float p[4]) : x(p[0]), y(p[1]), z(p[2]), w(p[3]) {}
  MPoint& operator=(const MPoint&) = default;
  MPoint(const MPoint&) = default;
  double operator[](unsigned int i) const { return (&x)[i]; }
  double& operator[](unsigned int i) { return (&x)[i]; }
  double operator()(unsigned int i) const { return (&x)[i]; }
  double& operator()(unsigned int i) { return (&x)[i]; }
  MVector operator-(const MPoint& o) const { return {x - o.x, y - o.y, z - o.z}; }
  MPoint operator+(const MVector& v) const { return {x + v.x, y + v.y, z + v.z, w}; }
  MPoint operator-(const MVector& v) const { return {x - v.x, y - v.y, z - v.z, w}; }
  MPoint operator*(double s) const { return {x * s, y * s, z * s, w}; }
  MPoint operator/(double s) const { return {x / s, y / s, z / s, w}; }
  MPoint& operator+=(const MVector& v) { return *this = *this + v; }
  MPoint& operator-=(const MVector& v) { return *this = *this - v; }
  MPoint& operator*=(double s) { return *this = *this * s; }
  MPoint& operator/=(double s) { return *this = *this / s; }
  MPoint operator*(const MMatrix& m) const;
  MPoint& operator*=(const MMatrix& m) { return *this = *this * m; }
  bool operator==(const MPoint& o) const { return x == o.x && y == o.y && z == o.z && w == o.w; }
  bool operator!=(const MPoint& o) const { return !(*this == o); }
  double distanceTo(const MPoint& o) const { return (*this - o).length(); }
  bool isEquivalent(const MPoint& o, double tolerance = MPoint_kTol) const { return distanceTo(o) <= tolerance; }
  MPoint& cartesianize() { return x /= w, y /= w, z /= w, w = 1, *this; }
  MPoint& rationalize() { return x /= w, y /= w, z /= w, *this; }
  MPoint& homogenize() { return x *= w, y *= w, z *= w, *this; }
  MStatus get(double p[4]) const { return p[0] = x, p[1] = y, p[2] = z, p[3] = w, MStatus::kSuccess; }
  MStatus get(float p[4]) const { return p[0] = float(x), p[1] = float(y), p[2] = float(z), p[3] = float(w), MStatus::kSuccess; }
  static const MPoint origin;
  double x = 0, y = 0, z = 0, w = 1;
};
inline MPoint operator*(double s, const MPoint& p) { return p * s; }
MPoint operator*(const MMatrix& m, const MPoint& p);
inline std::ostream& operator<<(std::ostream& os, const MPoint& p) { return os << "[" << p.x << ", " << p.y << ", " << p.z << ", " << p.w << "]"; }
OPENMAYA_MAJOR_NAMESPACE_CLOSE
