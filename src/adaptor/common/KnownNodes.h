// The nodes that an adaptor knows.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace orv::rws {
class CInterface;
}

namespace orv::rws::adaptor {

class HostNode;

/// The known nodes in the order in which they became known, found by their rig and their name
/// within it. All costs grow with the logarithm of the number of nodes, so that a rig may have
/// thousands. Owner and name of a node must change through here. Nodes are not owned.
class KnownNodes {
 public:
  using InOrder = std::map<std::uint64_t, HostNode*>;

  /// Puts a node in: behind all others the first time, at its old place when it comes back.
  void Add(HostNode& node);
  void Remove(HostNode& node);
  void Clear();
  /// Gives a node, in here or not, another owner (null: a user's own) and name.
  void Identify(HostNode& node, CInterface* owner, const std::string& name);

  /// The first known valid node with this owner and exactly this name, or null.
  HostNode* Find(CInterface* owner, const std::string& name) const;
  /// The nodes of `owner`, valid or not, in their order.
  std::vector<HostNode*> OfOwner(CInterface* owner) const;

  /// By their place, which is unique and rises.
  const InOrder& All() const { return m_inOrder; }
  /// The place of the node that became known last; 0 before the first.
  std::uint64_t LastPlace() const { return m_lastPlace; }

 private:
  struct Identity {
    const CInterface* owner;
    const std::string& name;
    std::uint64_t place;
  };
  struct Less {
    using is_transparent = void;
    bool operator()(const HostNode* a, const HostNode* b) const;
    bool operator()(const HostNode* a, const Identity& b) const;
    bool operator()(const Identity& a, const HostNode* b) const;
  };
  static Identity IdentityOf(const HostNode& node);
  static bool IsBefore(const Identity& a, const Identity& b);

  InOrder m_inOrder;
  std::set<HostNode*, Less> m_byIdentity;  ///< owner, then name, then place
  std::uint64_t m_lastPlace = 0;
};

}  // namespace orv::rws::adaptor
