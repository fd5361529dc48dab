// A text for people with gaps that are filled once it has been translated.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace orv::util {

/// English text with %1 to %9 where the values go. A window translates `text` as it stands and then
/// fills it; who doesn't translate calls `filled`. Values are names and numbers, never words to be
/// translated.
struct Sentence {
  Sentence() = default;
  Sentence(std::string text, std::vector<std::string> values = {})
      : text(std::move(text)), values(std::move(values)) {}

  std::string text;                 ///< empty: there is nothing to say
  std::vector<std::string> values;  ///< of %1, %2, ...

  /// The text with its gaps filled; a gap without a value stays as it is.
  std::string filled() const { return fill(text, values); }
  /// The same for the text's translation.
  static std::string fill(const std::string& text, const std::vector<std::string>& values);

  explicit operator bool() const { return !text.empty(); }
};

}  // namespace orv::util
