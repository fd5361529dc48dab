// All nodes, or those that have a function set.
#pragma once
#include <maya/MObject.h>

#include <vector>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MItDependencyNodes {
 public:
  MItDependencyNodes(MFn::Type filter = MFn::kInvalid, MStatus* status = NULL);
  MStatus reset(MFn::Type filter = MFn::kInvalid);
  MObject item(MStatus* status = NULL) const { return Now(status); }
  MObject thisNode(MStatus* status = NULL) const { return Now(status); }
  MStatus next();
  bool isDone(MStatus* status = NULL) const;

 private:
  MObject Now(MStatus* status) const;
  std::vector<MObject> fItems;
  std::size_t fAt = 0;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
