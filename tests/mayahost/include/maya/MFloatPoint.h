// A place of single precision.
#pragma once
#include <maya/MFloatVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFloatPoint {
 public:
  MFloatPoint() = default;
  MFloatPoint(float xx, float yy, float zz = 0, float ww = 1) : x(xx), y(yy), z(zz), w(ww) {}
  MFloatPoint(const MPoint& p);
  MFloatPoint(const MFloatVector& v) : x(v.x), y(v.y), z(v.z) {}
  float operator[](unsigned int i) const { return (&x)[i]; }
  float& operator[](unsigned int i) { return (&x)[i]; }
  MFloatVector operator-(const MFloatPoint& o) const { return {x - o.x, y - o.y, z - o.z}; }
  MFloatPoint operator+(const MFloatVector& v) const { return {x + v.x, y + v.y, z + v.z, w}; }
  bool operator==(const MFloatPoint& o) const { return x == o.x && y == o.y && z == o.z && w == o.w; }
  bool operator!=(const MFloatPoint& o) const { return !(*this == o); }
  void setCast(const MPoint& p);
  float x = 0, y = 0, z = 0, w = 1;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
