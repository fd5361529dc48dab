// The nodes that the headless adaptor knows.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace orv::rws {
class CInterface;
}

namespace orv::rws::adaptor::headless {

class HeadlessNode;

/// The known nodes in the order in which they became known, found by their rig and their name
/// within it. All costs grow with the logarithm of the number of nodes, so that a rig may have
/// thousands. Owner and name of a node must change through here. Nodes are not owned.
class KnownNodes {
 public:
  using InOrder = std::map<std::uint64_t, HeadlessNode*>;

  /// Puts a node in: behind all others the first time, at its old place when it comes back.
  void Add(HeadlessNode& node);
  void Remove(HeadlessNode& node);
  void Clear();
  /// Gives a node, in here or not, another owner (null: a user's own) and name.
  void Identify(HeadlessNode& node, CInterface* owner, const std::string& name);

  /// The first known valid node with this owner and exactly this name, or null.
  HeadlessNode* Find(CInterface* owner, const std::string& name) const;
  /// The nodes of `owner`, valid or not, in their order.
  std::vector<HeadlessNode*> OfOwner(CInterface* owner) const;

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
    bool operator()(const HeadlessNode* a, const HeadlessNode* b) const;
    bool operator()(const HeadlessNode* a, const Identity& b) const;
    bool operator()(const Identity& a, const HeadlessNode* b) const;
  };
  static Identity IdentityOf(const HeadlessNode& node);
  static bool IsBefore(const Identity& a, const Identity& b);

  InOrder m_inOrder;
  std::set<HeadlessNode*, Less> m_byIdentity;  ///< owner, then name, then place
  std::uint64_t m_lastPlace = 0;
};

}  // namespace orv::rws::adaptor::headless
