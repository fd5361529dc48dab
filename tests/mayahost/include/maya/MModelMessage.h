// What happens to the selection, and by duplicating.
#pragma once
#include <maya/MCallbackIdArray.h>
#include <maya/MMessage.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MModelMessage : public MMessage {
 public:
  enum Message { kActiveListModified };
  static MCallbackId addCallback(Message message, MBasicFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addBeforeDuplicateCallback(MBasicFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addAfterDuplicateCallback(MBasicFunction function, void* clientData = NULL, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
