// Events by their names.
#pragma once
#include <maya/MCallbackIdArray.h>
#include <maya/MMessage.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MEventMessage : public MMessage {
 public:
  static MCallbackId addEventCallback(const MString& event, MBasicFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MStatus getEventNames(MStringArray& names);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
