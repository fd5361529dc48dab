// A value within a node's computation.
#pragma once
#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MFnData.h>
#include <maya/MFnNumericData.h>
#include <maya/MMatrix.h>
#include <maya/MPlug.h>
#include <maya/MString.h>
#include <maya/MTime.h>
#include <maya/MVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MDataHandle {
 public:
  MDataHandle() = default;
  explicit MDataHandle(const MPlug& plug, bool output = false);
  MDataHandle(const MDataHandle&) = default;
  MDataHandle& operator=(const MDataHandle&) = default;
  ~MDataHandle() { Store(); }
  bool isNumeric() const;
  MFnData::Type type() const;
  MFnNumericData::Type numericType() const;
  bool& asBool();
  short& asShort();
  int& asInt();
  int& asLong() { return asInt(); }
  float& asFloat();
  double& asDouble();
  MDistance asDistance() const;
  MAngle asAngle() const;
  MTime asTime() const;
  MString& asString();
  MMatrix& asMatrix();
  MVector asVector() const;
  double3& asDouble3();
  MObject data();
  MObject asMesh() { return data(); }
  void set(bool value);
  void set(short value);
  void set(int value);
  void set(float value);
  void set(double value);
  void set(double x, double y, double z);
  void set3Double(double x, double y, double z) { set(x, y, z); }
  void set(const MVector& value) { set(value.x, value.y, value.z); }
  void set(const MString& value);
  void set(const MMatrix& value);
  void set(const MTime& value);
  void set(const MAngle& value);
  void set(const MDistance& value);
  MStatus set(const MObject& value);
  void setBool(bool v) { set(v); }
  void setInt(int v) { set(v); }
  void setFloat(float v) { set(v); }
  void setDouble(double v) { set(v); }
  void setString(const MString& v) { set(v); }
  void setMMatrix(const MMatrix& v) { set(v); }
  void setMTime(const MTime& v) { set(v); }
  void setMAngle(const MAngle& v) { set(v); }
  void setMDistance(const MDistance& v) { set(v); }
  MDataHandle child(const MPlug& plug) { return MDataHandle(plug); }
  MDataHandle child(const MObject& attribute);
  MStatus copy(const MDataHandle& source);
  void setClean();

 private:
  void Load() const;
  void Store();  ///< what was written by reference
  MPlug fPlug;
  bool fOutput = false;
  char fAs = 0;  ///< what an output was asked as
  union Number {
    bool b;
    short s;
    int i;
    float f;
    double d;
    double3 v;
  };
  std::shared_ptr<Number> fNumber;
  std::shared_ptr<MString> fString;
  std::shared_ptr<MMatrix> fMatrix;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
