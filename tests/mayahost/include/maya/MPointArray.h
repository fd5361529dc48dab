// Points.
#pragma once
#include <maya/MArray_.h>
#include <maya/MPoint.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MPointArray : public mayahost::Array<MPoint> {
 public:
  using Array::Array;
  MPointArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
