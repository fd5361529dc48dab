// What is run and said.
#pragma once
#include <maya/MCallbackIdArray.h>
#include <maya/MMessage.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MCommandMessage : public MMessage {
 public:
  enum MessageType { kHistory, kDisplay, kInfo, kWarning, kError, kResult, kStackTrace };
  typedef void (*MMessageFunction)(const MString& message, MessageType type, void* clientData);
  typedef void (*MMessageFilterFunction)(const MString& message, MessageType type, bool& filter, void* clientData);
  static MCallbackId addCommandCallback(MStringFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addCommandOutputCallback(MMessageFunction function, void* clientData = NULL, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
