// Callbacks.
#pragma once
#include <maya/MObject.h>
#include <maya/MString.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
typedef long long MCallbackId;
class MMessage {
 public:
  enum Action { kDefaultAction, kDoNotDoAction, kDoAction };
  typedef void (*MBasicFunction)(void* clientData);
  typedef void (*MElapsedTimeFunction)(float elapsed, float last, void* clientData);
  typedef void (*MCheckFunction)(bool* retCode, void* clientData);
  typedef void (*MNodeFunction)(MObject& node, void* clientData);
  typedef void (*MStringFunction)(const MString& text, void* clientData);
  typedef void (*MNodeStringFunction)(MObject& node, const MString& text, void* clientData);
  typedef void (*MStateFunction)(bool state, void* clientData);
  typedef void (*MStringArrayFunction)(const MStringArray& texts, void* clientData);
  typedef void (*MObjArrayFunction)(MObjectArray& objects, void* clientData);
  typedef void (*MTimeFunction)(MTime& time, void* clientData);
  typedef void (*MPlugFunction)(MPlug& src, MPlug& dst, bool made, void* clientData);
  typedef void (*MNodeModFunction)(MObject& node, MDGModifier& modifier, void* clientData);
  typedef void (*MNodePlugFunction)(MObject& node, MPlug& plug, void* clientData);
  typedef void (*MParentChildFunction)(MDagPath& child, MDagPath& parent, void* clientData);
  static MStatus removeCallback(MCallbackId id);
  static MStatus removeCallbacks(const MCallbackIdArray& ids);
  static MStatus nodeCallbacks(const MObject& node, MCallbackIdArray& ids);
  static MCallbackId currentCallbackId();
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
