// A rotation; in a * b the rotation a acts first.
#pragma once
#include <maya/MEulerRotation.h>
#include <maya/MVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MQuaternion {
 public:
  MQuaternion() = default;
  MQuaternion(double xx, double yy, double zz, double ww) : x(xx), y(yy), z(zz), w(ww) {}
  MQuaternion(double angle, const MVector& axis) { setToAxisAngle(axis, angle); }
  MQuaternion(const MVector& a, const MVector& b);
  double operator[](unsigned int i) const { return (&x)[i]; }
  double& operator[](unsigned int i) { return (&x)[i]; }
  MQuaternion& operator=(const MMatrix& m);
  MQuaternion& operator=(const MEulerRotation& e) { return *this = e.asQuaternion(); }
  MMatrix asMatrix() const;
  MEulerRotation asEulerRotation() const;
  MQuaternion& setToAxisAngle(const MVector& axis, double theta);
  bool getAxisAngle(MVector& axis, double& theta) const;
  MQuaternion operator*(const MQuaternion& o) const;
  MQuaternion operator*(double s) const { return {x * s, y * s, z * s, w * s}; }
  MQuaternion operator-() const { return {-x, -y, -z, -w}; }
  bool operator==(const MQuaternion& o) const { return x == o.x && y == o.y && z == o.z && w == o.w; }
  bool operator!=(const MQuaternion& o) const { return !(*this == o); }
  MQuaternion conjugate() const { return {-x, -y, -z, w}; }
  MQuaternion inverse() const;
  MQuaternion normal() const;
  MQuaternion& normalizeIt() { return *this = normal(); }
  MQuaternion& invertIt() { return *this = inverse(); }
  bool isEquivalent(const MQuaternion& o, double tolerance = 1e-10) const;
  static const MQuaternion identity;
  double x = 0, y = 0, z = 0, w = 1;
};
MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t);
OPENMAYA_MAJOR_NAMESPACE_CLOSE
