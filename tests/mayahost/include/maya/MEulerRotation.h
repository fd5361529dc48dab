// Three turns (rad) and their order.
#pragma once
#include <maya/MStatus.h>
#include <maya/MVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MEulerRotation {
 public:
  enum RotationOrder { kXYZ, kYZX, kZXY, kXZY, kYXZ, kZYX };
  MEulerRotation() = default;
  MEulerRotation(double xx, double yy, double zz, RotationOrder o = kXYZ) : x(xx), y(yy), z(zz), order(o) {}
  MEulerRotation(const MVector& v, RotationOrder o = kXYZ) : x(v.x), y(v.y), z(v.z), order(o) {}
  MEulerRotation(const double v[3], RotationOrder o = kXYZ) : x(v[0]), y(v[1]), z(v[2]), order(o) {}
  double operator[](unsigned int i) const { return (&x)[i]; }
  double& operator[](unsigned int i) { return (&x)[i]; }
  MEulerRotation& operator=(const MMatrix& m) { return *this = decompose(m, order); }
  MEulerRotation& operator=(const MQuaternion& q);
  bool operator==(const MEulerRotation& o) const { return x == o.x && y == o.y && z == o.z && order == o.order; }
  bool operator!=(const MEulerRotation& o) const { return !(*this == o); }
  MEulerRotation operator-() const { return {-x, -y, -z, order}; }
  MEulerRotation operator+(const MEulerRotation& o) const;
  MEulerRotation operator-(const MEulerRotation& o) const;
  MEulerRotation operator*(const MEulerRotation& o) const;
  MEulerRotation operator*(const MQuaternion& q) const;
  MEulerRotation operator*(double s) const { return {x * s, y * s, z * s, order}; }
  MEulerRotation& operator+=(const MEulerRotation& o) { return *this = *this + o; }
  MEulerRotation& operator-=(const MEulerRotation& o) { return *this = *this - o; }
  MEulerRotation& operator*=(const MEulerRotation& o) { return *this = *this * o; }
  MEulerRotation& operator*=(double s) { return *this = *this * s; }
  MStatus setValue(double xx, double yy, double zz, RotationOrder o = kXYZ) { return *this = MEulerRotation(xx, yy, zz, o), MStatus::kSuccess; }
  MStatus setValue(const MVector& v, RotationOrder o = kXYZ) { return setValue(v.x, v.y, v.z, o); }
  MStatus setValue(const double v[3], RotationOrder o = kXYZ) { return setValue(v[0], v[1], v[2], o); }
  MQuaternion asQuaternion() const;
  MMatrix asMatrix() const;
  MVector asVector() const { return {x, y, z}; }
  MEulerRotation incrementalRotateBy(const MVector& axis, double angle);
  MEulerRotation inverse() const;
  MEulerRotation& invertIt() { return *this = inverse(); }
  MEulerRotation reorder(RotationOrder o) const;
  MEulerRotation& reorderIt(RotationOrder o) { return *this = reorder(o); }
  MEulerRotation bound() const;
  MEulerRotation& boundIt() { return *this = bound(); }
  MEulerRotation& boundIt(const MEulerRotation& src) { return *this = src.bound(); }
  static MEulerRotation bound(const MEulerRotation& src) { return src.bound(); }
  MEulerRotation alternateSolution() const;
  MEulerRotation& setToAlternateSolution() { return *this = alternateSolution(); }
  MEulerRotation& setToAlternateSolution(const MEulerRotation& src) { return *this = src.alternateSolution(); }
  static MEulerRotation alternateSolution(const MEulerRotation& src) { return src.alternateSolution(); }
  MEulerRotation closestSolution(const MEulerRotation& dst) const;
  MEulerRotation& setToClosestSolution(const MEulerRotation& dst) { return *this = closestSolution(dst); }
  MEulerRotation& setToClosestSolution(const MEulerRotation& src, const MEulerRotation& dst) { return *this = src.closestSolution(dst); }
  static MEulerRotation closestSolution(const MEulerRotation& src, const MEulerRotation& dst) { return src.closestSolution(dst); }
  MEulerRotation closestCut(const MEulerRotation& dst) const;
  MEulerRotation& setToClosestCut(const MEulerRotation& dst) { return *this = closestCut(dst); }
  MEulerRotation& setToClosestCut(const MEulerRotation& src, const MEulerRotation& dst) { return *this = src.closestCut(dst); }
  static MEulerRotation closestCut(const MEulerRotation& src, const MEulerRotation& dst) { return src.closestCut(dst); }
  bool isEquivalent(const MEulerRotation& o, double tolerance = 1e-10) const;
  bool isZero(double tolerance = 1e-10) const { return asVector().isEquivalent(MVector(), tolerance); }
  static MEulerRotation decompose(const MMatrix& m, RotationOrder o);
  static const MEulerRotation identity;
  double x = 0, y = 0, z = 0;
  RotationOrder order = kXYZ;
};
inline MEulerRotation operator*(double s, const MEulerRotation& e) { return e * s; }
std::ostream& operator<<(std::ostream& os, const MEulerRotation& e);
OPENMAYA_MAJOR_NAMESPACE_CLOSE
