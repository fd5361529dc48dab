// preferences.
#include <algorithm>
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

void SetPreference(Preferences& preferences, const std::string& key, const std::string& value) {
  const std::vector<std::string> known = Preferences::Keys();
  std::string error;
  if (preferences.Set(key, value, error)) return;
  throw Failure(key, error,
                Preferences::Description(key).empty() ? HintFor(key, known, "preferences") : "");
}

void RunPreferences(Program& program, const std::vector<std::string>& assignments) {
  Preferences preferences;
  preferences.Load();
  std::vector<std::string> changed;
  for (const std::string& assignment : assignments) {
    const std::size_t equals = assignment.find('=');
    changed.push_back(assignment.substr(0, equals));
    SetPreference(preferences, changed.back(), assignment.substr(equals + 1));
  }
  std::string error;
  if (!changed.empty() && !preferences.Save(&error, changed)) FailWriting(error);

  Table table;
  for (const std::string& key : Preferences::Keys())
    table.Add({key, preferences.Text(key), Preferences::Description(key)});
  for (const std::string& line : table.Lines()) program.GetOutput().Line(line);
  program.GetOutput().GetObject()["preferences"] = {{"countdown", preferences.countdownSeconds},
                                                    {"updateviewport", preferences.updateViewport},
                                                    {"autosave", preferences.autosaveMinutes},
                                                    {"language", preferences.Text("language")},
                                                    {"theme", preferences.Text("theme")},
                                                    {"units", preferences.Text("units")},
                                                    {"osc", preferences.oscPort},
                                                    {"oscopen", preferences.oscOpen},
                                                    {"midi", preferences.midi},
                                                    {"pen", preferences.Text("pen")}};
  if (const auto keys = Preferences::Keys();
      std::find(keys.begin(), keys.end(), "updatecheck") != keys.end())
    program.GetOutput().GetObject()["preferences"]["updatecheck"] = preferences.updateCheck;
  program.GetOutput().GetObject()["file"] = Preferences::Path();
  if (!changed.empty()) program.GetOutput().Note("preferences: written to " + Preferences::Path());
}

std::string CheckKeyAndValue(const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals != std::string::npos && equals > 0) return {};
  return "\"" + text + "\" is no assignment; write KEY=VALUE";
}

}  // namespace

void AddPreferenceVerb(Program& program) {
  auto assignments = std::make_shared<std::vector<std::string>>();
  CLI::App& verb = program.AddVerb("preferences",
                                   "Print what is set for the whole program, or set it\n"
                                   "Kept in data/core/preferences.xml of the data root.",
                                   "rigwright preferences countdown=3",
                                   [assignments](Program& p) { RunPreferences(p, *assignments); });
  verb.add_option("ASSIGNMENT", *assignments, "KEY=VALUE; may be repeated")
      ->type_name("")
      ->check(CheckKeyAndValue);
}

}  // namespace orv::app
