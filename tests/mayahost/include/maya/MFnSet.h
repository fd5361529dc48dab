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
  MStatus removeMembers(const MSelectionList& list);
  bool hasRestrictions(MStatus* status = NULL) const { return restriction(status) != kNone; }
  MString annotation(MStatus* status = NULL) const;
  MStatus setAnnotation(const MString& text);
  MStatus getUnion(const MObject& other, MSelectionList& result) const;
  MStatus getIntersection(const MObject& other, MSelectionList& result) const;
  bool intersectsWith(const MObject& other, MStatus* status = NULL) const;
  MStatus getMembers(MSelectionList& members, bool flatten) const;
  bool isMember(const MObject& object, MStatus* status = NULL) const;
  bool isMember(const MDagPath& path, const MObject& component = MObject::kNullObj, MStatus* status = NULL) const;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
