// Light from a point.
#pragma once
#include <maya/MFnLight.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnPointLight : public MFnLight {
  declareDagMFn(MFnPointLight)
  MObject create(MObject parent = MObject::kNullObj, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
