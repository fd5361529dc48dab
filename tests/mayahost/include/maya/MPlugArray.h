// Plugs.
#pragma once
#include <maya/MArray_.h>
#include <maya/MPlug.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MPlugArray : public mayahost::Array<MPlug> {
 public:
  using Array::Array;
  MPlugArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
