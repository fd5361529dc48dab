#include "core/services/Translation.h"

#include <QDir>
#include <QLocale>
#include <QTranslator>
#include <memory>
#include <sstream>

#include "core/services/Resources.h"

namespace orv::rws::core {

namespace {

constexpr char kEnglish[] = "en";
constexpr char kFolder[] = ":/data/translations";
constexpr char kStem[] = "rigwright_";
/// All texts stand in one context: the same words mean the same in documents and code.
constexpr char kContext[] = "rigwright";

/// A translator of our own, never installed: a host's program has its own language.
struct Language {
  std::string name = kEnglish;
  std::unique_ptr<QTranslator> texts;  ///< null in English
};

Language& Present() {
  static Language language;
  return language;
}

/// "de" for "de_AT" or "de-AT".
std::string ShortName(const std::string& name) {
  return name.substr(0, name.find_first_of("-_"));
}

std::string FindSystemLanguage() {
  const std::vector<std::string> known = ListLanguages();
  for (const QString& wish : QLocale::system().uiLanguages())
    for (const std::string& name : known)
      if (ShortName(wish.toStdString()) == name) return name;
  return kEnglish;
}

}  // namespace

bool LoadLanguage(const std::string& language) {
  InitResources();
  const std::string name = language.empty() ? FindSystemLanguage() : ShortName(language);
  if (name == kEnglish) {
    Present() = Language();
    return true;
  }
  auto texts = std::make_unique<QTranslator>();
  if (!texts->load(QString::fromStdString(std::string(kFolder) + "/" + kStem + name + ".qm")))
    return false;
  Present() = {name, std::move(texts)};
  return true;
}

std::string GetLanguage() {
  return Present().name;
}

std::vector<std::string> ListLanguages() {
  InitResources();
  std::vector<std::string> names{kEnglish};
  for (const QString& file : QDir(kFolder).entryList({QString(kStem) + "*.qm"}, QDir::Files))
    names.push_back(file.mid(QString(kStem).size()).section('.', 0, 0).toStdString());
  return names;
}

std::string Translate(const std::string& text) {
  const Language& language = Present();
  if (!language.texts || text.empty()) return text;
  const QString found = language.texts->translate(kContext, text.c_str());
  return found.isEmpty() ? text : found.toStdString();
}

std::string Translate(const std::string& text, const std::vector<std::string>& values) {
  const std::string pattern = Translate(text);
  std::string filled;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const std::size_t number = pattern[i] == '%' && i + 1 < pattern.size()
                                   ? static_cast<std::size_t>(pattern[i + 1] - '1')
                                   : values.size();
    if (number < values.size()) {
      filled += values[number];
      ++i;
    } else {
      filled += pattern[i];
    }
  }
  return filled;
}

bool MatchesSearch(const std::string& text, const std::string& search) {
  const QString both = QString::fromStdString(text + "\n" + Translate(text));
  std::istringstream words(search);
  for (std::string word; words >> word;)
    if (!both.contains(QString::fromStdString(word), Qt::CaseInsensitive)) return false;
  return true;
}

}  // namespace orv::rws::core
