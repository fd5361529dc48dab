#include "unidevice/sdl/PadNames.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace orv::unidevice {

namespace {

struct Element {
  const char* key;   ///< in mappings
  const char* name;  ///< for people
};

constexpr Element kElements[] = {{"a", "A"},
                                 {"b", "B"},
                                 {"x", "X"},
                                 {"y", "Y"},
                                 {"back", "Back"},
                                 {"guide", "Guide"},
                                 {"start", "Start"},
                                 {"leftstick", "Left stick pressed"},
                                 {"rightstick", "Right stick pressed"},
                                 {"leftshoulder", "Left shoulder"},
                                 {"rightshoulder", "Right shoulder"},
                                 {"lefttrigger", "Left trigger"},
                                 {"righttrigger", "Right trigger"},
                                 {"leftx", "Left stick (left/right)"},
                                 {"lefty", "Left stick (up/down)"},
                                 {"rightx", "Right stick (left/right)"},
                                 {"righty", "Right stick (up/down)"},
                                 {"dpup", "D-pad up"},
                                 {"dpdown", "D-pad down"},
                                 {"dpleft", "D-pad left"},
                                 {"dpright", "D-pad right"},
                                 {"misc1", "Extra button"},
                                 {"paddle1", "Paddle 1"},
                                 {"paddle2", "Paddle 2"},
                                 {"paddle3", "Paddle 3"},
                                 {"paddle4", "Paddle 4"},
                                 {"touchpad", "Touchpad pressed"}};

/// Without the sign of half an axis.
std::string unsign(const std::string& text) {
  return !text.empty() && (text[0] == '+' || text[0] == '-') ? text.substr(1) : text;
}

void note(PadNames& names, const std::string& key, const std::string& input) {
  const auto element = std::find_if(std::begin(kElements), std::end(kElements),
                                    [&key](const Element& e) { return key == e.key; });
  if (element == std::end(kElements) || input.size() < 2 || input.size() > 6) return;
  if (std::string("abh").find(input[0]) == std::string::npos || !std::isdigit(input[1])) return;
  // A hat is one thing, whichever of its directions is meant.
  const std::string name = input[0] == 'h' ? "D-pad" : element->name;
  std::string& known = names[{input[0], std::stoi(input.substr(1))}];
  if (known.empty())
    known = name;
  else if (known != name)
    known += " / " + name;
}

}  // namespace

PadNames padNames(const std::string& mapping) {
  PadNames names;
  for (std::size_t at = 0; at < mapping.size();) {
    const std::size_t end = std::min(mapping.find(',', at), mapping.size());
    const std::string field = mapping.substr(at, end - at);
    at = end + 1;
    const std::size_t colon = field.find(':');
    if (colon != std::string::npos)
      note(names, unsign(field.substr(0, colon)), unsign(field.substr(colon + 1)));
  }
  return names;
}

}  // namespace orv::unidevice
