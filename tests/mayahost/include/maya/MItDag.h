// The hierarchy.
#pragma once
#include <maya/MDagPath.h>
#include <maya/MObject.h>

#include <vector>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MItDag {
 public:
  enum TraversalType { kInvalidType, kDepthFirst, kBreadthFirst };
  MItDag(TraversalType type = kDepthFirst, MFn::Type filter = MFn::kInvalid, MStatus* status = NULL);
  MStatus reset();
  MStatus reset(const MObject& root, TraversalType type = kDepthFirst, MFn::Type filter = MFn::kInvalid);
  MStatus reset(const MDagPath& root, TraversalType type = kDepthFirst, MFn::Type filter = MFn::kInvalid);
  MObject currentItem(MStatus* status = NULL) const;
  MObject item(MStatus* status = NULL) const { return currentItem(status); }
  MObject root(MStatus* status = NULL) const;
  unsigned int depth(MStatus* status = NULL) const;
  MString fullPathName(MStatus* status = NULL) const;
  MString partialPathName(MStatus* status = NULL) const;
  MStatus getPath(MDagPath& path) const;
  MStatus getAllPaths(MDagPathArray& paths) const;
  MStatus prune();
  bool isInstanced(bool indirect = true, MStatus* status = NULL) const;
  unsigned int instanceCount(bool total = true, MStatus* status = NULL) const;
  bool willTraverseUnderWorld(MStatus* status = NULL) const;
  MStatus next();
  bool isDone(MStatus* status = NULL) const;
  TraversalType traversalType(MStatus* status = NULL) const;
  void traverseUnderWorld(bool on) { fUnderWorld = on; }

 private:
  struct Step {
    MDagPath path;
    unsigned int depth;
  };
  bool Fits() const;
  void Advance();
  bool fUnderWorld = true, fPruned = false;
  MDagPath fRoot;
  TraversalType fType = kDepthFirst;
  MFn::Type fFilter = MFn::kInvalid;
  std::vector<Step> fOpen;  ///< front is the current one
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
