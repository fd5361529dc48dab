// Light from everywhere.
#pragma once
#include <maya/MFnLight.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnAmbientLight : public MFnLight {
  declareDagMFn(MFnAmbientLight)
  MObject create(MObject parent = MObject::kNullObj, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
