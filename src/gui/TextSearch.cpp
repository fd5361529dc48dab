#include "gui/TextSearch.h"

namespace orv::gui {

namespace {

/// Small letters for large ones, of the same length in bytes.
std::string Folded(std::string_view text) {
  std::string folded(text);
  for (std::size_t i = 0; i < folded.size(); ++i) {
    const auto c = static_cast<unsigned char>(folded[i]);
    const bool latin = i > 0 && text[i - 1] == '\xc3' && c >= 0x80 && c <= 0x9e && c != 0x97;
    if ((c >= 'A' && c <= 'Z') || latin) folded[i] = static_cast<char>(c + 0x20);
  }
  return folded;
}

}  // namespace

bool HoldsText(std::string_view text, std::string_view sought) {
  return sought.empty() || Folded(text).find(Folded(sought)) != std::string::npos;
}

}  // namespace orv::gui
