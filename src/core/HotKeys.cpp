#include "core/HotKeys.h"

#include <QtCore/qnamespace.h>

#include <algorithm>

namespace orv::rws::core {

namespace {

constexpr auto kUp = ModifierNeed::kUp;
constexpr auto kDown = ModifierNeed::kDown;
constexpr auto kEither = ModifierNeed::kEither;
constexpr auto kInTake = HotKeyTime::kInTake;

bool Fits(ModifierNeed need, bool held) {
  return need == kEither || held == (need == kDown);
}

}  // namespace

bool HotKey::Fits(const KeyModifiers& modifiers) const {
  return core::Fits(control, modifiers.control) && core::Fits(shift, modifiers.shift) &&
         core::Fits(alt, modifiers.alt);
}

const std::vector<HotKey>& HotKeys() {
  constexpr const char* kStop = "Stops the take";
  constexpr const char* kSlower = "Makes the take slower";
  constexpr const char* kFaster = "Makes the take faster";
  static const std::vector<HotKey> table = {
      {kKeySpace, kDown, kUp, kDown, HotKeyTime::kIdle, HotKeyAction::kStart, "Space",
       "Ctrl+Alt+Space", "Starts a take"},
      {kKeySpace, kEither, kEither, kEither, kInTake, HotKeyAction::kStop, "Space", "Space", kStop},
      {kKeyEscape, kEither, kEither, kEither, kInTake, HotKeyAction::kStop, "Escape", "Escape",
       kStop},
      {kKeyZ, kDown, kUp, kUp, kInTake, HotKeyAction::kRetry, "Z", "Ctrl+Z",
       "Throws the take away and starts another"},
      {kKeyAdd, kUp, kEither, kUp, kInTake, HotKeyAction::kSlower, "Num_Add", "+", kSlower},
      {kKeyPlus, kUp, kEither, kUp, kInTake, HotKeyAction::kSlower, "Equals", "+", kSlower},
      {kKeySubtract, kUp, kEither, kUp, kInTake, HotKeyAction::kFaster, "Num_Subtract", "-",
       kFaster},
      {kKeyMinus, kUp, kEither, kUp, kInTake, HotKeyAction::kFaster, "Minus", "-", kFaster},
  };
  return table;
}

const HotKey* FindHotKey(int key, const KeyModifiers& modifiers, HotKeyTime when) {
  for (const HotKey& row : HotKeys())
    if (row.key == key && row.when == when && row.Fits(modifiers)) return &row;
  return nullptr;
}

std::vector<int> HotKeyCodes() {
  std::vector<int> codes;
  for (const HotKey& row : HotKeys())
    if (std::find(codes.begin(), codes.end(), row.key) == codes.end()) codes.push_back(row.key);
  return codes;
}

int VirtualKeyOf(int qtKey, bool keypad) {
  switch (qtKey) {
    case Qt::Key_Space:
      return kKeySpace;
    case Qt::Key_Escape:
      return kKeyEscape;
    case Qt::Key_Z:
      return kKeyZ;
    case Qt::Key_Plus:
      return keypad ? kKeyAdd : kKeyPlus;
    case Qt::Key_Minus:
      return keypad ? kKeySubtract : kKeyMinus;
    default:
      return 0;
  }
}

}  // namespace orv::rws::core
