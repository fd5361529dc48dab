// Whose a node is, for a rig that is rebuilt later.
#pragma once

#include <string>

#include "core/instances/InstanceHandle.h"
#include "core/interface/CUndo.h"

namespace orv::rws::core {

/// Stands behind the making of a node and ahead of its deletion: whichever of them undo or redo
/// takes back, the node belongs to the rig as it is now. A host knows a node's rig by its object,
/// which is another one when undo and redo have rebuilt it, and may by then be that of another rig.
class NodeOwnerUndo : public CUndo {
 public:
  /// `node`: as the rig calls it.
  NodeOwnerUndo(const Instance& instance, std::string node, std::string tag);
  void Undo(bool keep) override;
  void Redo() override;

 private:
  InstanceHandle m_instance;
  std::string m_node, m_tag;
};

}  // namespace orv::rws::core
