// The language in which texts are shown.
#pragma once

#include <string>
#include <vector>

namespace orv::rws::core {

/// Loads the texts of a language, such as "de", from the resources, in place of those before; an
/// empty one takes the user's own from the system. English, and what has no translation, stays as
/// it stands in code and documents. False when there is no such language; then nothing changes.
/// Main thread only.
bool LoadLanguage(const std::string& language);
/// "en" until another is loaded.
std::string GetLanguage();
/// All that can be loaded, "en" first.
std::vector<std::string> ListLanguages();

/// Marks a text that is translated elsewhere, for the script that collects them.
constexpr const char* Translatable(const char* text) {
  return text;
}

/// A text in the language that is loaded.
std::string Translate(const std::string& text);
/// The same with %1, %2 ... replaced by `values`, which are not looked at again.
std::string Translate(const std::string& text, const std::vector<std::string>& values);

/// Whether each word that a user searches for stands in a text, in English or as it is shown,
/// whatever the case of its letters.
bool MatchesSearch(const std::string& text, const std::string& search);

}  // namespace orv::rws::core
