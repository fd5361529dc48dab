#include "app/studio/CarGuess.h"

#include <cctype>
#include <vector>

namespace orv::app {

namespace {

/// The words of a name in small letters: "WheelFL_02" is "wheel", "fl", "02".
std::vector<std::string> WordsOf(const std::string& name) {
  std::vector<std::string> words(1);
  char before = 0;
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    const bool begins = std::isupper(byte) && std::islower(static_cast<unsigned char>(before));
    if ((begins || !std::isalnum(byte)) && !words.back().empty()) words.emplace_back();
    if (std::isalnum(byte)) words.back() += static_cast<char>(std::tolower(byte));
    before = c;
  }
  return words;
}

}  // namespace

int WheelOfName(const std::string& name) {
  bool wheel = false;
  int row = -1, side = -1;
  for (const std::string& word : WordsOf(name)) {
    if (word == "wheel" || word == "tire" || word == "tyre" || word == "rad") wheel = true;
    if (word == "front" || word == "f") row = 0;
    if (word == "back" || word == "rear" || word == "b") row = 1;
    if (word == "left" || word == "l") side = 0;
    if (word == "right" || word == "r") side = 1;
    if (word.size() != 2 || (word[1] != 'l' && word[1] != 'r')) continue;
    if (word[0] != 'f' && word[0] != 'b' && word[0] != 'r') continue;
    row = word[0] == 'f' ? 0 : 1;
    side = word[1] == 'l' ? 0 : 1;
  }
  return wheel && row >= 0 && side >= 0 ? 2 * row + side : -1;
}

bool IsBodyName(const std::string& name) {
  for (const std::string& word : WordsOf(name))
    if (word == "body" || word == "chassis" || word == "karosserie") return true;
  return false;
}

}  // namespace orv::app
