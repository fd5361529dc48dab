// A direction of single precision.
#pragma once
#include <maya/MStatus.h>

#include <cmath>
#include <iostream>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFloatVector {
 public:
  static constexpr double kTol = 1e-5;
  MFloatVector(float xx = 0, float yy = 0, float zz = 0) : x(xx), y(yy), z(zz) {}
  explicit MFloatVector(const float (&v)[3]) : x(v[0]), y(v[1]), z(v[2]) {}
  MFloatVector(const MVector& v);
  float operator[](unsigned int i) const { return (&x)[i]; }
  float& operator[](unsigned int i) { return (&x)[i]; }
  MFloatVector operator+(const MFloatVector& o) const { return {x + o.x, y + o.y, z + o.z}; }
  MFloatVector operator-(const MFloatVector& o) const { return {x - o.x, y - o.y, z - o.z}; }
  MFloatVector operator*(float s) const { return {x * s, y * s, z * s}; }
  float operator*(const MFloatVector& o) const { return x * o.x + y * o.y + z * o.z; }
  bool operator==(const MFloatVector& o) const { return x == o.x && y == o.y && z == o.z; }
  bool operator!=(const MFloatVector& o) const { return !(*this == o); }
  float length() const { return std::sqrt(*this * *this); }
  MFloatVector normal() const { return length() > 0 ? *this * (1 / length()) : *this; }
  MStatus normalize() { return *this = normal(), MStatus::kSuccess; }
  float x, y, z;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
