// Telling a user's event from its replay by undo or redo.
#pragma once

#include <string>
#include <string_view>

#include "core/interface/CREEventUndo.h"

namespace orv::rws::addon {

/// The name of an event, taken apart; it must outlive this. Live spinners make an event a frame, so
/// nothing is copied.
struct ReplayedEvent {
  explicit ReplayedEvent(const std::string& name) : label(name) {
    constexpr std::size_t kPrefix = 8;
    const std::string_view prefix = label.substr(0, kPrefix);
    isUndo = prefix == kRealUndo;
    isRedo = prefix == kRealRedo;
    if (IsReplay()) label.remove_prefix(kPrefix);
  }
  bool IsReplay() const { return isUndo || isRedo; }

  std::string_view label;  ///< of the element, without a prefix
  bool isUndo = false;
  bool isRedo = false;
};

}  // namespace orv::rws::addon
