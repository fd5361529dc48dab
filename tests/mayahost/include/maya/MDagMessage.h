// What happens to the hierarchy.
#pragma once
#include <maya/MCallbackIdArray.h>
#include <maya/MMessage.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MDagMessage : public MMessage {
 public:
  static MCallbackId addChildAddedCallback(MParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addChildRemovedCallback(MParentChildFunction function, void* clientData = NULL, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
