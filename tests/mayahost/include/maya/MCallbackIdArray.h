// Callbacks.
#pragma once
#include <maya/MArray_.h>
#include <maya/MMessage.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MCallbackIdArray : public mayahost::Array<MCallbackId> {
 public:
  using Array::Array;
  MCallbackIdArray() = default;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
