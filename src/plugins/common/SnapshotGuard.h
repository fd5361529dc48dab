// A pose snapshot that can't be forgotten.
#pragma once

#include "core/interface/CInterface.h"
#include "core/interface/CSnapshot.h"

namespace orv::rws::addon {

/// Holds the snapshot of a node for the length of a scope. Empty for a null node or one that is
/// gone from the scene.
class SnapshotGuard {
 public:
  SnapshotGuard(CInterface& core, CNode* node, double time)
      : m_core(core), m_snapshot(core.GetSnapshot(node, time)) {}
  SnapshotGuard(const SnapshotGuard&) = delete;
  SnapshotGuard& operator=(const SnapshotGuard&) = delete;
  ~SnapshotGuard() { m_core.ReleaseSnapshot(m_snapshot); }

  explicit operator bool() const { return m_snapshot != nullptr; }
  CSnapshot* operator->() const { return m_snapshot; }

 private:
  CInterface& m_core;
  CSnapshot* m_snapshot;
};

}  // namespace orv::rws::addon
