// A rotation; in a * b the rotation a acts first.
#pragma once
#include <maya/MEulerRotation.h>
#include <maya/MVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MQuaternion {
 public:
  MQuaternion() = default;
  MQuaternion(double xx, double yy, double zz, double ww) : x(xx), y(yy), z(zz), w(ww) {}
  MQuaternion(const double q[4]) : x(q[0]), y(q[1]), z(q[2]), w(q[3]) {}
  MQuaternion(double angle, const MVector& axis) { setToAxisAngle(axis, angle); }
  MQuaternion(const MVector& a, const MVector& b, double factor = 1);
  double operator[](unsigned int i) const { return (&x)[i]; }
  double& operator[](unsigned int i) { return (&x)[i]; }
  MQuaternion& operator=(const MMatrix& m);
  MQuaternion& operator=(const MEulerRotation& e) { return *this = e.asQuaternion(); }
  MMatrix asMatrix() const;
  MEulerRotation asEulerRotation() const;
  MQuaternion& setToAxisAngle(const MVector& axis, double theta);
  MQuaternion& setToXAxis(double theta) { return setToAxisAngle(MVector::xAxis, theta); }
  MQuaternion& setToYAxis(double theta) { return setToAxisAngle(MVector::yAxis, theta); }
  MQuaternion& setToZAxis(double theta) { return setToAxisAngle(MVector::zAxis, theta); }
  bool getAxisAngle(MVector& axis, double& theta) const;
  MStatus get(double q[4]) const { return q[0] = x, q[1] = y, q[2] = z, q[3] = w, MStatus::kSuccess; }
  MQuaternion operator*(const MQuaternion& o) const;
  MQuaternion operator*(double s) const { return {x * s, y * s, z * s, w * s}; }
  MQuaternion operator+(const MQuaternion& o) const { return {x + o.x, y + o.y, z + o.z, w + o.w}; }
  MQuaternion operator-(const MQuaternion& o) const { return {x - o.x, y - o.y, z - o.z, w - o.w}; }
  MQuaternion operator-() const { return {-x, -y, -z, -w}; }
  MQuaternion& operator*=(const MQuaternion& o) { return *this = *this * o; }
  bool operator==(const MQuaternion& o) const { return x == o.x && y == o.y && z == o.z && w == o.w; }
  bool operator!=(const MQuaternion& o) const { return !(*this == o); }
  MQuaternion conjugate() const { return {-x, -y, -z, w}; }
  MQuaternion& conjugateIt() { return *this = conjugate(); }
  MQuaternion& negateIt() { return *this = -*this; }
  MQuaternion& scaleIt(double s) { return *this = *this * s; }
  MQuaternion inverse() const;
  MQuaternion& invertIt() { return *this = inverse(); }
  MQuaternion normal() const;
  MQuaternion& normalizeIt() { return *this = normal(); }
  MQuaternion log() const;
  MQuaternion exp() const;
  bool isEquivalent(const MQuaternion& o, double tolerance = 1e-10) const;
  static const MQuaternion identity;
  double x = 0, y = 0, z = 0, w = 1;
};
inline MQuaternion operator*(double s, const MQuaternion& q) { return q * s; }
MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t);
/// By so many half turns more than the shortest way.
MQuaternion slerp(const MQuaternion& p, const MQuaternion& q, double t, short spin);
MQuaternion squad(const MQuaternion& p, const MQuaternion& a, const MQuaternion& b, const MQuaternion& q, double t);
MQuaternion squad(const MQuaternion& p, const MQuaternion& a, const MQuaternion& b, const MQuaternion& q, double t, short spin);
/// The point between that `squad` takes for the second of three.
MQuaternion squadPt(const MQuaternion& q0, const MQuaternion& q1, const MQuaternion& q2);
inline std::ostream& operator<<(std::ostream& os, const MQuaternion& q) { return os << "[" << q.x << ", " << q.y << ", " << q.z << ", " << q.w << "]"; }
OPENMAYA_MAJOR_NAMESPACE_CLOSE
