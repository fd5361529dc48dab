// Paths.
#pragma once
#include <maya/MArray_.h>
#include <maya/MDagPath.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MDagPathArray : public mayahost::Array<MDagPath> {
 public:
  using Array::Array;
  MDagPathArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
