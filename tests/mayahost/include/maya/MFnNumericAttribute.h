// Attributes of numbers.
#pragma once
#include <maya/MFnAttribute.h>
#include <maya/MFnNumericData.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnNumericAttribute : public MFnAttribute {
  declareMinimalMFn(MFnNumericAttribute)
  MObject create(const MString& name, const MString& brief, MFnNumericData::Type type, double defaultValue = 0, MStatus* status = NULL);
  MObject create(const MString& name, const MString& brief, const MObject& child1, const MObject& child2 = MObject::kNullObj,
                 const MObject& child3 = MObject::kNullObj, MStatus* status = NULL);
  MObject createColor(const MString& name, const MString& brief, MStatus* status = NULL);
  MObject createPoint(const MString& name, const MString& brief, MStatus* status = NULL);
  MFnNumericData::Type unitType(MStatus* status = NULL) const;
  MObject child(unsigned int index, MStatus* status = NULL) const;
  MStatus setDefault(double value);
  MStatus setDefault(float value) { return setDefault(static_cast<double>(value)); }
  MStatus setDefault(int value) { return setDefault(static_cast<double>(value)); }
  MStatus setDefault(bool value) { return setDefault(static_cast<double>(value)); }
  MStatus setDefault(float a, float b, float c) { return setDefault(double(a), double(b), double(c)); }
  MStatus setDefault(double a, double b, double c);
  MStatus getDefault(double& value) const;
  MStatus setMin(double value);
  MStatus setMax(double value);
  MStatus setSoftMin(double) { return MStatus::kSuccess; }
  MStatus setSoftMax(double) { return MStatus::kSuccess; }
  bool hasMin(MStatus* status = NULL) const;
  bool hasMax(MStatus* status = NULL) const;
  MStatus getMin(double& value) const;
  MStatus getMax(double& value) const;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
