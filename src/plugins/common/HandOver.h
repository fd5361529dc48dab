// What a user has put under a rig's node, when that node goes.
#pragma once

#include "core/interface/CInterface.h"
#include "core/interface/CNode.h"
#include "plugins/common/RigSceneNode.h"

namespace orv::rws::addon {

/// Hands all children of `node` to `home`, ahead of the node's deletion.
inline void HandOverChildren(CInterface& core, const RigSceneNode& node, const RigSceneNode& home) {
  CNode* const from = node.GetNode();
  for (int i = from ? from->GetChildCount() - 1 : -1; i >= 0; --i) {
    CNode* const child = from->GetChild(i);
    if (!child) continue;
    child->Extension(kHandOver, home.GetNode(), nullptr);
    core.ReleaseNode(static_cast<CExtendable*>(child));
  }
}

}  // namespace orv::rws::addon
