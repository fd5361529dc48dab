// Light along a direction.
#pragma once
#include <maya/MFnLight.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnDirectionalLight : public MFnLight {
  declareDagMFn(MFnDirectionalLight)
  MObject create(MObject parent = MObject::kNullObj, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
