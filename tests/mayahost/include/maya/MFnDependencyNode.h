// Nodes.
#pragma once
#include <maya/MFnBase.h>
#include <maya/MPlug.h>
#include <maya/MTypeId.h>
#include <maya/MUuid.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnDependencyNode : public MFnBase {
  declareMinimalMFn(MFnDependencyNode)
  enum MAttrClass { kLocalDynamicAttr = 1, kNormalAttr, kExtensionAttr, kInvalidAttr };
  MObject create(const MTypeId& typeId, MStatus* status = NULL);
  MObject create(const MTypeId& typeId, const MString& name, MStatus* status = NULL);
  MObject create(const MString& type, MStatus* status = NULL);
  MObject create(const MString& type, const MString& name, MStatus* status = NULL);
  MTypeId typeId(MStatus* status = NULL) const;
  MString typeName(MStatus* status = NULL) const;
  MString name(MStatus* status = NULL) const;
  MString absoluteName(MStatus* status = NULL) const;
  virtual MString uniqueName(MStatus* status = NULL) const;
  MString pluginName(MStatus* status = NULL) const;
  MString setName(const MString& name, bool createNamespace = false, MStatus* status = NULL);
  MUuid uuid(MStatus* status = NULL) const;
  MStatus getConnections(MPlugArray& plugs) const;
  unsigned int attributeCount(MStatus* status = NULL) const;
  MObject attribute(unsigned int index, MStatus* status = NULL) const;
  MObject attribute(const MString& name, MStatus* status = NULL) const;
  bool hasAttribute(const MString& name, MStatus* status = NULL) const;
  MPlug findPlug(const MObject& attribute, bool wantNetworkedPlug, MStatus* status = NULL) const;
  MPlug findPlug(const MString& name, bool wantNetworkedPlug, MStatus* status = NULL) const;
  MPlug findPlug(const MObject& attribute, MStatus* status = NULL) const { return findPlug(attribute, true, status); }
  MPlug findPlug(const MString& name, MStatus* status = NULL) const { return findPlug(name, true, status); }
  MAttrClass attributeClass(const MObject& attribute, MStatus* status = NULL) const;
  MStatus getAffectedAttributes(const MObject& attribute, MObjectArray& affected) const;
  MStatus getAffectedByAttributes(const MObject& attribute, MObjectArray& affecting) const;
  bool isNewAttribute(const MObject& attribute, MStatus* status = NULL) const;
  bool hasUniqueName(MStatus* status = NULL) const;
  MStatus setUuid(const MUuid& uuid);
  MStatus addAttribute(const MObject& attribute, MAttrClass type = kLocalDynamicAttr);
  MStatus removeAttribute(const MObject& attribute, MAttrClass type = kLocalDynamicAttr);
  MPxNode* userNode(MStatus* status = NULL) const;
  bool isFromReferencedFile(MStatus* status = NULL) const;
  bool isLocked(MStatus* status = NULL) const;
  MStatus setLocked(bool locked);
  bool isDefaultNode(MStatus* status = NULL) const;
  MStatus setDoNotWrite(bool flag);
  bool canBeWritten(MStatus* status = NULL) const;
  MString parentNamespace(MStatus* status = NULL) const;
  bool setAlias(const MString& alias, const MString& name, const MPlug& plug, bool add = true, MStatus* status = NULL);
  bool findAlias(const MString& alias, MObject& attribute, MStatus* status = NULL) const;
  bool getAliasList(MStringArray& aliases, MStatus* status = NULL);
  MString plugsAlias(const MPlug& plug, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
