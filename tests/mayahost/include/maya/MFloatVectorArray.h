// Vectors of single precision.
#pragma once
#include <maya/MArray_.h>
#include <maya/MFloatVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFloatVectorArray : public mayahost::Array<MFloatVector> {
 public:
  using Array::Array;
  MFloatVectorArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
