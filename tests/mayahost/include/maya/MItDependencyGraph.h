// Nodes along connections, from one on.
#pragma once
#include <maya/MObject.h>
#include <maya/MPlug.h>

#include <set>
#include <vector>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MItDependencyGraph {
 public:
  enum Direction { kDownstream, kUpstream };
  enum Traversal { kDepthFirst, kBreadthFirst };
  enum Level { kNodeLevel, kPlugLevel };
  MItDependencyGraph(MObject& root, MFn::Type filter = MFn::kInvalid, Direction direction = kDownstream, Traversal traversal = kDepthFirst,
                     Level level = kNodeLevel, MStatus* status = NULL);
  MItDependencyGraph(MPlug& root, MFn::Type filter = MFn::kInvalid, Direction direction = kDownstream, Traversal traversal = kDepthFirst,
                     Level level = kNodeLevel, MStatus* status = NULL);
  MStatus next();
  MStatus reset() { return fAt = 0, fPruned.clear(), fFits.empty() || fFits[0] ? MStatus(MStatus::kSuccess) : next(); }
  /// What is found beyond the current item only is left out.
  MStatus prune();
  bool isDone(MStatus* status = NULL) const;
  MObject currentItem(MStatus* status = NULL) const;
  MObject thisNode(MStatus* status = NULL) const { return currentItem(status); }
  MPlug thisPlug(MStatus* status = NULL) const;

 private:
  struct Item {
    MObject node;
    MPlug plug;
    std::size_t from;  ///< the item that led here; the first leads to itself
  };
  void Walk(const MPlug* from, const MObject& root, MFn::Type filter, Direction direction, Traversal traversal);
  std::vector<Item> fItems;  ///< also those that don't fit
  std::vector<bool> fFits;
  std::set<std::size_t> fPruned;
  std::size_t fAt = 0;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
