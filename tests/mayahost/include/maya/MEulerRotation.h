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
  double operator[](unsigned int i) const { return (&x)[i]; }
  double& operator[](unsigned int i) { return (&x)[i]; }
  MEulerRotation& operator=(const MMatrix& m) { return *this = decompose(m, order); }
  MEulerRotation& operator=(const MQuaternion& q);
  bool operator==(const MEulerRotation& o) const { return x == o.x && y == o.y && z == o.z && order == o.order; }
  bool operator!=(const MEulerRotation& o) const { return !(*this == o); }
  MStatus setValue(double xx, double yy, double zz, RotationOrder o = kXYZ) { return *this = MEulerRotation(xx, yy, zz, o), MStatus::kSuccess; }
  MQuaternion asQuaternion() const;
  MMatrix asMatrix() const;
  MVector asVector() const { return {x, y, z}; }
  MEulerRotation inverse() const;
  MEulerRotation reorder(RotationOrder o) const;
  MEulerRotation& reorderIt(RotationOrder o) { return *this = reorder(o); }
  MEulerRotation alternateSolution() const;
  MEulerRotation closestSolution(const MEulerRotation& dst) const;
  MEulerRotation& setToClosestSolution(const MEulerRotation& dst) { return *this = closestSolution(dst); }
  bool isEquivalent(const MEulerRotation& o, double tolerance = 1e-10) const;
  static MEulerRotation decompose(const MMatrix& m, RotationOrder o);
  static const MEulerRotation identity;
  double x = 0, y = 0, z = 0;
  RotationOrder order = kXYZ;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
