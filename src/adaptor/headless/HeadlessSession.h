// A core on the headless host with one glTF scene.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/interface/TemplateMaker.h"

namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::rws::adaptor {
class SceneRigs;
}

namespace orv::rws::adaptor::headless {

class HeadlessAdaptor;
class HeadlessDocument;
class Scene;

/// What the command line, the desktop program and most tests work on: the core, its rigs and one
/// scene at a time. Opening rebuilds every rig from its record; a record that can't be opened is
/// told of in the warnings and kept as it is for the next save.
class HeadlessSession {
 public:
  /// `rigs` are the kinds that the scene may hold; the factories stay the caller's. With `maker` it
  /// may hold the kinds of templates too.
  explicit HeadlessSession(const std::vector<CCameraPlugin*>& rigs, TemplateMaker maker = nullptr);
  ~HeadlessSession();

  /// Opens a `.glb` or `.gltf` in place of what was open. `clip` names the animation that is
  /// evaluated (its name, or its number from 0); empty means the first. On failure `error` names
  /// file and place, and what was open stays.
  bool Open(const std::string& path, std::string& error, const std::string& clip = {});
  /// An empty scene.
  void New();
  /// Stores every rig and writes the file, whole or not at all.
  bool Save(const std::string& path, std::string& error);

  /// Writes the rigs' records into the scene, as Save does.
  bool Store(std::string& error);

  core::CoreImplementation& GetCore() { return *m_core; }
  HeadlessAdaptor& GetAdaptor();
  Scene& GetScene();
  /// Hands over, and forgets, what the last calls had to say.
  std::vector<std::string> TakeWarnings();

 private:
  void Warn(const std::string& text) { m_warnings.push_back(text); }

  std::unique_ptr<HeadlessDocument> m_document;
  std::unique_ptr<core::CoreImplementation> m_core;
  std::unique_ptr<SceneRigs> m_rigs;
  std::vector<std::string> m_warnings;
};

}  // namespace orv::rws::adaptor::headless
