// What the user has set for the whole program.
#pragma once

#include <string>
#include <vector>

namespace orv::rws::core {

/// The preferences. Kept in "core/preferences.xml" of the data folder, which only `Save` writes; a
/// fresh object has the defaults. The core reads them at their first use.
class Preferences {
 public:
  enum class Language { kSystem, kEnglish, kGerman };
  enum class Theme { kSystem, kLight, kDark };
  /// Of lengths, where windows show them; scenes and rigs are in metres.
  enum class LengthUnit { kMetres, kCentimetres, kMillimetres, kFeet, kInches };

  /// What a pen's position is relative to.
  enum class PenArea { kWindow, kTablet };

  int countdownSeconds = 0;    ///< "Start Countdown time", whole seconds before a take
  bool updateViewport = true;  ///< "updateviewport": a resimulation shows frames as it runs
  int autosaveMinutes = 3;     ///< "autosave", between autosaves; 0: none, nor a take's journal
  Language language = Language::kSystem;   ///< "language": "system", "en", "de"
  Theme theme = Theme::kSystem;            ///< "theme": "system", "light", "dark"
  LengthUnit units = LengthUnit::kMetres;  ///< "units": "m", "cm", "mm", "ft", "in"
  int oscPort = 0;                         ///< "osc", UDP port at which OSC is listened to; 0: none
  bool oscOpen = false;                    ///< "oscopen": other machines are heard too
  bool midi = false;                       ///< "midi": MIDI inputs are devices
  PenArea penArea = PenArea::kWindow;      ///< "pen": "window", "tablet"
  int steeringForce = 0;     ///< "steeringforce", what a wheel feels of a car's steering (%)
  int roadForce = 0;         ///< "roadforce", what it feels of the ground (%)
  bool keepTakes = true;     ///< "keeptakes": every take stays with its scene, outside undo
  int mostTakes = 0;         ///< "mosttakes", that stay with a scene; 0: all
  int kickForce = 0;         ///< "kickforce", what a trigger feels of a gun (%)
  bool updateCheck = false;  ///< the user agrees that a server is asked for newer versions
  bool updateAsked = false;  ///< he has been asked for that
  int updateDay = 0;         ///< of the last check (days since 1970)

  /// Reads the stored preferences. False when there are none or the file is damaged (a log line
  /// tells); what could not be read has its default.
  bool Load();
  /// Stores the preferences of these keys, or all. What else the file holds stays as it is. False,
  /// with `error` naming path and reason and the file as it was, when it can't be written, or is
  /// damaged, so that it would be lost.
  bool Save(std::string* error = nullptr, const std::vector<std::string>& keys = {}) const;

  /// What people call the preferences: "countdown", "updateviewport", and "updatecheck" where the
  /// check is offered. Others, which the program keeps for itself, have keys too.
  static std::vector<std::string> Keys();
  /// What the preference of a key does; empty for an unknown key.
  static std::string Description(const std::string& key);
  /// The words that are values of a key, in the order of their enumeration; empty for a number.
  static std::vector<std::string> Words(const std::string& key);
  /// The value of a key; empty for an unknown one.
  std::string Text(const std::string& key) const;
  /// Sets the value from a text. False, with `error` saying what it must be, when it is none.
  bool Set(const std::string& key, const std::string& text, std::string& error);

  static std::string Path();
};

}  // namespace orv::rws::core
