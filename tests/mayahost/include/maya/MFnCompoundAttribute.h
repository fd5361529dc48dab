// Attributes of attributes.
#pragma once
#include <maya/MFnAttribute.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnCompoundAttribute : public MFnAttribute {
  declareMinimalMFn(MFnCompoundAttribute)
  MObject create(const MString& name, const MString& brief, MStatus* status = NULL);
  MStatus addChild(const MObject& child);
  MStatus removeChild(const MObject& child);
  unsigned int numChildren(MStatus* status = NULL) const;
  MObject child(unsigned int index, MStatus* status = NULL) const;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
