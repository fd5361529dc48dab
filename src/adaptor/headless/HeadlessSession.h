// A core on the headless host with one glTF scene.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace orv::rws {
class CCameraPlugin;
}
namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::rws::adaptor::headless {

class HeadlessAdaptor;
class Scene;

/// What the command line, the desktop program and most tests work on: the core, its rigs and one
/// scene at a time. Opening rebuilds every rig from its record; a record that can't be opened is
/// told of in the warnings and kept as it is for the next save.
class HeadlessSession {
 public:
  /// `rigs` are the kinds that the scene may hold; the factories stay the caller's.
  explicit HeadlessSession(const std::vector<CCameraPlugin*>& rigs);
  ~HeadlessSession();

  /// Opens a `.glb` or `.gltf` in place of what was open. `clip` names the animation that is
  /// evaluated (its name, or its number from 0); empty means the first. On failure `error` names
  /// file and place and an empty scene is open.
  bool Open(const std::string& path, std::string& error, const std::string& clip = {});
  /// An empty scene.
  void New();
  /// Stores every rig and writes the file, whole or not at all.
  bool Save(const std::string& path, std::string& error);

  core::CoreImplementation& GetCore() { return *m_core; }
  HeadlessAdaptor& GetAdaptor();
  Scene& GetScene();
  /// What the last Open had to say.
  const std::vector<std::string>& GetWarnings() const { return m_warnings; }

 private:
  struct Open_;

  void Attach();
  void LoadRigs();

  std::unique_ptr<Open_> m_open;  ///< document and adaptor of the scene that is open
  std::unique_ptr<core::CoreImplementation> m_core;
  std::vector<std::string> m_warnings;
};

}  // namespace orv::rws::adaptor::headless
