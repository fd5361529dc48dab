/// Names that a document can hold: the writer has no escapes for them.
#pragma once

#include <algorithm>
#include <string_view>

namespace orv::util::xml {

constexpr bool isSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Whether a mark that begins and ends with this name is a tag's, and no closing or empty one,
/// comment or processing mark.
constexpr bool hasEndsOfTagName(std::string_view name) {
  return !name.empty() && name.front() != '/' && name.front() != '!' && name.front() != '?' &&
         name.back() != '/';
}

/// Whether a tag of this name is read back as it was written.
inline bool isTagName(std::string_view name) {
  return hasEndsOfTagName(name) &&
         std::none_of(name.begin(), name.end(), [](char c) { return isSpace(c) || c == '>'; });
}

/// The same of an attribute.
inline bool isAttributeName(std::string_view name) {
  return (name.empty() || name.front() != '?') &&
         std::none_of(name.begin(), name.end(),
                      [](char c) { return isSpace(c) || c == '>' || c == '='; });
}

}  // namespace orv::util::xml
