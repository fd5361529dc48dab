// How function sets are made of objects.
#pragma once
#include <maya/MFnDagNode.h>

#include "Scene.h"

#define FN_SET(Class, kType)                             \
  Class::Class(MObject& object, MStatus* status) {       \
    const MStatus s = setObject(object);                 \
    if (status) *status = s;                             \
  }                                                      \
  Class::Class(const MObject& object, MStatus* status) { \
    const MStatus s = setObject(object);                 \
    if (status) *status = s;                             \
  }                                                      \
  MFn::Type Class::type() const { return kType; }
#define FN_DAG(Class, kType)                            \
  FN_SET(Class, kType)                                  \
  Class::Class(const MDagPath& path, MStatus* status) { \
    const MStatus s = setObject(path);                  \
    if (status) *status = s;                            \
  }

namespace mayahost {
/// Null, and a failure, when there is no node.
inline NodePtr Need(const MObject& object, MStatus* status) {
  const NodePtr node = NodeOf(object);
  Ok(status, node != nullptr);
  return node;
}
/// From an object's space to the one that is asked for; false when it can't be told.
bool ToSpace(const MDagPath& path, MSpace::Space space, MMatrix& matrix);
/// A new node at its parent; a shape without one gets a transform, which is what is told then.
/// A mesh's edges, each where it comes first along the faces.
std::vector<std::pair<int, int>> EdgesOf(const Shape& mesh);
ShapePtr GeometryOf(const MObject& object);
NodePtr CreateDag(const NodeType* type, const std::string& name, const MObject& parent, bool add = true);
/// With all below it, at a parent (null for what has none); without connections.
NodePtr DuplicateNode(const NodePtr& node, Node* parent);
PlugRef NumberOf(const NodePtr& node, const char* name);
}  // namespace mayahost
