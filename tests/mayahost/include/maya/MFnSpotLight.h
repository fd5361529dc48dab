// Light within a cone; angles in radians.
#pragma once
#include <maya/MFnLight.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnSpotLight : public MFnLight {
  declareDagMFn(MFnSpotLight)
  MObject create(MObject parent = MObject::kNullObj, MStatus* status = NULL);
  double coneAngle(MStatus* status = NULL) const;
  MStatus setConeAngle(double angle);
  double penumbraAngle(MStatus* status = NULL) const;
  MStatus setPenumbraAngle(double angle);
  double dropOff(MStatus* status = NULL) const;
  MStatus setDropOff(double dropOff);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
