#include "adaptor/common/KnownNodes.h"

#include <algorithm>
#include <functional>
#include <tuple>

#include "adaptor/common/HostNode.h"

namespace orv::rws::adaptor {

KnownNodes::Identity KnownNodes::IdentityOf(const HostNode& node) {
  return {node.owner, node.name, node.m_aside->place};
}

bool KnownNodes::IsBefore(const Identity& a, const Identity& b) {
  if (a.owner != b.owner) return std::less<>()(a.owner, b.owner);
  return std::tie(a.name, a.place) < std::tie(b.name, b.place);
}

bool KnownNodes::Less::operator()(const HostNode* a, const HostNode* b) const {
  return IsBefore(IdentityOf(*a), IdentityOf(*b));
}

bool KnownNodes::Less::operator()(const HostNode* a, const Identity& b) const {
  return IsBefore(IdentityOf(*a), b);
}

bool KnownNodes::Less::operator()(const Identity& a, const HostNode* b) const {
  return IsBefore(a, IdentityOf(*b));
}

void KnownNodes::Add(HostNode& node) {
  if (node.m_known) return;
  node.m_known = true;
  if (node.m_aside->place == 0) node.m_aside->place = ++m_lastPlace;
  m_inOrder.emplace(node.m_aside->place, &node);
  m_byIdentity.insert(&node);
}

void KnownNodes::Remove(HostNode& node) {
  if (!node.m_known) return;
  node.m_known = false;
  m_inOrder.erase(node.m_aside->place);
  m_byIdentity.erase(&node);
}

void KnownNodes::Clear() {
  m_inOrder.clear();
  m_byIdentity.clear();
  m_lastPlace = 0;
}

void KnownNodes::Identify(HostNode& node, CInterface* owner, const std::string& name) {
  if (node.m_known) m_byIdentity.erase(&node);
  node.owner = owner;
  node.name = name;
  if (node.m_known) m_byIdentity.insert(&node);
}

HostNode* KnownNodes::Find(CInterface* owner, const std::string& name) const {
  auto at = m_byIdentity.lower_bound(Identity{owner, name, 0});
  while (at != m_byIdentity.end() && (*at)->owner == owner && (*at)->name == name &&
         !(*at)->IsValid())
    ++at;
  const bool found = at != m_byIdentity.end() && (*at)->owner == owner && (*at)->name == name;
  return found ? *at : nullptr;
}

std::vector<HostNode*> KnownNodes::OfOwner(CInterface* owner) const {
  std::vector<HostNode*> nodes;
  const std::string first;
  for (auto at = m_byIdentity.lower_bound(Identity{owner, first, 0});
       at != m_byIdentity.end() && (*at)->owner == owner; ++at)
    nodes.push_back(*at);
  std::sort(nodes.begin(), nodes.end(), [](const HostNode* a, const HostNode* b) {
    return a->m_aside->place < b->m_aside->place;
  });
  return nodes;
}

}  // namespace orv::rws::adaptor
