// Who follows a host's scene.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace orv::rws::adaptor::headless {

/// Follows one scene of a host: a 3D view, a scene tree, a time line. Told after the change, on the
/// main thread. It may look at anything, and add and remove observers.
class HostObserver {
 public:
  virtual ~HostObserver() = default;
  /// Nodes have come, gone, moved or been renamed, or another scene has come. Each change is told:
  /// who shows many does so when it paints.
  virtual void OnTree() {}
  virtual void OnTime(double /*time*/) {}  ///< s
  virtual void OnSelection() {}
  /// The list of undo steps, or which of them are in force, has changed.
  virtual void OnUndo() {}
  /// The views are to be drawn anew.
  virtual void OnRefresh() {}
};

/// The observers of one host, none of them owned.
class HostObservers {
 public:
  void Add(HostObserver& observer) { m_observers.push_back(&observer); }
  /// An observer that goes must have left.
  void Remove(const HostObserver& observer) {
    std::replace(m_observers.begin(), m_observers.end(), const_cast<HostObserver*>(&observer),
                 static_cast<HostObserver*>(nullptr));
    if (m_telling == 0) DropGone();
  }
  template <class... Argument>
  void Tell(void (HostObserver::*what)(Argument...), Argument... argument) {
    if (m_observers.empty()) return;
    ++m_telling;
    const std::size_t count = m_observers.size();  // those that are added meanwhile hear the next
    for (std::size_t i = 0; i < count; ++i)
      if (m_observers[i]) (m_observers[i]->*what)(argument...);
    if (--m_telling == 0) DropGone();
  }

 private:
  void DropGone() {
    m_observers.erase(std::remove(m_observers.begin(), m_observers.end(), nullptr),
                      m_observers.end());
  }

  std::vector<HostObserver*> m_observers;  ///< null for one that left while they were told
  int m_telling = 0;
};

}  // namespace orv::rws::adaptor::headless
