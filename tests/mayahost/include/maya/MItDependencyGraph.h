// Nodes along connections, from one on.
#pragma once
#include <maya/MObject.h>
#include <maya/MPlug.h>

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
  MStatus next() { return ++fAt, MStatus::kSuccess; }
  MStatus reset() { return fAt = 0, MStatus::kSuccess; }
  bool isDone(MStatus* status = NULL) const;
  MObject currentItem(MStatus* status = NULL) const;
  MObject thisNode(MStatus* status = NULL) const { return currentItem(status); }
  MPlug thisPlug(MStatus* status = NULL) const;

 private:
  struct Item {
    MObject node;
    MPlug plug;
  };
  void Walk(const MPlug* from, const MObject& root, MFn::Type filter, Direction direction, Traversal traversal);
  std::vector<Item> fItems;
  std::size_t fAt = 0;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
