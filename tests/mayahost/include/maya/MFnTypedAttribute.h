// Attributes of data.
#pragma once
#include <maya/MFnAttribute.h>
#include <maya/MFnData.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnTypedAttribute : public MFnAttribute {
  declareMinimalMFn(MFnTypedAttribute)
  MObject create(const MString& name, const MString& brief, const MTypeId& type, const MObject& defaultValue = MObject::kNullObj, MStatus* status = NULL);
  MObject create(const MString& name, const MString& brief, MFnData::Type type, const MObject& defaultValue = MObject::kNullObj, MStatus* status = NULL);
  MFnData::Type attrType(MStatus* status = NULL) const;
  MStatus getDefault(MObject& value) const;
  MStatus setDefault(const MObject& value);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
