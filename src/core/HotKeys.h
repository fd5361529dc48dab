// The hot keys of the program: one table.
#pragma once

#include <vector>

#include "core/services/Hooks.h"

namespace orv::rws::core {

enum class HotKeyAction { kStop, kRetry, kSlower, kFaster, kStart };

/// When a hot key is one. A take is one from its countdown on, and no resimulation.
enum class HotKeyTime { kInTake, kIdle };

/// How a modifier key must be held.
enum class ModifierNeed { kUp, kDown, kEither };

/// One key and what it does. A row that fits is meant, wherever the focus is.
struct HotKey {
  int key;  ///< virtual-key code
  ModifierNeed control, shift, alt;
  HotKeyTime when;
  HotKeyAction action;
  const char* input;  ///< the key as a control of a keyboard, see unidevice::keyNames
  const char* keys;   ///< for people; to be translated
  const char* text;   ///< what it does, for people; to be translated

  bool Fits(const KeyModifiers& modifiers) const;
};

/// All of them, in the order in which a page lists them. A key with two codes, such as "+", has two
/// rows of one text.
const std::vector<HotKey>& HotKeys();
/// The first that fits; null if none does.
const HotKey* FindHotKey(int key, const KeyModifiers& modifiers, HotKeyTime when);
/// The codes of all, once each: what a hook is to watch.
std::vector<int> HotKeyCodes();
/// The virtual-key code of a Qt::Key, 0 for one that no hot key has. `keypad` as
/// Qt::KeypadModifier. What a program's event filter hands to CoreImplementation::HandleKey.
int VirtualKeyOf(int qtKey, bool keypad);

}  // namespace orv::rws::core
