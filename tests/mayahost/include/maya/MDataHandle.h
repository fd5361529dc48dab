// A value within a node's computation.
#pragma once
#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MFloatMatrix.h>
#include <maya/MFloatVector.h>
#include <maya/MFnData.h>
#include <maya/MFnNumericData.h>
#include <maya/MMatrix.h>
#include <maya/MPlug.h>
#include <maya/MString.h>
#include <maya/MTime.h>
#include <maya/MTypeId.h>
#include <maya/MVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MDataHandle {
 public:
  MDataHandle() = default;
  explicit MDataHandle(const MPlug& plug, bool output = false);
  bool isNumeric() const;
  MFnData::Type type() const;
  MFnNumericData::Type numericType() const;
  MObject attribute() const;
  bool& asBool() const;
  char& asChar() const;
  unsigned char& asUChar() const;
  short& asShort() const;
  int& asInt() const;
  int& asLong() const { return asInt(); }
  MInt64& asInt64() const;
  float& asFloat() const;
  double& asDouble() const;
  MDistance asDistance() const;
  MAngle asAngle() const;
  MTime asTime() const;
  short2& asShort2() const;
  short3& asShort3() const;
  int2& asInt2() const;
  int2& asLong2() const { return asInt2(); }
  int3& asInt3() const;
  int3& asLong3() const { return asInt3(); }
  float2& asFloat2() const;
  float3& asFloat3() const;
  double2& asDouble2() const;
  double3& asDouble3() const;
  double4& asDouble4() const;
  MVector& asVector() const;
  MFloatVector& asFloatVector() const;
  MMatrix& asMatrix() const;
  MFloatMatrix& asFloatMatrix() const;
  MString& asString() const;
  MObject data() const;
  MObject asMesh() const { return data(); }
  MObject asNurbsCurve() const { return data(); }
  MObject asNurbsSurface() const { return data(); }
  void set(bool value);
  void set(char value);
  void set(short value);
  void set(int value);
  void set(MInt64 value);
  void set(float value);
  void set(double value);
  template <class N>
  void set(N a, N b) {
    Put({double(a), double(b)});
  }
  template <class N>
  void set(N a, N b, N c) {
    Put({double(a), double(b), double(c)});
  }
  void set(double a, double b, double c, double d) { Put({a, b, c, d}); }
  void set(const MVector& v) { Put({v.x, v.y, v.z}); }
  void set(const MFloatVector& v) { set(MVector(v)); }
  void set(const MString& value);
  void set(const MMatrix& value);
  void set(const MFloatMatrix& value) { set(MMatrix(value.matrix)); }
  void set(const MTime& value);
  void set(const MAngle& value);
  void set(const MDistance& value);
  MStatus set(const MObject& value);
  void setBool(bool v) { set(v); }
  void setChar(char v) { set(v); }
  void setShort(short v) { set(v); }
  void setInt(int v) { set(v); }
  void setInt64(MInt64 v) { set(v); }
  void setFloat(float v) { set(v); }
  void setDouble(double v) { set(v); }
  void set2Short(short a, short b) { set(a, b); }
  void set2Int(int a, int b) { set(a, b); }
  void set2Float(float a, float b) { set(a, b); }
  void set2Double(double a, double b) { set(a, b); }
  void set3Short(short a, short b, short c) { set(a, b, c); }
  void set3Int(int a, int b, int c) { set(a, b, c); }
  void set3Float(float a, float b, float c) { set(a, b, c); }
  void set3Double(double a, double b, double c) { set(a, b, c); }
  void set4Double(double a, double b, double c, double d) { set(a, b, c, d); }
  void setMVector(const MVector& v) { set(v); }
  void setMFloatVector(const MFloatVector& v) { set(v); }
  void setString(const MString& v) { set(v); }
  void setMMatrix(const MMatrix& v) { set(v); }
  void setMFloatMatrix(const MFloatMatrix& v) { set(v); }
  void setMTime(const MTime& v) { set(v); }
  void setMAngle(const MAngle& v) { set(v); }
  void setMDistance(const MDistance& v) { set(v); }
  MStatus setMObject(const MObject& v) { return set(v); }
  MDataHandle child(const MPlug& plug);
  MDataHandle child(const MObject& attribute);
  MStatus copy(const MDataHandle& source);
  MStatus copyWritable(const MDataHandle& source) { return copy(source); }
  void setClean();

  const MPlug& Plug() const;  ///< the stand-in's own

 private:
  void Put(const std::vector<double>& numbers);
  template <class T, std::size_t N>
  T (&Tuple() const)
  [N];
  std::shared_ptr<mayahost::HandleState> fState;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
