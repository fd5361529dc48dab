// A list of objects, paths and plugs.
#pragma once
#include <maya/MDagPath.h>
#include <maya/MPlug.h>
#include <maya/MStringArray.h>
#include <maya/MUuid.h>

#include <vector>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MSelectionList {
 public:
  MSelectionList() = default;
  enum MergeStrategy { kMergeNormal, kXORWithList, kRemoveFromList };
  struct Item {
    MObject node;
    MDagPath path;
    MPlug plug;
    MObject component = MObject();
  };
  MStatus clear() { return items.clear(), MStatus::kSuccess; }
  bool isEmpty(MStatus* status = NULL) const;
  unsigned int length(MStatus* status = NULL) const;
  MStatus getDependNode(unsigned int i, MObject& node) const;
  MStatus getDagPath(unsigned int i, MDagPath& path) const;
  MStatus getDagPath(unsigned int i, MDagPath& path, MObject& component) const;
  MStatus getPlug(unsigned int i, MPlug& plug) const;
  MStatus add(const MString& pattern, bool searchChildNamespaces = false);
  MStatus add(const MObject& node, bool mergeWithExisting = false);
  MStatus add(const MDagPath& path, const MObject& component = MObject::kNullObj, bool mergeWithExisting = false);
  MStatus add(const MPlug& plug, bool mergeWithExisting = false);
  MStatus add(const MUuid& uuid, bool mergeWithExisting = false);
  MStatus remove(unsigned int i);
  MStatus replace(unsigned int i, const MObject& node);
  MStatus replace(unsigned int i, const MDagPath& path, const MObject& component = MObject::kNullObj);
  MStatus replace(unsigned int i, const MPlug& plug);
  MStatus toggle(const MDagPath& path, const MObject& component = MObject::kNullObj);
  MStatus intersect(const MSelectionList& other, bool expandToLeaves = false);
  bool hasItem(const MPlug& plug, MStatus* status = NULL) const;
  bool hasItemPartly(const MDagPath& path, const MObject& component, MStatus* status = NULL) const { return hasItem(path, component, status); }
  bool hasItem(const MObject& node, MStatus* status = NULL) const;
  bool hasItem(const MDagPath& path, const MObject& component = MObject::kNullObj, MStatus* status = NULL) const;
  MStatus getSelectionStrings(MStringArray& names) const;
  MStatus getSelectionStrings(unsigned int i, MStringArray& names) const;
  MStatus merge(const MSelectionList& other, MergeStrategy strategy = kMergeNormal);
  MStatus merge(const MDagPath& path, const MObject& component = MObject::kNullObj, MergeStrategy strategy = kMergeNormal);

  std::vector<Item> items;  ///< the stand-in's own
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
