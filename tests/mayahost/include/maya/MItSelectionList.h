// Items of a selection list.
#pragma once
#include <maya/MSelectionList.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MItSelectionList {
 public:
  enum SelItemType { kUnknownItem, kDagSelectionItem, kAnimSelectionItem, kDNselectionItem, kPlugSelectionItem };
  MItSelectionList(MSelectionList& list, MFn::Type filter = MFn::kInvalid, MStatus* status = NULL);
  MItSelectionList(const MSelectionList& list, MStatus* status = NULL);
  MStatus reset() { return fAt = 0, MStatus::kSuccess; }
  bool isDone(MStatus* status = NULL) const;
  MStatus next() { return ++fAt, MStatus::kSuccess; }
  SelItemType itemType(MStatus* status = NULL) const;
  MStatus setFilter(MFn::Type filter);
  MStatus getPlug(MPlug& plug) const { return fList.getPlug(fAt, plug); }
  MStatus getStrings(MStringArray& names) const { return fList.getSelectionStrings(fAt, names); }
  MStatus getDependNode(MObject& node) const;
  MStatus getDagPath(MDagPath& path) const;
  MStatus getDagPath(MDagPath& path, MObject& component) const;
  bool hasComponents(MStatus* status = NULL) const;

 private:
  MSelectionList fAll, fList;
  unsigned int fAt = 0;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
