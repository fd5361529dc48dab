// What is called every so often, while the program idles.
#pragma once
#include <maya/MCallbackIdArray.h>
#include <maya/MMessage.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MTimerMessage : public MMessage {
 public:
  static MCallbackId addTimerCallback(float period, MElapsedTimeFunction function, void* clientData = NULL, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
