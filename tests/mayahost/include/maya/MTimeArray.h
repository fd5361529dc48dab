// Times.
#pragma once
#include <maya/MArray_.h>
#include <maya/MTime.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MTimeArray : public mayahost::Array<MTime> {
 public:
  using Array::Array;
  MTimeArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
