// Joints.
#pragma once
#include <maya/MFnTransform.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnIkJoint : public MFnTransform {
  declareDagMFn(MFnIkJoint)
  MObject create(MObject parent = MObject::kNullObj, MStatus* status = NULL);
  MStatus getOrientation(MEulerRotation& rotation) const;
  MStatus getOrientation(MQuaternion& quaternion) const;
  MStatus getOrientation(double rotation[3], MTransformationMatrix::RotationOrder& order) const;
  MStatus setOrientation(const MEulerRotation& rotation);
  MStatus setOrientation(const MQuaternion& quaternion) { return setOrientation(quaternion.asEulerRotation()); }
  MStatus setOrientation(const double rotation[3], MTransformationMatrix::RotationOrder order);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
