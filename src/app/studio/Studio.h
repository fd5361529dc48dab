// The desktop program.
#pragma once

#include <QObject>
#include <QPalette>
#include <memory>
#include <string>
#include <vector>

#include "app/session/anyhost/Devices.h"
#include "app/session/document/SceneDocument.h"
#include "app/studio/HeadlessBrowser.h"
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
  bool Begin(std::string& problem);

  // Program
  bool HasCommand(int id) const override;
  void RunCommand(int id) override;
  void UpdateMenu(gui::Menu& menu) override;
  std::string GetSceneTitle() const override;
  bool IsSceneChanged() const override;
  void OpenDropped(const std::vector<std::string>& paths) override;
  bool MayClose() override;
  void OnMainWindowClosed() override;
  rws::core::windows::SceneBrowser* GetSceneBrowser() override { return &m_browser; }
  void ApplyAppearance() override;

  // ScriptHost
  rws::core::CoreImplementation& ScriptedCore() override;
  std::string ScriptNew() override;
  std::string ScriptOpen(const std::string& path) override;
  std::string ScriptSave(const std::string& path) override;
  nlohmann::json ScriptState() override;
  void ScriptKeepOpen(bool keep) override { m_keepOpen = keep; }
  void ScriptQuit(int status) override;

 private:
  struct Command {
    int id;
    void (Studio::*run)();
  };
  static const std::vector<Command>& Commands();

  // Commands of the menus.
  void NewScene();
  void OpenScene();
  void SaveScene() { Save(); }
  void SaveSceneAs() { SaveAs(); }
  void ExportScene();
  void ExportPoses();
  void ExportPicture();
  void Quit();

  void Open(const std::string& path);
  bool Save();
  bool SaveAs();
  /// Whether the scene may go: asks about what is not saved.
  bool MayDiscard();
  void OfferLeftovers();

  /// What a call came to: problems as a box, what was odd as lines of the log and a box of their
  /// own. True when it was done.
  bool ShowResult(const std::string& title, const DocumentResult& result);
  void Show(const std::string& title, const Problem& problem);
  int Ask(const std::string& title, const std::string& text, unsigned flags);
  void SetGeometry(const std::string& geometry);

  StudioOptions m_options;
  QPalette m_systemPalette;  ///< as it was before any theme
  SceneDocument m_document;
  HeadlessBrowser m_browser;
  Devices m_devices;
  rws::core::windows::Windows m_windows;
  KeyFilter m_keys;
  bool m_keepOpen = false;  ///< also without a main window; see ScriptKeepOpen
  std::unique_ptr<ScriptDriver> m_script;
};

}  // namespace orv::app
