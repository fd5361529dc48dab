#include "core/instances/NodeOwnerUndo.h"

#include <utility>

#include "core/host/AdaptorInterface.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceHost.h"

namespace orv::rws::core {

NodeOwnerUndo::NodeOwnerUndo(const Instance& instance, std::string node, std::string tag)
    : m_instance(instance), m_node(std::move(node)), m_tag(std::move(tag)) {}

void NodeOwnerUndo::Undo(bool keep) {
  if (keep) Redo();
}

void NodeOwnerUndo::Redo() {
  Instance* const owner = m_instance.IsOriginalGone() ? m_instance.Get() : nullptr;
  if (owner)
    owner->GetHost().GetAdaptor()->ClaimTaggedNodes(
        {owner, m_node, owner->GetInstanceName() + "_" + m_node}, m_tag);
}

}  // namespace orv::rws::core
