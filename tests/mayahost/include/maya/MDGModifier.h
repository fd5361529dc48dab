// Changes of the graph, done and undone together.
#pragma once
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MString.h>
#include <maya/MTypeId.h>

#include <memory>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MDGModifier {
 public:
  MDGModifier();
  virtual ~MDGModifier();
  MDGModifier(const MDGModifier&) = delete;
  MDGModifier& operator=(const MDGModifier&) = delete;
  MStatus doIt();
  MStatus undoIt();
  MObject createNode(const MTypeId& typeId, MStatus* status = NULL);
  MObject createNode(const MString& type, MStatus* status = NULL);
  MStatus deleteNode(const MObject& node);
  MStatus deleteNode(const MObject& node, bool includeParents);
  MStatus renameNode(const MObject& node, const MString& name);
  MStatus connect(const MPlug& source, const MPlug& destination);
  MStatus connect(const MObject& sourceNode, const MObject& sourceAttr, const MObject& destNode, const MObject& destAttr);
  MStatus disconnect(const MPlug& source, const MPlug& destination);
  MStatus disconnect(const MObject& sourceNode, const MObject& sourceAttr, const MObject& destNode, const MObject& destAttr);
  MStatus addAttribute(const MObject& node, const MObject& attribute);
  MStatus removeAttribute(const MObject& node, const MObject& attribute);
  MStatus setNodeLockState(const MObject& node, bool locked);
  MStatus newPlugValue(const MPlug& plug, const MObject& value);
  MStatus newPlugValueBool(const MPlug& plug, bool value);
  MStatus newPlugValueDouble(const MPlug& plug, double value);
  MStatus newPlugValueFloat(const MPlug& plug, float value);
  MStatus newPlugValueInt(const MPlug& plug, int value);
  MStatus newPlugValueShort(const MPlug& plug, short value);
  MStatus newPlugValueString(const MPlug& plug, const MString& value);
  MStatus newPlugValueChar(const MPlug& plug, char value);
  MStatus newPlugValueInt64(const MPlug& plug, MInt64 value);
  MStatus newPlugValueMAngle(const MPlug& plug, const MAngle& value);
  MStatus newPlugValueMDistance(const MPlug& plug, const MDistance& value);
  MStatus newPlugValueMTime(const MPlug& plug, const MTime& value);
  MStatus commandToExecute(const MString& command);

  mayahost::ModifierState& State() { return *fState; }  ///< the stand-in's own

 protected:
  std::unique_ptr<mayahost::ModifierState> fState;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
