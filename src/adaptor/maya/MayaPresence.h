// A node that comes and goes with the steps of undo.
#pragma once

#include <maya/MDagModifier.h>

#include <memory>

#include "adaptor/common/RestoreObjects.h"

namespace orv::rws::adaptor::maya {

class CMayaNode;

/// Takes a transform, its curves and all below it out of the scene by a modifier, whose undoing
/// brings the very same objects back.
class MayaPresence final : public NodePresence {
 public:
  /// `block` is the id of the block whose step it is.
  MayaPresence(CMayaNode& node, int block);

 private:
  void Detach() override;
  void Attach() override;

  CMayaNode& m_own;
  int m_block;                          ///< whose step this is
  std::unique_ptr<MDagModifier> m_out;  ///< has deleted the node
};

}  // namespace orv::rws::adaptor::maya
