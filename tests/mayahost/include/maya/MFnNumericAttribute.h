// Attributes of numbers.
#pragma once
#include <maya/MFnAttribute.h>
#include <maya/MFnNumericData.h>

#include <vector>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnNumericAttribute : public MFnAttribute {
  declareMinimalMFn(MFnNumericAttribute)
  MObject createAddr(const MString& name, const MString& brief, MStatus* status = NULL);
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
  template <class N>
  MStatus setDefault(N a, N b) {
    return Each(0, {double(a), double(b)});
  }
  template <class N>
  MStatus setDefault(N a, N b, N c) {
    return Each(0, {double(a), double(b), double(c)});
  }
  MStatus setDefault(double a, double b, double c, double d) { return Each(0, {a, b, c, d}); }
  MStatus getDefault(double& value) const;
  MStatus getDefault(float& value) const;
  MStatus getDefault(int& value) const;
  MStatus getDefault(short& value) const;
  MStatus getDefault(bool& value) const;
  MStatus getDefault(double& a, double& b, double& c) const;
  MStatus getDefault(float& a, float& b, float& c) const;
  MStatus setMin(double value);
  MStatus setMax(double value);
  MStatus setMin(double a, double b) { return Each(1, {a, b}); }
  MStatus setMax(double a, double b) { return Each(2, {a, b}); }
  MStatus setMin(double a, double b, double c) { return Each(1, {a, b, c}); }
  MStatus setMax(double a, double b, double c) { return Each(2, {a, b, c}); }
  MStatus setSoftMin(double value);
  MStatus setSoftMax(double value);
  bool hasSoftMin(MStatus* status = NULL) const;
  bool hasSoftMax(MStatus* status = NULL) const;
  MStatus getSoftMin(double& value) const;
  MStatus getSoftMax(double& value) const;
  bool hasMin(MStatus* status = NULL) const;
  bool hasMax(MStatus* status = NULL) const;
  MStatus getMin(double& value) const;
  MStatus getMax(double& value) const;

 private:
  /// Defaults (0), least (1) or greatest (2) values of the children.
  MStatus Each(int what, const std::vector<double>& values);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
