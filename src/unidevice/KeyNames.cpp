#include "unidevice/KeyNames.h"

namespace orv::unidevice {

namespace {

std::vector<std::string> makeNames() {
  std::vector<std::string> names;
  for (char c = 'A'; c <= 'Z'; ++c) names.emplace_back(1, c);
  for (char c = '0'; c <= '9'; ++c) names.emplace_back(1, c);
  for (int i = 1; i <= 24; ++i) names.push_back("F" + std::to_string(i));
  for (int i = 0; i <= 9; ++i) names.push_back("Num_" + std::to_string(i));
  for (const char* name :
       {"Up_Arrow",     "Down_Arrow",    "Left_Arrow",  "Right_Arrow",  "Page_Up",
        "Page_Down",    "Home",          "End",         "Insert",       "Delete",
        "Space",        "Enter",         "Tab",         "Escape",       "Backspace",
        "Caps_Lock",    "Num_Lock",      "Scroll_Lock", "Left_Shift",   "Right_Shift",
        "Left_Control", "Right_Control", "Left_Alt",    "Right_Alt",    "Num_Add",
        "Num_Subtract", "Num_Multiply",  "Num_Divide",  "Num_Decimal",  "Num_Enter",
        "Comma",        "Period",        "Slash",       "Backslash",    "Semicolon",
        "Quote",        "Minus",         "Equals",      "Left_Bracket", "Right_Bracket",
        "Grave",        "Pause",         "Print_Screen"})
    names.emplace_back(name);
  return names;
}

}  // namespace

const std::vector<std::string>& keyNames() {
  static const std::vector<std::string> names = makeNames();
  return names;
}

}  // namespace orv::unidevice
