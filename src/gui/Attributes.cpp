#include "gui/Attributes.h"

#include <algorithm>
#include <cctype>

#include "util/NumberText.h"
#include "util/xml/Element.h"
#include "util/xml/Names.h"

namespace orv::gui {

namespace {

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return lower;
}

Align ReadAlign(const std::string& value) {
  const std::string word = Lower(value);
  if (word == "left" || word == "top") return Align::kStart;
  if (word == "center") return Align::kCenter;
  if (word == "right" || word == "bottom") return Align::kEnd;
  return Align::kNone;
}

/// No length reaches further than a toolkit's largest size.
int ReadLength(const std::string& value, int byDefault) {
  return std::clamp(ReadInt(value, byDefault), kUnset, kNoLimit);
}

void ReadFixed(Attributes& a, const std::string& value) {
  const std::string word = Lower(value);
  const bool both = ReadFlag(word, false);
  a.fixedWidth = both || word == "horizontal";
  a.fixedHeight = both || word == "vertical";
}

struct Reader {
  const char* name;
  void (*read)(Attributes&, const std::string&);
};

using Text = const std::string&;
constexpr Reader kReaders[] = {
    {"id", [](Attributes& a, Text v) { a.id = ReadInt(v, kNoId); }},
    {"label", [](Attributes& a, Text v) { a.label = v; }},
    {"left", [](Attributes& a, Text v) { a.left = ReadInt(v, kUnset); }},
    {"top", [](Attributes& a, Text v) { a.top = ReadInt(v, kUnset); }},
    {"width", [](Attributes& a, Text v) { a.width = ReadLength(v, kUnset); }},
    {"height", [](Attributes& a, Text v) { a.height = ReadLength(v, kUnset); }},
    {"minwidth", [](Attributes& a, Text v) { a.minWidth = std::max(0, ReadLength(v, 0)); }},
    {"minheight", [](Attributes& a, Text v) { a.minHeight = std::max(0, ReadLength(v, 0)); }},
    {"maxwidth", [](Attributes& a, Text v) { a.maxWidth = std::max(0, ReadLength(v, kNoLimit)); }},
    {"maxheight",
     [](Attributes& a, Text v) { a.maxHeight = std::max(0, ReadLength(v, kNoLimit)); }},
    {"desiredwidth", [](Attributes& a, Text v) { a.desiredWidth = ReadLength(v, kUnset); }},
    {"desiredheight", [](Attributes& a, Text v) { a.desiredHeight = ReadLength(v, kUnset); }},
    {"fixed", ReadFixed},
    {"halign", [](Attributes& a, Text v) { a.halign = ReadAlign(v); }},
    {"valign", [](Attributes& a, Text v) { a.valign = ReadAlign(v); }},
    {"enabled", [](Attributes& a, Text v) { a.enabled = ReadFlag(v, true); }},
    {"visible", [](Attributes& a, Text v) { a.visible = ReadFlag(v, true); }},
    {"tabstop", [](Attributes& a, Text v) { a.tabStop = ReadFlag(v, true); }},
    {"style", [](Attributes& a, Text v) { a.style = v; }},
    {"tooltipid", [](Attributes& a, Text v) { a.tooltipId = ReadInt(v, kUnset); }},
    {"stretch",
     [](Attributes& a, Text v) { a.stretch = std::clamp(ReadInt(v, kUnset), kUnset, 255); }},
    {"column", [](Attributes& a, Text v) { a.column = v; }},
    {"name", [](Attributes& a, Text v) { a.name = v; }},
};

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && util::xml::isSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && util::xml::isSpace(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace

bool ReadAttribute(Attributes& attributes, std::string_view name, const std::string& value) {
  for (const Reader& reader : kReaders) {
    if (name != reader.name) continue;
    reader.read(attributes, value);
    return true;
  }
  return false;
}

bool IsCommonAttribute(std::string_view name) {
  return std::any_of(std::begin(kReaders), std::end(kReaders),
                     [&](const Reader& reader) { return name == reader.name; });
}

bool ReadFlag(std::string_view text, bool byDefault) {
  const std::string word = Lower(Trimmed(text));
  if (word == "yes" || word == "true" || word == "1") return true;
  if (word == "no" || word == "false" || word == "0") return false;
  return byDefault;
}

bool ReadHorizontal(const util::xml::Element& tag) {
  return Lower(tag.attribute("type")) == "horizontal";
}

int ReadInt(std::string_view text, int byDefault) {
  util::parseNumber(Trimmed(text), byDefault);
  return byDefault;
}

double ReadDouble(std::string_view text, double byDefault) {
  std::string number(Trimmed(text));
  std::replace(number.begin(), number.end(), ',', '.');
  util::parseNumber(number, byDefault);
  return byDefault;
}

std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words;
  for (text = Trimmed(text); !text.empty(); text = Trimmed(text)) {
    const auto end = std::find_if(text.begin(), text.end(), util::xml::isSpace);
    words.emplace_back(text.begin(), end);
    text.remove_prefix(end - text.begin());
  }
  return words;
}

Padding ReadPadding(std::string_view text, Padding byDefault) {
  int* const sides[] = {&byDefault.left, &byDefault.top, &byDefault.right, &byDefault.bottom};
  const std::vector<std::string> words = Words(text);
  for (std::size_t i = 0; i < std::min<std::size_t>(4, words.size()); ++i)
    *sides[i] = std::clamp(ReadInt(words[i], *sides[i]), 0, kNoLimit);
  return byDefault;
}

}  // namespace orv::gui
