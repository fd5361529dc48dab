// A scene that a verb works on.
#pragma once

#include <map>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string>
#include <vector>

#include "app/rigwright/CommandLineUi.h"

namespace orv::rws::adaptor::headless {
class HeadlessAdaptor;
class HeadlessSession;
class Scene;
class SceneNode;
}  // namespace orv::rws::adaptor::headless
namespace orv::rws::core {
class ConfigElement;
class CoreImplementation;
class Instance;
class InstanceReference;
class Tool;
}  // namespace orv::rws::core
namespace orv::unidevice {
class Property;
}

namespace orv::app {

class Losses;
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

  rws::core::CoreImplementation& core();
  rws::adaptor::headless::HeadlessAdaptor& adaptor();
  rws::adaptor::headless::Scene& scene();
  CommandLineUi& ui() { return m_ui; }
  Program& program() { return m_program; }
  const std::string& path() const { return m_path; }

  rws::core::Tool& tool(const std::string& kind);
  rws::core::InstanceReference& row(const std::string& rig);
  rws::core::Instance& rig(const std::string& name);
  rws::adaptor::headless::SceneNode& node(const std::string& name);
  std::vector<std::string> rigNames();

  /// Cuts `text` behind the rig that it begins with, as "RIG:rest". Names may hold colons
  /// themselves: the longest name that fits counts.
  rws::core::Instance& rigOf(const std::string& text, std::string& rest);
  /// The input of "RIG:INPUT", or of "INPUT" when exactly one rig has it. Null, with `why` filled,
  /// when there is none.
  unidevice::Property* findInput(const std::string& text, rws::core::Instance*& rig,
                                 std::string& why);
  /// The element of a label or "#ID". `buttons` asks for a button, else for a parameter.
  rws::core::ConfigElement& element(rws::core::Instance& rig, const std::string& label,
                                    bool buttons);
  /// A parameter and the rig that it is of.
  struct Parameter {
    rws::core::Instance& rig;
    rws::core::ConfigElement& element;
  };
  /// Edits one parameter from "RIG:LABEL=VALUE" or "RIG:#ID=VALUE".
  Parameter setParameter(const std::string& assignment);

  /// Loads a config profile; one of an older version is told as a warning.
  void loadProfile(rws::core::Instance& rig, const std::string& name);

  /// Writes the scene, unless the user has interrupted the verb, and tells the object of the
  /// result where. Keys and recorded inputs that have gone since it was opened are told as
  /// warnings, with `why`.
  void save(const std::string& output, const LossReasons& why = {});
  /// Hands what session and adaptor had to say to the warnings.
  void tellWarnings();

 private:
  /// In a scene without rigs, names as "<first part>_<rest>": the rests of each first part that
  /// has several.
  std::map<std::string, std::set<std::string>> nodeFamilies();
  /// Tells of rigs whose records another program has dropped, by the names of their nodes.
  void warnOfLostRecords();

  Program& m_program;
  CommandLineUi m_ui;
  std::string m_path;
  std::unique_ptr<rws::adaptor::headless::HeadlessSession> m_session;
  std::unique_ptr<Losses> m_losses;  ///< since the scene was opened
};

/// Labels of the groups around an element, outermost first.
std::string groupOf(const rws::core::ConfigElement& element);
/// A parameter's value as results tell it; null for a button.
nlohmann::ordered_json valueOf(const rws::core::ConfigElement& element);
/// Refuses an assignment that the command line alone shows to be wrong; empty when all is well.
std::string checkAssignment(const std::string& text);
/// The same for "RIG:LABEL".
std::string checkRigPart(const std::string& text);

}  // namespace orv::app
