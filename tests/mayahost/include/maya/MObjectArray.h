// Objects.
#pragma once
#include <maya/MArray_.h>
#include <maya/MObject.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MObjectArray : public mayahost::Array<MObject> {
 public:
  using Array::Array;
  MObjectArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
