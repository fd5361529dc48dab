#include "app/studio/view/manipulator/NumberEntry.h"

#include <algorithm>

#include "util/NumberText.h"

namespace orv::app::view {

namespace {

constexpr std::size_t kLongest = 20;

}  // namespace

void NumberEntry::Begin(int count) {
  m_texts = {};
  m_count = std::clamp(count, 1, 3);
  m_current = 0;
}

bool NumberEntry::Type(char letter) {
  std::string& text = m_texts[static_cast<std::size_t>(m_current)];
  if (letter == ',') letter = '.';
  if (letter == '-') {
    text = !text.empty() && text[0] == '-' ? text.substr(1) : "-" + text;
    return true;
  }
  if (letter != '.' && (letter < '0' || letter > '9')) return false;
  const bool isSecondPoint = letter == '.' && text.find('.') != std::string::npos;
  if (text.size() < kLongest && !isSecondPoint) text += letter;
  return true;
}

void NumberEntry::Erase() {
  std::string& text = m_texts[static_cast<std::size_t>(m_current)];
  if (!text.empty()) text.pop_back();
}

bool NumberEntry::IsUsed() const {
  return std::any_of(m_texts.begin(), m_texts.end(),
                     [](const auto& text) { return !text.empty(); });
}

double NumberEntry::Get(int number, double otherwise) const {
  double value = otherwise;
  std::string text = GetText(number);
  if (!text.empty() && text.back() == '.') text += '0';
  if (text.substr(0, 1) == ".") text = "0" + text;
  if (text.substr(0, 2) == "-.") text = "-0" + text.substr(1);
  return util::parseNumber(text, value) ? value : otherwise;
}

}  // namespace orv::app::view
