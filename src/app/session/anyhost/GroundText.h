// What rigs meet in a scene, told to a user.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/interface/GroundReport.h"

namespace orv::rws::core {
class CoreImplementation;
class Instance;
}  // namespace orv::rws::core

namespace orv::app {

/// What the rig meets if a take begins now, as it tells it itself; nothing for a rig that meets
/// nothing by its nature.
std::optional<rws::GroundReport> GroundOf(rws::core::Instance& rig);
/// The same in one line, without the rig's name.
std::string GroundText(const rws::GroundReport& ground);

/// What each rig of a scene meets, to be compared with what it meets after a change.
class GroundWatch {
 public:
  explicit GroundWatch(rws::core::CoreImplementation& core);
  /// What the rigs meet now that meet something else than before or that tell it by `node`.
  std::vector<std::pair<rws::core::Instance*, rws::GroundReport>> Changes(
      const std::string& node) const;

 private:
  rws::core::CoreImplementation& m_core;
  std::vector<std::optional<rws::GroundReport>> m_before;  ///< in the rigs' order
};

}  // namespace orv::app
