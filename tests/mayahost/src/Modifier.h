// What a modifier will do, and what it has done.
#pragma once
#include <maya/MDGModifier.h>

#include "Scene.h"

namespace mayahost {
struct ModifierState {
  ModifierState();
  void Add(std::function<bool()> op);
  bool Do();
  bool Undo();
  std::vector<std::function<bool()>> pending;
  Journal journal;
  bool undone = false;
};
/// Commands of a modifier are undone with it, and make no entry of their own.
bool RunInModifier(const std::string& command);
inline void AddToModifier(MDGModifier& modifier, std::function<bool()> op) { modifier.State().Add(std::move(op)); }
}  // namespace mayahost
