// Attributes of a choice.
#pragma once
#include <maya/MFnAttribute.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnEnumAttribute : public MFnAttribute {
  declareMinimalMFn(MFnEnumAttribute)
  MObject create(const MString& name, const MString& brief, short defaultValue = 0, MStatus* status = NULL);
  MStatus addField(const MString& name, short index);
  MString fieldName(short index, MStatus* status = NULL) const;
  short fieldIndex(const MString& name, MStatus* status = NULL) const;
  MStatus getMin(short& value) const;
  MStatus getMax(short& value) const;
  MStatus getDefault(short& value) const;
  short defaultValue(MStatus* status = NULL) const;
  MStatus setDefault(short value);
  MStatus setDefault(const MString& field);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
