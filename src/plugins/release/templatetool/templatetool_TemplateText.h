// Texts in the files of template tools, and in what is said about them.
#pragma once

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "util/xml/Element.h"

namespace orv::rws::addon {

/// Characters of a name, which becomes a key in saved scenes.
inline constexpr std::size_t kLongestName = 64;

inline std::string Quoted(const std::string& text) {
  return "\"" + text + "\"";
}

inline bool IsLetterOrDigit(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) && static_cast<unsigned char>(c) < 128;
}

/// Blanks at the ends go, others become one space each run.
inline std::string Plain(const std::string& text) {
  std::string plain;
  for (const char c : text) {
    const bool isBlank = c == ' ' || (c >= '\t' && c <= '\r');
    if (!isBlank)
      plain += c;
    else if (!plain.empty() && plain.back() != ' ')
      plain += ' ';
  }
  if (!plain.empty() && plain.back() == ' ') plain.pop_back();
  return plain;
}

/// Text where none belongs; blanks between elements are none.
inline bool IsStrayText(const util::xml::Element& element) {
  return element.kind == util::xml::kText && !Plain(element.name).empty();
}

inline std::vector<std::string> Words(const std::string& text) {
  std::vector<std::string> words{""};
  for (const char c : Plain(text)) {
    if (c == ' ')
      words.emplace_back();
    else
      words.back() += c;
  }
  return words;
}

inline std::string Joined(const std::vector<std::string>& items) {
  std::string text;
  for (const std::string& item : items) text += (text.empty() ? "" : ", ") + item;
  return text;
}

/// A name in expressions: a letter first, then letters, digits, spaces and "_".
inline bool IsName(const std::string& name) {
  if (name.empty() || name.size() > kLongestName || name != Plain(name)) return false;
  if (!IsLetterOrDigit(name[0]) || std::isdigit(static_cast<unsigned char>(name[0]))) return false;
  return std::all_of(name.begin(), name.end(),
                     [](char c) { return IsLetterOrDigit(c) || c == ' ' || c == '_'; });
}

/// A part of names of scenes, folders and nodes: no spaces.
inline bool IsIdentifier(const std::string& name) {
  return IsName(name) && name.find(' ') == std::string::npos;
}

}  // namespace orv::rws::addon
