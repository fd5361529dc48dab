// The desktop program.
#pragma once

#include <QObject>
#include <QPalette>
#include <memory>
#include <string>
#include <vector>

#include "app/session/anyhost/Devices.h"
#include "app/session/document/SceneDocument.h"
#include "app/studio/KeyFilter.h"
#include "app/studio/StudioOptions.h"
#include "app/studio/script/ScriptHost.h"
#include "core/windows/Program.h"
#include "core/windows/Windows.h"

namespace orv::app {

class ScriptDriver;

/// One scene at a time, with the core's windows around it. Works on a SceneDocument; what it asks a
/// user and shows of the answers stands here, what it does in the session.
class Studio : public QObject, public rws::core::windows::Program, public ScriptHost {
 public:
  explicit Studio(const StudioOptions& options);
  ~Studio() override;

  /// Opens the windows, the scene and the script. False, with `problem` filled, when the program
  /// can't begin.
  bool begin(std::string& problem);

  // Program
  bool HasCommand(int id) const override;
  void RunCommand(int id) override;
  void UpdateMenu(gui::Menu& menu) override;
  std::string GetSceneTitle() const override;
  bool IsSceneChanged() const override;
  void OpenDropped(const std::vector<std::string>& paths) override;
  bool MayClose() override;
  void OnMainWindowClosed() override;
  void ApplyAppearance() override;

  // ScriptHost
  rws::core::CoreImplementation& scriptedCore() override;
  std::string scriptNew() override;
  std::string scriptOpen(const std::string& path) override;
  std::string scriptSave(const std::string& path) override;
  nlohmann::json scriptState() override;
  void scriptQuit(int status) override;

 private:
  struct Command {
    int id;
    void (Studio::*run)();
  };
  static const std::vector<Command>& commands();

  // Commands of the menus.
  void newScene();
  void openScene();
  void saveScene() { save(); }
  void saveSceneAs() { saveAs(); }
  void exportScene();
  void exportPoses();
  void exportPicture();
  void quit();
  void showHelp();

  void open(const std::string& path);
  bool save();
  bool saveAs();
  /// Whether the scene may go: asks about what is not saved.
  bool mayDiscard();
  void offerLeftovers();

  /// What a call came to: problems as a box, what was odd as lines of the log and a box of their
  /// own. True when it was done.
  bool showResult(const std::string& title, const DocumentResult& result);
  void show(const std::string& title, const Problem& problem);
  int ask(const std::string& title, const std::string& text, unsigned flags);
  void setGeometry(const std::string& geometry);

  StudioOptions m_options;
  QPalette m_systemPalette;  ///< as it was before any theme
  SceneDocument m_document;
  Devices m_devices;
  rws::core::windows::Windows m_windows;
  KeyFilter m_keys;
  std::unique_ptr<ScriptDriver> m_script;
};

}  // namespace orv::app
