// A command's arguments as they came.
#pragma once
#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MTime.h>
#include <maya/MVector.h>

#include <vector>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MArgList {
 public:
  enum { kInvalidArgIndex = 0xFFFFFFFF };
  unsigned int length(MStatus* status = NULL) const;
  bool asBool(unsigned int i, MStatus* status = NULL) const;
  int asInt(unsigned int i, MStatus* status = NULL) const;
  double asDouble(unsigned int i, MStatus* status = NULL) const;
  MString asString(unsigned int i, MStatus* status = NULL) const;
  MTime asTime(unsigned int i, MStatus* status = NULL) const;
  MAngle asAngle(unsigned int i, MStatus* status = NULL) const;
  MDistance asDistance(unsigned int i, MStatus* status = NULL) const;
  /// What takes several arguments moves the index on to the last of them.
  MVector asVector(unsigned int& i, unsigned int count = 3, MStatus* status = NULL) const;
  MPoint asPoint(unsigned int& i, unsigned int count = 3, MStatus* status = NULL) const;
  MIntArray asIntArray(unsigned int& i, MStatus* status = NULL) const;
  MDoubleArray asDoubleArray(unsigned int& i, MStatus* status = NULL) const;
  MStringArray asStringArray(unsigned int& i, MStatus* status = NULL) const;
  MStatus get(unsigned int i, bool& value) const;
  MStatus get(unsigned int i, int& value) const;
  MStatus get(unsigned int i, double& value) const;
  MStatus get(unsigned int i, MString& value) const;
  MStatus get(unsigned int i, unsigned int& value) const;
  MStatus get(unsigned int i, MTime& value) const;
  MStatus get(unsigned int i, MAngle& value) const;
  MStatus get(unsigned int i, MDistance& value) const;
  MStatus get(unsigned int& i, MVector& value, unsigned int count = 3) const;
  MStatus get(unsigned int& i, MPoint& value, unsigned int count = 3) const;
  MStatus get(unsigned int& i, MIntArray& value) const;
  MStatus get(unsigned int& i, MDoubleArray& value) const;
  MStatus get(unsigned int& i, MStringArray& value) const;
  unsigned int flagIndex(const char* brief, const char* full = NULL) const;
  MStatus addArg(bool value) { return addArg(static_cast<int>(value)); }
  MStatus addArg(int value);
  MStatus addArg(double value);
  MStatus addArg(const MString& value) { return words.push_back(value), MStatus::kSuccess; }
  MStatus addArg(const char* value) { return addArg(MString(value)); }
  MStatus addArg(const MTime& value) { return addArg(value.as(MTime::uiUnit())); }
  MStatus addArg(const MAngle& value) { return addArg(value.as(MAngle::uiUnit())); }
  MStatus addArg(const MDistance& value) { return addArg(value.as(MDistance::uiUnit())); }
  MStatus addArg(const MVector& v) { return addArg(v.x), addArg(v.y), addArg(v.z); }

  std::vector<MString> words;  ///< the stand-in's own
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
