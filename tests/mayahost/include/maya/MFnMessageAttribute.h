// Attributes that only tie nodes.
#pragma once
#include <maya/MFnAttribute.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnMessageAttribute : public MFnAttribute {
  declareMinimalMFn(MFnMessageAttribute)
  MObject create(const MString& name, const MString& brief, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
