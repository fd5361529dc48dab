// Attributes that take several kinds of values.
#pragma once
#include <maya/MFnAttribute.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnGenericAttribute : public MFnAttribute {
  declareMinimalMFn(MFnGenericAttribute)
  MObject create(const MString& name, const MString& brief, MStatus* status = NULL);
  MStatus addAccept(MFnData::Type type);
  MStatus addAccept(MFnNumericData::Type type);
  MStatus removeAccept(MFnData::Type type);
  MStatus removeAccept(MFnNumericData::Type type);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
