// Nodes of the hierarchy.
#pragma once
#include <maya/MBoundingBox.h>
#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnDagNode : public MFnDependencyNode {
  declareDagMFn(MFnDagNode)
  enum { kNextPos = 0xff };
  MObject create(const MTypeId& typeId, MObject& parent = MObject::kNullObj, MStatus* status = NULL);
  MObject create(const MTypeId& typeId, const MString& name, MObject& parent = MObject::kNullObj, MStatus* status = NULL);
  MObject create(const MString& type, MObject& parent = MObject::kNullObj, MStatus* status = NULL);
  MObject create(const MString& type, const MString& name, MObject& parent = MObject::kNullObj, MStatus* status = NULL);
  MStatus setObject(MObject& object) override;
  MStatus setObject(const MObject& object) override;
  virtual MStatus setObject(const MDagPath& path);
  unsigned int parentCount(MStatus* status = NULL) const;
  MObject parent(unsigned int i, MStatus* status = NULL) const;
  unsigned int childCount(MStatus* status = NULL) const;
  MObject child(unsigned int i, MStatus* status = NULL) const;
  MStatus addChild(MObject& child, unsigned int index = kNextPos, bool keepExistingParents = false);
  MStatus removeChild(MObject& child);
  MStatus removeChildAt(unsigned int index);
  MObject dagRoot(MStatus* status = NULL) const;
  bool hasParent(const MObject& node, MStatus* status = NULL) const;
  bool hasChild(const MObject& node, MStatus* status = NULL) const;
  bool isChildOf(const MObject& node, MStatus* status = NULL) const { return hasParent(node, status); }
  bool isParentOf(const MObject& node, MStatus* status = NULL) const { return hasChild(node, status); }
  bool isInstanced(bool indirect = true, MStatus* status = NULL) const;
  unsigned int instanceCount(bool total, MStatus* status = NULL) const;
  bool inModel(MStatus* status = NULL) const;
  bool inUnderWorld(MStatus* status = NULL) const;
  bool isInstanceable(MStatus* status = NULL) const;
  MBoundingBox boundingBox(MStatus* status = NULL) const;
  MStatus getConnectedSetsAndMembers(unsigned int instance, MObjectArray& sets, MObjectArray& components, bool renderableSetsOnly) const;
  MObject duplicate(bool instance = false, bool instanceLeaf = false, MStatus* status = NULL) const;
  MStatus getPath(MDagPath& path) const;
  MDagPath dagPath(MStatus* status = NULL) const;
  MStatus getAllPaths(MDagPathArray& paths) const;
  MString fullPathName(MStatus* status = NULL) const;
  MString partialPathName(MStatus* status = NULL) const;
  MString uniqueName(MStatus* status = NULL) const override { return partialPathName(status); }
  MMatrix transformationMatrix(MStatus* status = NULL) const;
  bool isIntermediateObject(MStatus* status = NULL) const;
  MStatus setIntermediateObject(bool intermediate);

 protected:
  MDagPath fPath;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
