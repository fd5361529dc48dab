// Transforms.
#pragma once
#include <maya/MEulerRotation.h>
#include <maya/MFnDagNode.h>
#include <maya/MPoint.h>
#include <maya/MQuaternion.h>
#include <maya/MTransformationMatrix.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnTransform : public MFnDagNode {
  declareDagMFn(MFnTransform)
  MObject create(MObject parent = MObject::kNullObj, MStatus* status = NULL);
  MTransformationMatrix transformation(MStatus* status = NULL) const;
  MStatus set(const MTransformationMatrix& transform);
  MVector getTranslation(MSpace::Space space, MStatus* status = NULL) const;
  MVector translation(MSpace::Space space, MStatus* status = NULL) const { return getTranslation(space, status); }
  MStatus setTranslation(const MVector& v, MSpace::Space space);
  MStatus translateBy(const MVector& v, MSpace::Space space) { return setTranslation(getTranslation(space) + v, space); }
  MStatus getRotation(MEulerRotation& rotation) const;
  MStatus getRotation(double rotation[3], MTransformationMatrix::RotationOrder& order) const;
  MStatus getRotation(MQuaternion& rotation, MSpace::Space space = MSpace::kTransform) const;
  MStatus setRotation(const MEulerRotation& rotation);
  MStatus setRotation(const double rotation[3], MTransformationMatrix::RotationOrder order);
  MStatus setRotation(const MQuaternion& rotation, MSpace::Space space = MSpace::kTransform);
  MStatus rotateBy(const MEulerRotation& rotation, MSpace::Space space = MSpace::kTransform);
  MStatus rotateBy(const MQuaternion& rotation, MSpace::Space space = MSpace::kTransform);
  MStatus rotateBy(const double rotation[3], MTransformationMatrix::RotationOrder order, MSpace::Space space = MSpace::kTransform);
  MStatus getRotationQuaternion(double& x, double& y, double& z, double& w, MSpace::Space space = MSpace::kTransform) const;
  MStatus setRotationQuaternion(double x, double y, double z, double w, MSpace::Space space = MSpace::kTransform);
  MStatus rotateByQuaternion(double x, double y, double z, double w, MSpace::Space space = MSpace::kTransform);
  MQuaternion rotateOrientation(MSpace::Space space, MStatus* status = NULL) const;
  MStatus setRotateOrientation(const MQuaternion& rotation, MSpace::Space space, bool balance);
  MStatus getScale(double scale[3]) const;
  MStatus setScale(const double scale[3]);
  MStatus scaleBy(const double scale[3]);
  MStatus getShear(double shear[3]) const;
  MStatus setShear(const double shear[3]);
  MPoint scalePivot(MSpace::Space space, MStatus* status = NULL) const;
  MStatus setScalePivot(const MPoint& point, MSpace::Space space, bool balance);
  MVector scalePivotTranslation(MSpace::Space space, MStatus* status = NULL) const;
  MStatus setScalePivotTranslation(const MVector& v, MSpace::Space space);
  MPoint rotatePivot(MSpace::Space space, MStatus* status = NULL) const;
  MStatus setRotatePivot(const MPoint& point, MSpace::Space space, bool balance);
  MVector rotatePivotTranslation(MSpace::Space space, MStatus* status = NULL) const;
  MStatus setRotatePivotTranslation(const MVector& v, MSpace::Space space);
  MStatus resetTransformation(const MMatrix& matrix) { return set(MTransformationMatrix(matrix)); }
  MTransformationMatrix::RotationOrder rotationOrder(MStatus* status = NULL) const;
  MStatus setRotationOrder(MTransformationMatrix::RotationOrder order, bool reorder);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
