// Sets, also those that shade.
#pragma once
#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MSelectionList.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnSet : public MFnDependencyNode {
  declareMinimalMFn(MFnSet)
  enum Restriction { kNone, kVerticesOnly, kEdgesOnly, kFacetsOnly, kEditPointsOnly, kRenderableOnly };
  MObject create(const MSelectionList& members, Restriction restriction = kNone, MStatus* status = NULL);
  Restriction restriction(MStatus* status = NULL) const;
  MStatus clear();
  MStatus addMember(const MObject& object);
  MStatus addMember(const MDagPath& path, const MObject& component = MObject::kNullObj);
  MStatus addMember(const MPlug& plug);
  MStatus addMembers(const MSelectionList& list);
  MStatus removeMember(const MObject& object);
  MStatus removeMember(const MDagPath& path, const MObject& component = MObject::kNullObj);
  MStatus getMembers(MSelectionList& members, bool flatten) const;
  bool isMember(const MObject& object, MStatus* status = NULL) const;
  bool isMember(const MDagPath& path, const MObject& component = MObject::kNullObj, MStatus* status = NULL) const;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
