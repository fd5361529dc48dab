#include "core/HotKeys.h"

#include <QtCore/qnamespace.h>

#include <algorithm>

#include "core/services/Translation.h"

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
  constexpr const char* kStop = Translatable("Stops the take");
  constexpr const char* kSlower = Translatable("Makes the take slower");
  constexpr const char* kFaster = Translatable("Makes the take faster");
  static const std::vector<HotKey> table = {
      {kKeySpace, kDown, kUp, kDown, HotKeyTime::kIdle, HotKeyAction::kStart, "Space",
       Translatable("Ctrl+Alt+Space"), Translatable("Starts a take")},
      {kKeySpace, kEither, kEither, kEither, kInTake, HotKeyAction::kStop, "Space",
       Translatable("Space"), kStop},
      {kKeyEscape, kEither, kEither, kEither, kInTake, HotKeyAction::kStop, "Escape",
       Translatable("Escape"), kStop},
      {kKeyZ, kDown, kUp, kUp, kInTake, HotKeyAction::kRetry, "Z", Translatable("Ctrl+Z"),
       Translatable("Throws the take away and starts another")},
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
