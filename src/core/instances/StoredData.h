// What a rig stores, kept beside an undo step.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "core/instances/InstanceHandle.h"

namespace orv::rws::core {

/// The data of a rig as they stand at one place of the history. A step that knows the rig's object
/// can do nothing for another one, which undo and redo build when a rig goes and comes back: that
/// one gets the data instead.
class StoredData {
 public:
  explicit StoredData(const Instance& instance) : m_instance(instance) {}

  /// Keeps what the rig would store now.
  void Note();
  /// Gives what was kept, if anything, to the object that has come in its place.
  void PutBack() const;

 private:
  InstanceHandle m_instance;
  std::optional<std::vector<unsigned char>> m_data;
  std::vector<std::pair<int, double>> m_gauges;  ///< element id and number; not in the data
};

}  // namespace orv::rws::core
