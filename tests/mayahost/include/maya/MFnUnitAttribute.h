// Attributes of angles, lengths and times.
#pragma once
#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MFnAttribute.h>
#include <maya/MTime.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnUnitAttribute : public MFnAttribute {
  declareMinimalMFn(MFnUnitAttribute)
  enum Type { kInvalid, kAngle, kDistance, kTime, kLast };
  MObject create(const MString& name, const MString& brief, Type type, double defaultValue = 0, MStatus* status = NULL);
  MObject create(const MString& name, const MString& brief, const MTime& defaultValue, MStatus* status = NULL);
  MObject create(const MString& name, const MString& brief, const MAngle& defaultValue, MStatus* status = NULL);
  MObject create(const MString& name, const MString& brief, const MDistance& defaultValue, MStatus* status = NULL);
  Type unitType(MStatus* status = NULL) const;
  MStatus setDefault(double value);
  MStatus setDefault(const MTime& value);
  MStatus setDefault(const MAngle& value);
  MStatus setDefault(const MDistance& value);
  MStatus getDefault(double& value) const;
  MStatus getDefault(MTime& value) const;
  MStatus getDefault(MAngle& value) const;
  MStatus getDefault(MDistance& value) const;
  MStatus setMin(double value);
  MStatus setMax(double value);
  MStatus setMin(const MTime& value) { return setMin(value.as(MTime::kSeconds)); }
  MStatus setMax(const MTime& value) { return setMax(value.as(MTime::kSeconds)); }
  MStatus setMin(const MAngle& value) { return setMin(value.asRadians()); }
  MStatus setMax(const MAngle& value) { return setMax(value.asRadians()); }
  MStatus setMin(const MDistance& value) { return setMin(value.asCentimeters()); }
  MStatus setMax(const MDistance& value) { return setMax(value.asCentimeters()); }
  MStatus setSoftMin(double value);
  MStatus setSoftMax(double value);
  bool hasMin(MStatus* status = NULL) const;
  bool hasMax(MStatus* status = NULL) const;
  MStatus getMin(double& value) const;
  MStatus getMax(double& value) const;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
