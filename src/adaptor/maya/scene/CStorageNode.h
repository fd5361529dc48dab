// The node of a scene file that keeps a rig.
#pragma once

#include <maya/MPxNode.h>
#include <maya/MString.h>
#include <maya/MTypeId.h>

namespace orv::rws::adaptor::maya {

/// One a rig, as StorageNode; its attributes are those of kRigAttributes.
class CStorageNode : public MPxNode {
 public:
  static void* Create();
  static MStatus Initialize();
  static const MTypeId kId;
  static const MString kTypeName;
};

}  // namespace orv::rws::adaptor::maya
