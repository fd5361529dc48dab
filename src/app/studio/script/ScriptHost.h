// What a script asks of the program that it drives.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::app {

struct ScriptLine;

/// A folder of pictures of the playback range, as the view shows it where nothing else is wished.
struct ScriptPreviewWish {
  std::string folder;
  std::string camera;         ///< name of a node
  int width = 0, height = 0;  ///< 0: as it is by default
  bool signs = false, overlay = false;
};

class ScriptHost {
 public:
  virtual ~ScriptHost() = default;

  virtual rws::core::CoreImplementation& ScriptedCore() = 0;
  // Without a question. An empty text means success, any other why not.
  virtual std::string ScriptNew() = 0;
  virtual std::string ScriptOpen(const std::string& path) = 0;
  /// An empty path: the scene's own file.
  virtual std::string ScriptSave(const std::string& path) = 0;
  virtual std::string ScriptPreview(const ScriptPreviewWish& wish) = 0;
  /// A command about the scene's picture; see RunViewCommand.
  virtual nlohmann::json ScriptView(const ScriptLine& line) = 0;
  /// A command about curves, arming, marks or kept takes; `error` where it can't be done.
  virtual nlohmann::json ScriptTakes(const ScriptLine& line) = 0;
  /// Run, time, frame, selection, names of undo steps, dirty, path, and how
  /// the pictures have come.
  virtual nlohmann::json ScriptState() = 0;
  /// Whether the program goes on, with a new scene, when its main window is closed.
  virtual void ScriptKeepOpen(bool keep) = 0;
  /// Ends the program with this exit status, unsaved changes and all.
  virtual void ScriptQuit(int status) = 0;
};

}  // namespace orv::app
