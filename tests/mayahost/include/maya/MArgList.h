// A command's arguments as they came.
#pragma once
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
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
  MStatus get(unsigned int i, bool& value) const;
  MStatus get(unsigned int i, int& value) const;
  MStatus get(unsigned int i, double& value) const;
  MStatus get(unsigned int i, MString& value) const;
  unsigned int flagIndex(const char* brief, const char* full = NULL) const;
  MStatus addArg(bool value) { return addArg(static_cast<int>(value)); }
  MStatus addArg(int value);
  MStatus addArg(double value);
  MStatus addArg(const MString& value) { return words.push_back(value), MStatus::kSuccess; }
  MStatus addArg(const char* value) { return addArg(MString(value)); }

  std::vector<MString> words;  ///< the stand-in's own
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
