#include "util/Sentence.h"

namespace orv::util {

std::string Sentence::fill(const std::string& text, const std::vector<std::string>& values) {
  std::string filled;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char digit = text[i] == '%' && i + 1 < text.size() ? text[i + 1] : '0';
    const std::size_t number = digit >= '1' && digit <= '9' ? std::size_t(digit - '0') : 0;
    if (number == 0 || number > values.size()) {
      filled += text[i];
    } else {
      filled += values[number - 1];
      ++i;
    }
  }
  return filled;
}

}  // namespace orv::util
