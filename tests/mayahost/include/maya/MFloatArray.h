// Numbers of single precision.
#pragma once
#include <maya/MArray_.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFloatArray : public mayahost::Array<float> {
 public:
  using Array::Array;
  MFloatArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
