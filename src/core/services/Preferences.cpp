#include "core/services/Preferences.h"

#include <algorithm>
#include <filesystem>

#include "core/services/DataRoot.h"
#include "core/services/Log.h"
#include "core/services/Translation.h"
#include "core/update/UpdateAddress.h"
#include "util/NumberText.h"
#include "util/xml/Tag.h"

namespace orv::rws::core {

namespace {

using util::xml::Element;
using util::xml::Tag;

constexpr char kPreferences[] = "preferences";
constexpr char kPreference[] = "preference";

/// One preference: a whole number from 0 up, or a word of a list by its number.
struct Entry {
  const char* key;          ///< for people
  const char* name;         ///< in the file
  const char* description;  ///< for people
  int most;                 ///< 1: a switch, which has no words
  int (*get)(const Preferences&);
  void (*set)(Preferences&, int);
  bool (*isShown)();                    ///< to people
  std::vector<std::string> words = {};  ///< `most` and one
};

bool Always() {
  return true;
}

bool Never() {
  return false;
}

bool WhereOffered() {
  return !GetUpdateAddress().empty();
}

const Entry kEntries[] = {
    {"countdown", "Start Countdown time", Translatable("seconds before a take begins"), 3600,
     [](const Preferences& p) { return p.countdownSeconds; },
     [](Preferences& p, int value) { p.countdownSeconds = value; }, Always},
    {"updateviewport", "updateviewport",
     Translatable("a resimulation in a window shows frames as it runs"), 1,
     [](const Preferences& p) { return p.updateViewport ? 1 : 0; },
     [](Preferences& p, int value) { p.updateViewport = value != 0; }, Always},
    {"autosave", "autosave",
     Translatable("minutes between autosaves; 0: no autosave, no journal of takes"), 1440,
     [](const Preferences& p) { return p.autosaveMinutes; },
     [](Preferences& p, int value) { p.autosaveMinutes = value; }, Always},
    {"keeptakes", "keeptakes", Translatable("every take is kept with its scene, outside undo"), 1,
     [](const Preferences& p) { return p.keepTakes ? 1 : 0; },
     [](Preferences& p, int value) { p.keepTakes = value != 0; }, Always},
    {"mosttakes", "mosttakes",
     Translatable("takes that are kept with a scene, beside starred ones; 0: all"), 100000,
     [](const Preferences& p) { return p.mostTakes; },
     [](Preferences& p, int value) { p.mostTakes = value; }, Always},
    {"language",
     "language",
     Translatable("of the windows"),
     2,
     [](const Preferences& p) { return static_cast<int>(p.language); },
     [](Preferences& p, int value) { p.language = static_cast<Preferences::Language>(value); },
     Always,
     {"system", "en", "de"}},
    {"theme",
     "theme",
     Translatable("colours of the windows"),
     2,
     [](const Preferences& p) { return static_cast<int>(p.theme); },
     [](Preferences& p, int value) { p.theme = static_cast<Preferences::Theme>(value); },
     Always,
     {"system", "light", "dark"}},
    {"units",
     "units",
     Translatable("of lengths in the windows"),
     4,
     [](const Preferences& p) { return static_cast<int>(p.units); },
     [](Preferences& p, int value) { p.units = static_cast<Preferences::LengthUnit>(value); },
     Always,
     {"m", "cm", "mm", "ft", "in"}},
    {"osc", "osc", Translatable("UDP port at which OSC messages move controls; 0: none"), 65535,
     [](const Preferences& p) { return p.oscPort; },
     [](Preferences& p, int value) { p.oscPort = value; }, Always},
    {"oscopen", "oscopen",
     Translatable("OSC messages of other machines move controls too; else of this one alone"), 1,
     [](const Preferences& p) { return p.oscOpen ? 1 : 0; },
     [](Preferences& p, int value) { p.oscOpen = value != 0; }, Always},
    {"midi", "midi", Translatable("MIDI controllers and notes move controls"), 1,
     [](const Preferences& p) { return p.midi ? 1 : 0; },
     [](Preferences& p, int value) { p.midi = value != 0; }, Always},
    {"pen",
     "pen",
     Translatable("what a pen's position is relative to: the window below it, or the tablet"),
     1,
     [](const Preferences& p) { return static_cast<int>(p.penArea); },
     [](Preferences& p, int value) { p.penArea = static_cast<Preferences::PenArea>(value); },
     Always,
     {"window", "tablet"}},
    {"steeringforce", "steeringforce",
     Translatable("how strongly a wheel with forces is drawn by a car's front wheels (%); 0: not"),
     100, [](const Preferences& p) { return p.steeringForce; },
     [](Preferences& p, int value) { p.steeringForce = value; }, Always},
    {"roadforce", "roadforce",
     Translatable("how strongly the ground shakes a wheel or pad that drives a car (%); 0: not"),
     100, [](const Preferences& p) { return p.roadForce; },
     [](Preferences& p, int value) { p.roadForce = value; }, Always},
    {"kickforce", "kickforce",
     Translatable("how strongly a gun shakes the device that fires it (%); 0: not"), 100,
     [](const Preferences& p) { return p.kickForce; },
     [](Preferences& p, int value) { p.kickForce = value; }, Always},
    {"updatecheck", "Update check", Translatable("asks a server once a week for a newer version"),
     1, [](const Preferences& p) { return p.updateCheck ? 1 : 0; },
     [](Preferences& p, int value) { p.updateCheck = value != 0; }, WhereOffered},
    {"updateasked", "Update check asked", "", 1,
     [](const Preferences& p) { return p.updateAsked ? 1 : 0; },
     [](Preferences& p, int value) { p.updateAsked = value != 0; }, Never},
    {"updateday", "Update check day", "", 10000000,
     [](const Preferences& p) { return p.updateDay; },
     [](Preferences& p, int value) { p.updateDay = value; }, Never},
};

/// The value that a text stands for, in the file (where a switch is 0 or 1) as for people.
bool ValueOf(const Entry& entry, const std::string& text, int& value) {
  const auto word = std::find(entry.words.begin(), entry.words.end(), text);
  if (!entry.words.empty()) {
    value = static_cast<int>(word - entry.words.begin());
    return word != entry.words.end();
  }
  return util::parseNumber(text, value) && value >= 0 && value <= entry.most;
}

/// As the file has it.
std::string StoredText(const Entry& entry, const Preferences& preferences) {
  const int value = entry.get(preferences);
  return entry.words.empty() ? std::to_string(value) : entry.words[static_cast<std::size_t>(value)];
}

const Entry* Find(const std::string& key) {
  const auto found = std::find_if(std::begin(kEntries), std::end(kEntries),
                                  [&key](const Entry& entry) { return entry.key == key; });
  return found == std::end(kEntries) ? nullptr : &*found;
}

Element* FindElement(Element& root, const Entry& entry) {
  for (Element* child : root.children)
    if (child->name == kPreference && child->attribute("name") == entry.name) return child;
  return nullptr;
}

/// What is wrong with the file as a whole, with its path; empty when it was read, or when there is
/// none.
std::string ReadFile(Element& root) {
  const std::string path = Preferences::Path();
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) return {};
  std::string problem;
  if (root.load(path, &problem) != 0) return problem;
  return root.name == kPreferences ? std::string() : path + ": it has another root tag";
}

}  // namespace

std::string Preferences::Path() {
  return DataRoot::GetDataFolder() + "/core/preferences.xml";
}

bool Preferences::Load() {
  *this = Preferences();
  Element root;
  const std::string problem = ReadFile(root);
  if (!problem.empty()) {
    LogEntry(LogLevel::kWarning, "The preferences can't be read, so the defaults hold: " + problem);
    return false;
  }
  bool whole = root.name == kPreferences;
  for (const Entry& entry : kEntries) {
    const Element* stored = FindElement(root, entry);
    if (!stored) continue;
    int value = 0;
    if (ValueOf(entry, stored->text(), value)) {
      entry.set(*this, value);
      continue;
    }
    whole = false;
    LogEntry(LogLevel::kWarning, Path() + ": \"" + entry.name + "\" is damaged (\"" +
                                     stored->text() +
                                     "\"), so its default holds: " + Text(entry.key));
  }
  return whole;
}

bool Preferences::Save(std::string* error, const std::vector<std::string>& keys) const {
  Tag root(kPreferences);
  const std::string problem = ReadFile(root);
  if (!problem.empty()) {
    if (error)
      *error = "the preferences are damaged and were left as they are: " + problem +
               " (mend the file, or remove it to begin anew)";
    return false;
  }
  for (const Entry& entry : kEntries) {
    if (!keys.empty() && std::find(keys.begin(), keys.end(), entry.key) == keys.end()) continue;
    Element* stored = FindElement(root, entry);
    if (!stored) {
      Tag tag(kPreference);
      tag.setAttribute("name", entry.name);
      stored = &root.addChild(tag);
    }
    stored->setText(StoredText(entry, *this));
  }
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(Path()).parent_path(), ignored);
  if (root.save(Path(), error)) return true;
  if (error) *error += " (see that the data root is a folder that can be written, or name another)";
  return false;
}

std::vector<std::string> Preferences::Keys() {
  std::vector<std::string> result;
  for (const Entry& entry : kEntries)
    if (entry.isShown()) result.emplace_back(entry.key);
  return result;
}

std::string Preferences::Description(const std::string& key) {
  const Entry* entry = Find(key);
  return entry ? entry->description : std::string();
}

std::string Preferences::Text(const std::string& key) const {
  const Entry* entry = Find(key);
  if (!entry) return {};
  if (entry->most > 1 || !entry->words.empty()) return StoredText(*entry, *this);
  return entry->get(*this) ? "on" : "off";
}

std::vector<std::string> Preferences::Words(const std::string& key) {
  const Entry* entry = Find(key);
  return entry ? entry->words : std::vector<std::string>();
}

bool Preferences::Set(const std::string& key, const std::string& text, std::string& error) {
  const Entry* entry = Find(key);
  if (!entry || !entry->isShown()) {
    error = "there is no such preference";
    return false;
  }
  int value = -1;
  const bool isSwitch = entry->most == 1 && entry->words.empty();
  if (isSwitch && (text == "on" || text == "true")) value = 1;
  if (isSwitch && (text == "off" || text == "false")) value = 0;
  if (value < 0 && !ValueOf(*entry, text, value)) {
    std::string wanted = "a whole number from 0 to " + std::to_string(entry->most);
    if (isSwitch) wanted = "on or off";
    if (!entry->words.empty()) wanted = "one of";
    for (const std::string& word : entry->words) wanted += " " + word;
    error = "\"" + text + "\" is not " + wanted;
    return false;
  }
  entry->set(*this, value);
  return true;
}

}  // namespace orv::rws::core
