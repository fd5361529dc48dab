// Events of plug-ins' own.
#pragma once
#include <maya/MCallbackIdArray.h>
#include <maya/MMessage.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MUserEventMessage : public MMessage {
 public:
  static MStatus registerUserEvent(const MString& event);
  static bool isUserEvent(const MString& event);
  static MStatus deregisterUserEvent(const MString& event);
  static MCallbackId addUserEventCallback(const MString& event, MBasicFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MStatus postUserEvent(const MString& event, void* clientData = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
