// A place of single precision.
#pragma once
#include <maya/MFloatVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
#define MFloatPoint_kTol 1.0e-5F
class MFloatPoint {
 public:
  MFloatPoint() = default;
  MFloatPoint(float xx, float yy, float zz = 0, float ww = 1) : x(xx), y(yy), z(zz), w(ww) {}
  MFloatPoint(const float p[4]) : x(p[0]), y(p[1]), z(p[2]), w(p[3]) {}
  MFloatPoint(const double p[4]) : x(float(p[0])), y(float(p[1])), z(float(p[2])), w(float(p[3])) {}
  MFloatPoint(const MPoint& p);
  MFloatPoint(const MFloatVector& v) : x(v.x), y(v.y), z(v.z) {}
  float operator[](unsigned int i) const { return (&x)[i]; }
  float& operator[](unsigned int i) { return (&x)[i]; }
  float operator()(unsigned int i) const { return (&x)[i]; }
  float& operator()(unsigned int i) { return (&x)[i]; }
  MFloatVector operator-(const MFloatPoint& o) const { return {x - o.x, y - o.y, z - o.z}; }
  MFloatPoint operator+(const MFloatVector& v) const { return {x + v.x, y + v.y, z + v.z, w}; }
  MFloatPoint operator-(const MFloatVector& v) const { return {x - v.x, y - v.y, z - v.z, w}; }
  MFloatPoint operator*(float s) const { return {x * s, y * s, z * s, w}; }
  MFloatPoint operator/(float s) const { return {x / s, y / s, z / s, w}; }
  MFloatPoint operator*(const MFloatMatrix& m) const;
  MFloatPoint& operator+=(const MFloatVector& v) { return *this = *this + v; }
  MFloatPoint& operator-=(const MFloatVector& v) { return *this = *this - v; }
  MFloatPoint& operator*=(const MFloatMatrix& m) { return *this = *this * m; }
  bool operator==(const MFloatPoint& o) const { return x == o.x && y == o.y && z == o.z && w == o.w; }
  bool operator!=(const MFloatPoint& o) const { return !(*this == o); }
  float distanceTo(const MFloatPoint& o) const { return (*this - o).length(); }
  bool isEquivalent(const MFloatPoint& o, float tolerance = MFloatPoint_kTol) const { return distanceTo(o) <= tolerance; }
  MFloatPoint& cartesianize() { return x /= w, y /= w, z /= w, w = 1, *this; }
  MStatus get(float p[4]) const { return p[0] = x, p[1] = y, p[2] = z, p[3] = w, MStatus::kSuccess; }
  void setCast(const MPoint& p);
  static const MFloatPoint origin;
  float x = 0, y = 0, z = 0, w = 1;
};
inline std::ostream& operator<<(std::ostream& os, const MFloatPoint& p) { return os << "[" << p.x << ", " << p.y << ", " << p.z << ", " << p.w << "]"; }
OPENMAYA_MAJOR_NAMESPACE_CLOSE
