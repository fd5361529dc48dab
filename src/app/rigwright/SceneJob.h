// A scene that a verb works on.
#pragma once

#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "app/rigwright/CommandLineUi.h"
#include "app/session/SceneSession.h"

namespace orv::rws::adaptor::headless {
class HeadlessNode;
class SceneNode;
}  // namespace orv::rws::adaptor::headless
namespace orv::rws::core {
class ConfigElement;
class Instance;
class InstanceReference;
class Tool;
}  // namespace orv::rws::core

namespace orv::app {

class InputFile;
class Output;
class Program;

/// Why a verb drops keys and recorded inputs, for the warnings; may be empty.
struct LossReasons {
  std::string keys;
  std::string input;
};

/// The core with one scene open. What can't be found is refused by a Failure that names what there
/// is instead.
class SceneJob {
 public:
  /// The core alone, with an empty scene.
  explicit SceneJob(Program& program);
  /// Opens `path`; what opening had to say goes to the warnings.
  SceneJob(Program& program, const std::string& path);
  ~SceneJob();

  SceneSession& GetSession() { return m_session; }
  rws::core::CoreImplementation& GetCore() { return m_session.GetCore(); }
  rws::adaptor::headless::HeadlessAdaptor& GetAdaptor() { return m_session.GetAdaptor(); }
  rws::adaptor::headless::Scene& GetScene() { return m_session.GetScene(); }
  CommandLineUi& GetUi() { return m_ui; }
  Program& GetProgram() { return m_program; }
  const std::string& GetPath() const { return m_path; }

  rws::core::Tool& FindTool(const std::string& kind);
  rws::core::InstanceReference& FindRow(const std::string& rig);
  rws::core::Instance& FindRig(const std::string& name);
  rws::adaptor::headless::SceneNode& FindNode(const std::string& name);
  /// The same as the adaptor's.
  rws::adaptor::headless::HeadlessNode& FindHostNode(const std::string& name);
  std::vector<std::string> RigNames();

  /// Cuts `text` behind the rig that it begins with, as "RIG:rest". Names may hold colons
  /// themselves: the longest name that fits counts.
  rws::core::Instance& RigOf(const std::string& text, std::string& rest);
  /// The element of a label or "#ID". `buttons` asks for a button, else for a parameter.
  rws::core::ConfigElement& FindElement(rws::core::Instance& rig, const std::string& label,
                                        bool buttons);
  /// A parameter and the rig that it is of.
  struct Parameter {
    rws::core::Instance& rig;
    rws::core::ConfigElement& element;
  };
  /// The parameter of "RIG:LABEL=VALUE" or "RIG:#ID=VALUE", and what stands behind it.
  Parameter FindAssigned(const std::string& assignment, std::string& value);
  /// Edits that parameter.
  Parameter SetParameter(const std::string& assignment);

  /// Loads a config profile; one of an older version is told as a warning.
  void LoadProfile(rws::core::Instance& rig, const std::string& name);

  /// Writes the scene, unless the user has interrupted the verb, and tells the object of the
  /// result where. Keys and recorded inputs that have gone since it was opened are told as
  /// warnings, with `why`.
  void Save(const std::string& output, const LossReasons& why = {});

 private:
  /// Hands what the session had to say to the warnings.
  void TellWarnings();

  Program& m_program;
  CommandLineUi m_ui;
  std::string m_path;
  SceneSession m_session;
};

/// An input file read for the rigs; what is odd in it goes to the warnings.
InputFile ReadInputs(SceneJob& job, const std::string& path);
/// What a save that takes long says on stderr, for a SavingNote; nothing under --quiet.
std::function<void()> MakeSavingNote(Output& output, const std::string& path);
/// Labels of the groups around an element, outermost first.
std::string GroupOf(const rws::core::ConfigElement& element);
/// A parameter's value as results tell it; null for a button.
nlohmann::ordered_json ValueOf(const rws::core::ConfigElement& element);
/// Refuses an assignment that the command line alone shows to be wrong; empty when all is well.
std::string CheckAssignment(const std::string& text);
/// The same for "RIG:LABEL".
std::string CheckRigPart(const std::string& text);

}  // namespace orv::app
