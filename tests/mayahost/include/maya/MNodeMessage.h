// What happens to a node.
#pragma once
#include <maya/MCallbackIdArray.h>
#include <maya/MMessage.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MNodeMessage : public MMessage {
 public:
  // clang-format off
  enum AttributeMessage {
    kConnectionMade = 0x01, kConnectionBroken = 0x02, kAttributeEval = 0x04, kAttributeSet = 0x08, kAttributeLocked = 0x10, kAttributeUnlocked = 0x20,
    kAttributeAdded = 0x40, kAttributeRemoved = 0x80, kAttributeRenamed = 0x100, kAttributeKeyable = 0x200, kAttributeUnkeyable = 0x400,
    kIncomingDirection = 0x800, kAttributeArrayAdded = 0x1000, kAttributeArrayRemoved = 0x2000, kOtherPlugSet = 0x4000, kLast = 0x8000
  };
  // clang-format on
  typedef void (*MAttr2PlugFunction)(AttributeMessage msg, MPlug& plug, MPlug& otherPlug, void* clientData);
  typedef void (*MAttrFunction)(AttributeMessage msg, MPlug& plug, void* clientData);
  static MCallbackId addAttributeAddedOrRemovedCallback(MObject& node, MAttrFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addAttributeChangedCallback(MObject& node, MAttr2PlugFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addNodeDirtyCallback(MObject& node, MNodeFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addNodeDirtyPlugCallback(MObject& node, MNodePlugFunction function, void* clientData = NULL, MStatus* status = NULL);
  /// A null node stands for all.
  static MCallbackId addNameChangedCallback(MObject& node, MNodeStringFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addNodePreRemovalCallback(MObject& node, MNodeFunction function, void* clientData = NULL, MStatus* status = NULL);
  static MCallbackId addNodeAboutToDeleteCallback(MObject& node, MNodeModFunction function, void* clientData = NULL, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
