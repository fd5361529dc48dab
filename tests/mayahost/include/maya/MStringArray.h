// Texts.
#pragma once
#include <maya/MArray_.h>
#include <maya/MString.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MStringArray : public mayahost::Array<MString> {
 public:
  using Array::Array;
  MStringArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
