// Telling a user's event from its replay by undo or redo.
#pragma once

#include <string>

#include "core/interface/CREEventUndo.h"

namespace orv::rws::addon {

/// The name of an event, taken apart.
struct ReplayedEvent {
  explicit ReplayedEvent(const std::string& name) : label(name) {
    const std::string prefix = name.substr(0, 8);
    isUndo = prefix == kRealUndo;
    isRedo = prefix == kRealRedo;
    if (IsReplay()) label.erase(0, 8);
  }
  bool IsReplay() const { return isUndo || isRedo; }

  std::string label;  ///< of the element, without a prefix
  bool isUndo = false;
  bool isRedo = false;
};

}  // namespace orv::rws::addon
