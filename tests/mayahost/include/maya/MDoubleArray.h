// Numbers.
#pragma once
#include <maya/MArray_.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN
class MDoubleArray : public mayahost::Array<double> {
 public:
  using Array::Array;
  MDoubleArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
