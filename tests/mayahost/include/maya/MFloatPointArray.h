// Points of single precision.
#pragma once
#include <maya/MArray_.h>
#include <maya/MFloatPoint.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFloatPointArray : public mayahost::Array<MFloatPoint> {
 public:
  using Array::Array;
  MFloatPointArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
