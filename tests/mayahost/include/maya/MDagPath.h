// One of the ways from the world to a DAG node.
#pragma once
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MString.h>

#include <vector>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MDagPath {
 public:
  MDagPath() = default;
  bool isValid(MStatus* status = NULL) const;
  MStatus set(const MDagPath& other) { return *this = other, MStatus::kSuccess; }
  MString fullPathName(MStatus* status = NULL) const;
  MString partialPathName(MStatus* status = NULL) const;
  MObject node(MStatus* status = NULL) const;
  MObject transform(MStatus* status = NULL) const;
  bool hasFn(MFn::Type type, MStatus* status = NULL) const;
  MFn::Type apiType(MStatus* status = NULL) const;
  unsigned int length(MStatus* status = NULL) const;
  unsigned int pathCount(MStatus* status = NULL) const;
  MStatus getPath(MDagPath& path, unsigned int i = 0) const;
  bool isTemplated(MStatus* status = NULL) const;
  unsigned int childCount(MStatus* status = NULL) const;
  MObject child(unsigned int i, MStatus* status = NULL) const;
  MStatus push(const MObject& child);
  MStatus pop(unsigned int num = 1);
  MStatus extendToShape();
  MStatus numberOfShapesDirectlyBelow(unsigned int& count) const;
  MStatus extendToShapeDirectlyBelow(unsigned int i);
  bool isInstanced(MStatus* status = NULL) const;
  unsigned int instanceNumber(MStatus* status = NULL) const;
  bool isVisible(MStatus* status = NULL) const;
  MMatrix inclusiveMatrix(MStatus* status = NULL) const;
  MMatrix exclusiveMatrix(MStatus* status = NULL) const;
  MMatrix inclusiveMatrixInverse(MStatus* status = NULL) const { return inclusiveMatrix(status).inverse(); }
  MMatrix exclusiveMatrixInverse(MStatus* status = NULL) const { return exclusiveMatrix(status).inverse(); }
  bool operator==(const MDagPath& o) const { return nodes == o.nodes; }
  bool operator!=(const MDagPath& o) const { return nodes != o.nodes; }
  static MStatus getAPathTo(const MObject& node, MDagPath& path);
  static MDagPath getAPathTo(const MObject& node, MStatus* status = NULL);
  static MStatus getAllPathsTo(const MObject& node, MDagPathArray& paths);

  std::vector<std::shared_ptr<mayahost::Node>> nodes;  ///< the stand-in's own: below the world
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
