#include "gui/Style.h"

#include <algorithm>
#include <cctype>

#include "util/NumberText.h"
#include "util/xml/Names.h"

namespace orv::gui {

namespace {

std::string Clean(std::string_view text) {
  while (!text.empty() && util::xml::isSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && util::xml::isSpace(text.back())) text.remove_suffix(1);
  return std::string(text);
}

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

/// The number in front of a unit.
bool ReadMeasure(const std::string& value, std::string_view unit, double& number) {
  if (value.size() <= unit.size() || value.compare(value.size() - unit.size(), unit.size(), unit))
    return false;
  return util::parseNumber(Clean(std::string_view(value).substr(0, value.size() - unit.size())),
                           number);
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

std::optional<Rgba> ReadHexColor(const std::string& value) {
  static constexpr struct {
    const char* name;
    Rgba color;
  } kNames[] = {{"black", {0, 0, 0, 255}},
                {"gray", {128, 128, 128, 255}},
                {"grey", {128, 128, 128, 255}},
                {"white", {255, 255, 255, 255}}};
  for (const auto& named : kNames)
    if (value == named.name) return named.color;
  if ((value.size() != 4 && value.size() != 7) || value[0] != '#') return {};
  const std::size_t digits = value.size() / 3;
  int channels[3];
  for (std::size_t i = 0; i < 3; ++i) {
    const int high = HexDigit(value[1 + i * digits]);
    const int low = HexDigit(value[i * digits + digits]);
    if (high < 0 || low < 0) return {};
    channels[i] = high * 16 + low;
  }
  return Rgba{channels[0], channels[1], channels[2], 255};
}

void ReadFontSize(const std::string& value, Style& style) {
  double number = 0.0;
  if (ReadMeasure(value, "em", number)) {
    style.fontEm = std::clamp(number, 0.1, 20.0);
  } else if (ReadMeasure(value, "%", number)) {
    style.fontEm = std::clamp(number / 100.0, 0.1, 20.0);
  } else if (ReadMeasure(value, "px", number)) {
    style.fontPixels = std::clamp(number, 1.0, 500.0);
  } else if (ReadMeasure(value, "pt", number)) {
    style.fontPixels = std::clamp(number * 96.0 / 72.0, 1.0, 500.0);
  }
}

void ReadWeight(const std::string& value, Style& style) {
  int weight = 0;
  if (util::parseNumber(value, weight)) style.bold = weight >= 600;
  if (value == "bold" || value == "normal") style.bold = value == "bold";
}

void ReadTextAlign(const std::string& value, Style& style) {
  if (value == "left") style.textAlign = Align::kStart;
  if (value == "center") style.textAlign = Align::kCenter;
  if (value == "right") style.textAlign = Align::kEnd;
}

/// "padding-left" and the like.
void ReadSide(const std::string& name, const std::string& value, Style& style) {
  static constexpr struct {
    const char* name;
    int Padding::*side;
  } kSides[] = {{"left", &Padding::left},
                {"top", &Padding::top},
                {"right", &Padding::right},
                {"bottom", &Padding::bottom}};
  const std::size_t dash = name.find('-');
  const std::string kind = name.substr(0, dash);
  if (dash == std::string::npos || (kind != "padding" && kind != "margin")) return;
  double pixels = 0.0;
  if (!ReadMeasure(value, "px", pixels) && !ReadMeasure(value, "", pixels)) return;
  for (const auto& side : kSides)
    if (name.compare(dash + 1, std::string::npos, side.name) == 0)
      (kind == "padding" ? style.padding : style.margin).*side.side =
          static_cast<int>(std::clamp(pixels, 0.0, 10000.0));
}

void ReadDeclaration(const std::string& name, const std::string& written, Style& style) {
  const std::string value = Lower(written);
  if (name == "font-family") {
    style.fontFamily = written;
    style.fontFamily.erase(std::remove_if(style.fontFamily.begin(), style.fontFamily.end(),
                                          [](char c) { return c == '"' || c == '\''; }),
                           style.fontFamily.end());
  }
  if (name == "font-size") ReadFontSize(value, style);
  if (name == "font-weight") ReadWeight(value, style);
  if (name == "font-style") style.italic = value == "italic" || value == "oblique";
  if (name == "text-decoration") style.underline = value == "underline";
  if (name == "text-align") ReadTextAlign(value, style);
  if (name == "color") style.color = ReadHexColor(value);
  if (name == "background-color") style.background = ReadHexColor(value);
  ReadSide(name, value, style);
}

}  // namespace

Style ReadStyle(std::string_view text) {
  Style style;
  while (!text.empty()) {
    const std::string_view part = text.substr(0, text.find(';'));
    text.remove_prefix(std::min(text.size(), part.size() + 1));
    const std::size_t colon = part.find(':');
    if (colon == std::string_view::npos) continue;
    ReadDeclaration(Lower(Clean(part.substr(0, colon))), Clean(part.substr(colon + 1)), style);
  }
  return style;
}

BorderStyle ReadBorderStyle(std::string_view text, BorderStyle byDefault) {
  const std::string word = Lower(Clean(text));
  if (word == "none") return BorderStyle::kNone;
  if (word == "thin") return BorderStyle::kThin;
  if (word == "sunken") return BorderStyle::kSunken;
  if (word == "normal") return BorderStyle::kNormal;
  return byDefault;
}

}  // namespace orv::gui
