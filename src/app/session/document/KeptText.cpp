#include "app/session/document/KeptText.h"

#include <sstream>

namespace orv::app {

namespace {

constexpr char kDigits[] = "0123456789ABCDEF";

int DigitOf(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

}  // namespace

std::string KeptText(const std::string& bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (c != '%' && byte >= ' ')
      text += c;
    else
      text += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
  }
  return text;
}

bool ReadKeptText(const std::string& text, std::string& bytes) {
  bytes.clear();
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      bytes += text[i];
      continue;
    }
    if (i + 2 >= text.size()) return false;
    const int high = DigitOf(text[i + 1]);
    const int low = DigitOf(text[i + 2]);
    if (high < 0 || low < 0) return false;
    bytes += static_cast<char>(high * 16 + low);
    i += 2;
  }
  return true;
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

}  // namespace orv::app
