// A scene file that is worked on.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace orv::rws::adaptor::headless {
class HeadlessAdaptor;
class HeadlessSession;
class Scene;
}  // namespace orv::rws::adaptor::headless
namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::app {

class KeptTakes;
class Losses;
struct LossReport;

/// A core that knows all rigs and the user's templates, with one scene at a time: empty at first.
class SceneSession {
 public:
  SceneSession();
  ~SceneSession();

  /// Opens a `.glb` or `.gltf` in place of what was open; `clip` names the animation that is
  /// evaluated, by default the first. An empty text means success; any other says what is wrong.
  std::string Open(const std::string& path, const std::string& clip = {});
  /// An empty scene in place of what was open.
  void Clear();
  /// Writes the file, whole or not at all. An empty text means success.
  std::string Save(const std::string& path);
  /// What `Save` would write, read as a scene of its own; null with `error` told.
  std::unique_ptr<rws::adaptor::headless::Scene> Copy(std::string& error);
  /// Hands over, and forgets, what the last calls had to say.
  std::vector<std::string> TakeWarnings();
  /// What of the keys and recorded inputs that the file held when it was opened is gone.
  LossReport FindLosses() const;
  /// From here on what the scene holds now counts for `FindLosses`.
  void RestartLosses();

  KeptTakes& GetTakes() { return *m_takes; }
  rws::core::CoreImplementation& GetCore();
  rws::adaptor::headless::HeadlessAdaptor& GetAdaptor();
  rws::adaptor::headless::Scene& GetScene();
  const rws::core::CoreImplementation& GetCore() const;
  const rws::adaptor::headless::HeadlessAdaptor& GetAdaptor() const;

 private:
  /// In a scene without rigs, names as "<first part>_<rest>": the rests of each first part that
  /// has several.
  std::map<std::string, std::set<std::string>> NodeFamilies();
  /// Tells of rigs whose records another program has dropped, by the names of their nodes.
  std::string FindLostRecords(const std::string& path, const std::string& clip);

  std::unique_ptr<rws::adaptor::headless::HeadlessSession> m_session;
  std::unique_ptr<KeptTakes> m_takes;
  std::unique_ptr<Losses> m_losses;  ///< since the scene was opened
  std::string m_folder;  ///< of the file that was opened, with its slash: what lies beside it
  std::vector<std::string> m_warnings;
};

}  // namespace orv::app
