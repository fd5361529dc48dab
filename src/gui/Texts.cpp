#include "gui/Texts.h"

#include <utility>

namespace orv::gui {

namespace {

Translator g_translator;
std::function<std::string(int)> g_tooltips;

}  // namespace

void SetTranslator(Translator translator) {
  g_translator = std::move(translator);
}

std::string Translate(const std::string& english) {
  return g_translator && !english.empty() ? g_translator(english) : english;
}

std::string Translate(const std::string& english, std::initializer_list<std::string> values) {
  const std::string text = Translate(english);
  std::string filled;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::size_t number = text[i] == '%' && i + 1 < text.size() ? text[i + 1] - '1' : 9;
    if (number < values.size()) {
      filled += values.begin()[number];
      ++i;
    } else {
      filled += text[i];
    }
  }
  return filled;
}

std::string EscapeMnemonics(const std::string& name) {
  std::string escaped;
  for (const char c : name) escaped.append(c == '&' ? 2 : 1, c);
  return escaped;
}

void SetTooltipTexts(std::function<std::string(int)> texts) {
  g_tooltips = std::move(texts);
}

std::string TooltipText(int id) {
  return g_tooltips ? g_tooltips(id) : std::string();
}

}  // namespace orv::gui
