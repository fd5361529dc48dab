// Changes of the hierarchy, done and undone together.
#pragma once
#include <maya/MDGModifier.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MDagModifier : public MDGModifier {
 public:
  MObject createNode(const MTypeId& typeId, MObject parent = MObject::kNullObj, MStatus* status = NULL);
  MObject createNode(const MString& type, MObject parent = MObject::kNullObj, MStatus* status = NULL);
  MStatus reparentNode(const MObject& node, MObject newParent = MObject::kNullObj);
  using MDGModifier::deleteNode;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
