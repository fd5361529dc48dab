// States that the program is in.
#pragma once
#include <maya/MCallbackIdArray.h>
#include <maya/MMessage.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MConditionMessage : public MMessage {
 public:
  static MCallbackId addConditionCallback(const MString& name, MStateFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MStatus getConditionNames(MStringArray& names);
  static bool getConditionState(const MString& name, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
