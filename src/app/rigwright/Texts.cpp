#include "app/rigwright/Texts.h"

#include <algorithm>
#include <cctype>

#include "util/NumberText.h"

namespace orv::app {

namespace {

std::string lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

/// Number of characters to insert, drop or exchange to make `b` of `a`.
std::size_t editDistance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t exchange = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, exchange});
    }
  }
  return row[b.size()];
}

bool isNear(const std::string& wanted, const std::string& name) {
  const std::string a = lower(wanted);
  const std::string b = lower(name);
  // Single letters are names of keys, and in every word.
  if (b.size() == 1) return a.size() == 1;
  if (a.size() >= 2 && b.find(a) != std::string::npos) return true;
  if (b.size() >= 3 && a.find(b) != std::string::npos) return true;
  return editDistance(a, b) <= (std::min(a.size(), b.size()) + 2) / 3;
}

}  // namespace

std::string joined(const std::vector<std::string>& values, const std::string& separator) {
  std::string text;
  for (std::size_t i = 0; i < values.size(); ++i) text += (i ? separator : "") + values[i];
  return text;
}

std::string hintFor(const std::string& wanted, const std::vector<std::string>& known,
                    const std::string& kind, std::size_t most) {
  if (known.empty()) return "there are no " + kind;
  std::vector<std::string> near;
  for (const std::string& name : known)
    if (!name.empty() && isNear(wanted, name)) near.push_back(name);
  if (!near.empty() && near.size() <= most) return "did you mean " + joined(near, " or ") + "?";
  std::vector<std::string> shown(
      known.begin(), known.begin() + static_cast<std::ptrdiff_t>(std::min(most, known.size())));
  const std::size_t more = known.size() - shown.size();
  return kind + ": " + joined(shown) + (more ? " and " + std::to_string(more) + " more" : "");
}

std::string inOneLine(const std::string& text) {
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

std::string wrapped(const std::string& text, std::size_t width, const std::string& indent) {
  std::string result;
  std::string line;
  const auto flush = [&] {
    result += (result.empty() ? "" : "\n") + indent + line;
    line.clear();
  };
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find(' ', at), text.size());
    const std::string word = text.substr(at, end - at);
    if (!line.empty() && textWidth(line) + 1 + textWidth(word) > width) flush();
    line += (line.empty() ? "" : " ") + word;
    at = end + 1;
  }
  if (!line.empty()) flush();
  return result;
}

std::size_t textWidth(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

std::string fileNameOf(const std::string& path) {
  const std::size_t slash = path.find_last_of('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string endingOf(const std::string& path) {
  const std::string name = fileNameOf(path);
  const std::size_t point = name.find_last_of('.');
  return point == std::string::npos || point == 0 ? std::string() : lower(name.substr(point));
}

bool parseRange(const std::string& text, double& from, double& to) {
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos) return false;
  const std::string a = text.substr(0, colon);
  const std::string b = text.substr(colon + 1);
  if (!a.empty() && !util::parseNumber(a, from)) return false;
  if (!b.empty() && !util::parseNumber(b, to)) return false;
  return a.empty() || b.empty() || from <= to;
}

bool parseVector(const std::string& text, util::Vector3<double>& value) {
  const std::size_t first = text.find(',');
  if (first == std::string::npos) return false;
  const std::size_t second = text.find(',', first + 1);
  if (second == std::string::npos) return false;
  return util::parseNumber(text.substr(0, first), value.x) &&
         util::parseNumber(text.substr(first + 1, second - first - 1), value.y) &&
         util::parseNumber(text.substr(second + 1), value.z);
}

std::vector<std::string> Table::lines(const std::string& indent) const {
  std::vector<std::size_t> widths;
  for (const auto& row : m_rows) {
    widths.resize(std::max(widths.size(), row.size()), 0);
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], textWidth(row[i]));
  }
  std::vector<std::string> result;
  for (const auto& row : m_rows) {
    std::string line = indent;
    for (std::size_t i = 0; i < row.size(); ++i) {
      line += row[i];
      if (i + 1 < row.size()) line += std::string(widths[i] - textWidth(row[i]) + 2, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    result.push_back(std::move(line));
  }
  return result;
}

}  // namespace orv::app
