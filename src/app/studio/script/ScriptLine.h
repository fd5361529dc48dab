// A command of a script.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace orv::app {

/// `verb word word key=value ...`. A word or value with blanks stands in double quotes, in which \"
/// and \\ stand for themselves.
struct ScriptLine {
  std::string verb;  ///< empty: a blank line or a comment (#)
  std::vector<std::string> words;
  std::map<std::string, std::string> values;

  /// The first word, or empty.
  std::string Word() const { return words.empty() ? std::string() : words.front(); }
  bool Has(const std::string& key) const { return values.count(key) != 0; }
  /// Empty when there is none.
  std::string Value(const std::string& key) const {
    const auto found = values.find(key);
    return found == values.end() ? std::string() : found->second;
  }

  /// False, with `problem` filled, when a quote is not closed.
  static bool Parse(const std::string& text, ScriptLine& line, std::string& problem);
};

}  // namespace orv::app
