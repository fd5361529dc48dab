// The node of a scene file that keeps the adaptor's state.
#pragma once

#include <maya/MPxNode.h>
#include <maya/MString.h>
#include <maya/MTypeId.h>

namespace orv::rws::adaptor::maya {

/// One a scene, there from before it is saved until after, and while it is read. Its attributes are
/// those of kSceneAttributes, hidden and stored.
class StorageNode : public MPxNode {
 public:
  static void* Create();
  static MStatus Initialize();
  static const MTypeId kId;
  static const MString kTypeName;
};

}  // namespace orv::rws::adaptor::maya
