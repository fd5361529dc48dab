// What a command of any kind gave.
#pragma once
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MStringArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MCommandResult {
 public:
  enum Type { kInvalid, kInt, kInt64, kIntArray, kInt64Array, kDouble, kDoubleArray, kString, kStringArray, kVector, kVectorArray, kMatrix, kMatrixArray };
  MCommandResult(MStatus* status = NULL);
  Type resultType(MStatus* status = NULL) const;
  MStatus getResult(int& result) const;
  MStatus getResult(double& result) const;
  MStatus getResult(MString& result) const;
  MStatus getResult(MIntArray& result) const;
  MStatus getResult(MDoubleArray& result) const;
  MStatus getResult(MStringArray& result) const;
  MString stringResult(MStatus* status = NULL) const;

  MStringArray words;  ///< the stand-in's own
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
