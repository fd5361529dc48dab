// The program: its verbs, its options, and how a run ends.
#pragma once

#include <CLI/App.hpp>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "app/rigwright/Output.h"
#include "util/Vector3.h"

namespace orv::app {

/// What every verb is told on the command line.
struct GlobalOptions {
  std::string dataRoot;  ///< empty: by the environment, else in the user's documents
  std::string clip;      ///< animation clip to evaluate; empty: the first
  bool yes = false;      ///< answer for the questions of message boxes
};

/// Owner of the command line. Each file of verbs adds its own by `AddVerb`.
class Program {
 public:
  Program();

  /// A verb with its description (what stands behind its first line is for the verb's own help
  /// alone), an example for its help, and what it does. `run` throws Failure,
  /// WrongUsage or Interrupted when it can't.
  CLI::App& AddVerb(const std::string& name, const std::string& description,
                    const std::string& example, std::function<void(Program&)> run);
  /// A verb below another, such as `profile list`.
  CLI::App& AddVerb(CLI::App& parent, const std::string& name, const std::string& description,
                    const std::string& example, std::function<void(Program&)> run);
  /// The verb writes nothing to the data root, not even to the log.
  void MarkReadOnly(const CLI::App& verb) { m_readOnly.insert(&verb); }
  /// The verb draws pictures, and so needs fonts.
  void MarkDrawing(const CLI::App& verb) { m_drawing.insert(&verb); }
  /// A verb that only holds others.
  CLI::App& AddGroup(const std::string& name, const std::string& description,
                     const std::string& example);

  /// Reads the command line and runs the verb; the exit status: 0 done, 1 failed, 2 wrong usage,
  /// 130 interrupted.
  int Run(int argc, char** argv);

  /// Exit status of a verb that has done its work; 0 without a word.
  void SetStatus(int status) { m_status = status; }
  Output& GetOutput() { return m_output; }
  const GlobalOptions& GetOptions() const { return m_options; }

 private:
  bool Parse(int argc, char** argv, int& status);
  int TellWrongUsage(const std::string& why);
  std::string UnknownVerb() const;
  int RunVerb();
  void OpenLog(const CLI::App& verb);
  CLI::App* ChosenVerb();

  CLI::App m_app;
  int m_status = 0;
  Output m_output;
  GlobalOptions m_options;
  std::map<const CLI::App*, std::function<void(Program&)>> m_runs;
  std::set<const CLI::App*> m_readOnly;
  std::set<const CLI::App*> m_drawing;
};

// Options whose texts are read the same in every locale.

/// A number option; `check` names what is wrong with a value that can't be, empty for a good one.
using NumberCheck = std::function<std::string(double)>;
CLI::Option* AddNumber(CLI::App& verb, const std::string& name, std::optional<double>& value,
                       const std::string& description, NumberCheck check = {});
/// Three numbers, none of them beyond what a scene can hold.
CLI::Option* AddVector(CLI::App& verb, const std::string& name,
                       std::optional<util::Vector3<double>>& value, const std::string& description);
/// The positional scene file.
CLI::Option* AddScene(CLI::App& verb, std::string& path);
/// `-o` for a file, required.
CLI::Option* AddOutput(CLI::App& verb, std::string& path, const std::string& description);
/// `-o` for a scene (.glb or .gltf), required.
CLI::Option* AddSceneOutput(CLI::App& verb, std::string& path);
/// `--range a:b`; what is left out of it stays as it is.
CLI::Option* AddRange(CLI::App& verb, std::string& text, const std::string& description);
/// An option that may be given several times.
CLI::Option* AddList(CLI::App& verb, const std::string& name, std::vector<std::string>& values,
                     const std::string& description);

/// "must be above 0" and the like, for NumberCheck.
std::string MustBePositive(double value);
std::string MustBeFrom(double value, double least, double most);
/// Refuses times (s) that no scene of any frame rate is about.
std::string MustBeTime(double value);
/// For names and paths: an empty one is a slip, such as a variable of a script that is not set.
std::string CheckNotEmpty(const std::string& text);
/// Refuses a path that the scene writer would not know what to do with; empty when all is well.
std::string CheckSceneEnding(const std::string& path);

}  // namespace orv::app
