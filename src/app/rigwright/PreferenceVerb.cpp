// preferences.
#include <memory>
#include <nlohmann/json.hpp>

#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/Texts.h"
#include "app/rigwright/Verbs.h"
#include "app/session/anyhost/Names.h"
#include "core/services/Preferences.h"

namespace orv::app {

namespace {

using rws::core::Preferences;

void setPreference(Preferences& preferences, const std::string& key, const std::string& value) {
  const std::vector<std::string> known = Preferences::keys();
  std::string error;
  if (preferences.set(key, value, error)) return;
  throw Failure(key, error,
                Preferences::description(key).empty() ? hintFor(key, known, "preferences") : "");
}

void runPreferences(Program& program, const std::vector<std::string>& assignments) {
  Preferences preferences;
  preferences.load();
  std::vector<std::string> changed;
  for (const std::string& assignment : assignments) {
    const std::size_t equals = assignment.find('=');
    changed.push_back(assignment.substr(0, equals));
    setPreference(preferences, changed.back(), assignment.substr(equals + 1));
  }
  std::string error;
  if (!changed.empty() && !preferences.save(&error, changed)) failWriting(error);

  Table table;
  for (const std::string& key : Preferences::keys())
    table.add({key, preferences.text(key), Preferences::description(key)});
  for (const std::string& line : table.lines()) program.output().line(line);
  program.output().object()["preferences"] = {
      {"countdown", preferences.countdownSeconds}, {"updateviewport", preferences.updateViewport},
      {"autosave", preferences.autosaveMinutes},   {"language", preferences.text("language")},
      {"theme", preferences.text("theme")},        {"units", preferences.text("units")}};
  program.output().object()["file"] = Preferences::path();
  if (!changed.empty()) program.output().note("preferences: written to " + Preferences::path());
}

std::string checkKeyAndValue(const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals != std::string::npos && equals > 0) return {};
  return "\"" + text + "\" is no assignment; write KEY=VALUE";
}

}  // namespace

void addPreferenceVerb(Program& program) {
  auto assignments = std::make_shared<std::vector<std::string>>();
  CLI::App& verb = program.addVerb("preferences",
                                   "Print what is set for the whole program, or set it\n"
                                   "Kept in data/core/preferences.xml of the data root.",
                                   "rigwright preferences countdown=3",
                                   [assignments](Program& p) { runPreferences(p, *assignments); });
  verb.add_option("ASSIGNMENT", *assignments, "KEY=VALUE; may be repeated")
      ->type_name("")
      ->check(checkKeyAndValue);
}

}  // namespace orv::app
