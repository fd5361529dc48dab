// Colours.
#pragma once
#include <maya/MArray_.h>
#include <maya/MColor.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MColorArray : public mayahost::Array<MColor> {
 public:
  using Array::Array;
  MColorArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
