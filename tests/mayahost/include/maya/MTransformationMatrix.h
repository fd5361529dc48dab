// A transform in its parts: scale pivot, scale, shear, rotate pivot, rotation, translation.
#pragma once
#include <maya/MEulerRotation.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MQuaternion.h>
#include <maya/MSpace.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MTransformationMatrix {
 public:
  enum RotationOrder { kInvalid, kXYZ, kYZX, kZXY, kXZY, kYXZ, kZYX, kLast };
  MTransformationMatrix() = default;
  MTransformationMatrix(const MMatrix& m) { *this = m; }
  MTransformationMatrix& operator=(const MMatrix& m);
  MMatrix asMatrix() const;
  /// On the way from none of it (0) to all (1).
  MMatrix asMatrix(double interp) const;
  MMatrix asMatrixInverse() const { return asMatrix().inverse(); }
  MMatrix asScaleMatrix() const;
  MMatrix asRotateMatrix() const;
  MVector getTranslation(MSpace::Space space, MStatus* status = NULL) const;
  MVector translation(MSpace::Space space, MStatus* status = NULL) const { return getTranslation(space, status); }
  MStatus setTranslation(const MVector& v, MSpace::Space space);
  MStatus addTranslation(const MVector& v, MSpace::Space space) { return setTranslation(getTranslation(space) + v, space); }
  MStatus getRotation(double rotation[3], RotationOrder& order, MSpace::Space space) const;
  MStatus getRotation(double rotation[3], RotationOrder& order) const { return getRotation(rotation, order, MSpace::kTransform); }
  MStatus setRotation(const double rotation[3], RotationOrder order, MSpace::Space space = MSpace::kTransform);
  MStatus getRotationQuaternion(double& x, double& y, double& z, double& w, MSpace::Space space = MSpace::kTransform) const;
  MStatus setRotationQuaternion(double x, double y, double z, double w, MSpace::Space space = MSpace::kTransform);
  MStatus addRotation(const double rotation[3], RotationOrder order, MSpace::Space space = MSpace::kTransform);
  MStatus addRotationQuaternion(double x, double y, double z, double w, MSpace::Space space = MSpace::kTransform);
  MTransformationMatrix& rotateBy(const MQuaternion& q, MSpace::Space space = MSpace::kTransform);
  MTransformationMatrix& rotateBy(const MEulerRotation& e, MSpace::Space space = MSpace::kTransform) { return rotateBy(e.asQuaternion(), space); }
  MStatus addScale(const double scale[3], MSpace::Space space);
  MStatus addShear(const double shear[3], MSpace::Space space);
  MQuaternion rotation() const;
  MEulerRotation eulerRotation() const { return fRotate; }
  MTransformationMatrix& rotateTo(const MQuaternion& q);
  MTransformationMatrix& rotateTo(const MEulerRotation& e) { return fRotate = e, *this; }
  RotationOrder rotationOrder() const { return static_cast<RotationOrder>(fRotate.order + 1); }
  MStatus reorderRotation(RotationOrder order);
  MQuaternion rotationOrientation() const { return fAxis; }
  MTransformationMatrix& setRotationOrientation(const MQuaternion& q) { return fAxis = q, *this; }
  MStatus getScale(double scale[3], MSpace::Space space) const;
  MStatus setScale(const double scale[3], MSpace::Space space);
  MStatus getShear(double shear[3], MSpace::Space space) const;
  MStatus setShear(const double shear[3], MSpace::Space space);
  MPoint scalePivot(MSpace::Space space, MStatus* status = NULL) const;
  MStatus setScalePivot(const MPoint& p, MSpace::Space space, bool balance);
  MPoint rotatePivot(MSpace::Space space, MStatus* status = NULL) const;
  MStatus setRotatePivot(const MPoint& p, MSpace::Space space, bool balance);
  MVector scalePivotTranslation(MSpace::Space space, MStatus* status = NULL) const;
  MStatus setScalePivotTranslation(const MVector& v, MSpace::Space space);
  MVector rotatePivotTranslation(MSpace::Space space, MStatus* status = NULL) const;
  MStatus setRotatePivotTranslation(const MVector& v, MSpace::Space space);
  bool isEquivalent(const MTransformationMatrix& o, double tolerance = 1e-10) const;
  bool operator==(const MTransformationMatrix& o) const { return asMatrix() == o.asMatrix(); }
  bool operator!=(const MTransformationMatrix& o) const { return !(*this == o); }
  static const MTransformationMatrix identity;

 private:
  MPoint fScalePivot, fRotatePivot;
  MVector fScale{1, 1, 1}, fShear, fScalePivotT, fRotatePivotT, fTranslate;
  MQuaternion fAxis;
  MEulerRotation fRotate;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
