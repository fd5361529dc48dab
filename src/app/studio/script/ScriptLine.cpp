#include "app/studio/script/ScriptLine.h"

#include <cctype>

namespace orv::app {

namespace {

/// One word as it stands: quotes taken away; `key` is filled when it is key=value.
bool ReadWord(const std::string& text, std::size_t& at, std::string& key, std::string& word,
              bool& hasKey) {
  bool quoted = false;
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (quoted && c == '\\' && at + 1 < text.size()) {
      word += text[++at];
    } else if (c == '"') {
      quoted = !quoted;
    } else if (!quoted && std::isspace(static_cast<unsigned char>(c))) {
      break;
    } else if (!quoted && c == '=' && !hasKey && !word.empty()) {
      hasKey = true;
      key.swap(word);
    } else {
      word += c;
    }
  }
  return !quoted;
}

}  // namespace

bool ScriptLine::Parse(const std::string& text, ScriptLine& line, std::string& problem) {
  line = {};
  std::size_t at = 0;
  for (;;) {
    while (at < text.size() && std::isspace(static_cast<unsigned char>(text[at]))) ++at;
    if (at >= text.size() || (line.verb.empty() && text[at] == '#')) return true;
    std::string key, word;
    bool hasKey = false;
    if (!ReadWord(text, at, key, word, hasKey)) {
      problem = "a quote is not closed";
      return false;
    }
    if (line.verb.empty())
      line.verb = word;
    else if (hasKey)
      line.values[key] = word;
    else
      line.words.push_back(word);
  }
}

}  // namespace orv::app
