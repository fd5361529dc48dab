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
  MObject create(MObject& parent = MObject::kNullObj, MStatus* status = NULL);
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
  MStatus getScale(double scale[3]) const;
  MStatus setScale(const double scale[3]);
  MTransformationMatrix::RotationOrder rotationOrder(MStatus* status = NULL) const;
  MStatus setRotationOrder(MTransformationMatrix::RotationOrder order, bool reorder);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
