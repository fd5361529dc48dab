// Whole numbers without sign.
#pragma once
#include <maya/MArray_.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN
class MUintArray : public mayahost::Array<unsigned int> {
 public:
  using Array::Array;
  MUintArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
