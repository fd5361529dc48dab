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
  MStatus setMin(double value);
  MStatus setMax(double value);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
