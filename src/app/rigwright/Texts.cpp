#include "app/rigwright/Texts.h"

#include <algorithm>

#include "util/NumberText.h"

namespace orv::app {

std::string InOneLine(const std::string& text) {
  std::string result;
  for (const char c : text) {
    const bool blank = c == ' ' || c == '\n' || c == '\r' || c == '\t';
    if (!blank)
      result += c;
    else if (!result.empty() && result.back() != ' ')
      result += ' ';
  }
  return result;
}

std::string Wrapped(const std::string& text, std::size_t width, const std::string& indent) {
  std::string result;
  std::string line;
  const auto flush = [&] {
    result += (result.empty() ? "" : "\n") + indent + line;
    line.clear();
  };
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find(' ', at), text.size());
    const std::string word = text.substr(at, end - at);
    if (!line.empty() && TextWidth(line) + 1 + TextWidth(word) > width) flush();
    line += (line.empty() ? "" : " ") + word;
    at = end + 1;
  }
  if (!line.empty()) flush();
  return result;
}

std::size_t TextWidth(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

bool ParseRange(const std::string& text, double& from, double& to) {
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos) return false;
  const std::string a = text.substr(0, colon);
  const std::string b = text.substr(colon + 1);
  if (!a.empty() && !util::parseNumber(a, from)) return false;
  if (!b.empty() && !util::parseNumber(b, to)) return false;
  return a.empty() || b.empty() || from <= to;
}

bool ParseVector(const std::string& text, util::Vector3<double>& value) {
  const std::size_t first = text.find(',');
  if (first == std::string::npos) return false;
  const std::size_t second = text.find(',', first + 1);
  if (second == std::string::npos) return false;
  return util::parseNumber(text.substr(0, first), value.x) &&
         util::parseNumber(text.substr(first + 1, second - first - 1), value.y) &&
         util::parseNumber(text.substr(second + 1), value.z);
}

std::vector<std::string> Table::Lines(const std::string& indent) const {
  std::vector<std::size_t> widths;
  for (const auto& row : m_rows) {
    widths.resize(std::max(widths.size(), row.size()), 0);
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], TextWidth(row[i]));
  }
  std::vector<std::string> result;
  for (const auto& row : m_rows) {
    std::string line = indent;
    for (std::size_t i = 0; i < row.size(); ++i) {
      line += row[i];
      if (i + 1 < row.size()) line += std::string(widths[i] - TextWidth(row[i]) + 2, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    result.push_back(std::move(line));
  }
  return result;
}

}  // namespace orv::app
