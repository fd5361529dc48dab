// Whole numbers.
#pragma once
#include <maya/MArray_.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN
class MIntArray : public mayahost::Array<int> {
 public:
  using Array::Array;
  MIntArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
