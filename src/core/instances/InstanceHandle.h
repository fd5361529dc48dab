// How an undo step finds its instance.
#pragma once

#include <memory>

namespace orv::rws::core {

class Instance;
class InstanceHost;

/// An instance by its identity, which the one that an undone deletion builds has from the one that
/// was deleted. The core must outlive the handle's use.
class InstanceHandle {
 public:
  explicit InstanceHandle(const Instance& instance);

  /// Null while the instance is deleted.
  Instance* Get() const;
  /// Whether the object that the handle was made of is gone.
  bool IsOriginalGone() const { return m_original.expired(); }

 private:
  const InstanceHost& m_host;
  int m_identity;
  std::weak_ptr<int> m_original;
};

}  // namespace orv::rws::core
