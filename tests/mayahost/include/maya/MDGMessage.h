// What happens to the graph.
#pragma once
#include <maya/MCallbackIdArray.h>
#include <maya/MMessage.h>
#define kDefaultNodeType "dependNode"
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MDGMessage : public MMessage {
 public:
  static MCallbackId addTimeChangeCallback(MTimeFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addForceUpdateCallback(MTimeFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addConnectionCallback(MPlugFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addNodeAddedCallback(MNodeFunction function, const MString& type = kDefaultNodeType, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addNodeRemovedCallback(MNodeFunction function, const MString& type = kDefaultNodeType, void* clientData = NULL, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
