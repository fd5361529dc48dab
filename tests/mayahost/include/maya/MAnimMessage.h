// What happens to animation curves.
#pragma once
#include <maya/MCallbackIdArray.h>
#include <maya/MMessage.h>
#include <maya/MObjectArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MAnimMessage : public MMessage {
 public:
  static MCallbackId addAnimCurveEditedCallback(MObjArrayFunction function, void* clientData = NULL, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
