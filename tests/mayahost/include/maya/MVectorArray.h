// Vectors.
#pragma once
#include <maya/MArray_.h>
#include <maya/MVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MVectorArray : public mayahost::Array<MVector> {
 public:
  using Array::Array;
  MVectorArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
