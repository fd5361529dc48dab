// What the program says: results on stdout, everything else on stderr.
#pragma once

#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace orv::app {

/// Collects the result of a verb and prints it at the end, so that a job that fails half-way leaves
/// nothing on stdout. Narration and warnings go to stderr as they come.
class Output {
 public:
  Output();
  ~Output();
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  bool quiet = false;  ///< no narration and no progress; warnings and errors stay
  bool json = false;   ///< the result is one JSON object

  /// Adds a line to the result for people. Under --json it is dropped: `GetObject()` counts.
  void Line(const std::string& text);
  /// The object that --json prints.
  nlohmann::ordered_json& GetObject() { return *m_object; }

  /// Tells what is being done.
  void Note(const std::string& text);
  /// Tells what the user should know although the job goes on. Also a member "warnings" of the
  /// object.
  void Warn(const std::string& text);
  /// Tells why the job failed.
  void Error(const std::string& text);

  /// Prints the result. False, after a message, when stdout could not be written.
  bool Finish();

 private:
  std::string m_text;
  std::vector<std::string> m_warnings;
  std::unique_ptr<nlohmann::ordered_json> m_object;
};

/// Whether stderr is a terminal that can overwrite a line.
bool IsTerminal();
/// Whether stderr takes colours: a terminal, and NO_COLOR is not set.
bool HasColour();

}  // namespace orv::app
