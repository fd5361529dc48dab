#include "unidevice/KeyNames.h"

#include <iterator>

namespace orv::unidevice {

namespace {

std::vector<Key> makeKeys() {
  static constexpr int kLetters[] = {30, 48, 46, 32, 18, 33, 34, 35, 23, 36, 37, 38, 50,
                                     49, 24, 25, 16, 19, 31, 20, 22, 47, 17, 45, 21, 44};
  static constexpr int kNumPad[] = {82, 79, 80, 81, 75, 76, 77, 71, 72, 73};
  static const Key kOthers[] = {
      {"Up_Arrow", 103},     {"Down_Arrow", 108},   {"Left_Arrow", 105},  {"Right_Arrow", 106},
      {"Page_Up", 104},      {"Page_Down", 109},    {"Home", 102},        {"End", 107},
      {"Insert", 110},       {"Delete", 111},       {"Space", 57},        {"Enter", 28},
      {"Tab", 15},           {"Escape", 1},         {"Backspace", 14},    {"Caps_Lock", 58},
      {"Num_Lock", 69},      {"Scroll_Lock", 70},   {"Left_Shift", 42},   {"Right_Shift", 54},
      {"Left_Control", 29},  {"Right_Control", 97}, {"Left_Alt", 56},     {"Right_Alt", 100},
      {"Num_Add", 78},       {"Num_Subtract", 74},  {"Num_Multiply", 55}, {"Num_Divide", 98},
      {"Num_Decimal", 83},   {"Num_Enter", 96},     {"Comma", 51},        {"Period", 52},
      {"Slash", 53},         {"Backslash", 43},     {"Semicolon", 39},    {"Quote", 40},
      {"Minus", 12},         {"Equals", 13},        {"Left_Bracket", 26}, {"Right_Bracket", 27},
      {"Grave", 41},         {"Pause", 119},        {"Print_Screen", 99}, {"Extra_Backslash", 86},
      {"Left_Meta", 125},    {"Right_Meta", 126},   {"Menu", 127},        {"Num_Equals", 117},
      {"Num_Separator", 121}};
  std::vector<Key> keys;
  for (int i = 0; i < 26; ++i)
    keys.push_back({std::string(1, static_cast<char>('A' + i)), kLetters[i]});
  for (int i = 0; i < 10; ++i) keys.push_back({std::to_string(i), i == 0 ? 11 : 1 + i});
  for (int i = 1; i <= 24; ++i) {
    const int code = i <= 10 ? 58 + i : i <= 12 ? 76 + i : 170 + i;
    keys.push_back({"F" + std::to_string(i), code});
  }
  for (int i = 0; i < 10; ++i) keys.push_back({"Num_" + std::to_string(i), kNumPad[i]});
  keys.insert(keys.end(), std::begin(kOthers), std::end(kOthers));
  return keys;
}

}  // namespace

const std::vector<Key>& allKeys() {
  static const std::vector<Key> keys = makeKeys();
  return keys;
}

const std::vector<std::string>& keyNames() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> result;
    for (const Key& key : allKeys()) result.push_back(key.name);
    return result;
  }();
  return names;
}

}  // namespace orv::unidevice
