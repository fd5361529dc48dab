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
#include "app/studio/PreviewFolder.h"
#include "app/studio/StudioOptions.h"
#include "app/studio/script/ScriptHost.h"
#include "core/windows/KeyFilter.h"
#include "core/windows/Program.h"
#include "core/windows/WindowInput.h"
#include "core/windows/Windows.h"

namespace orv::app {

class HelpWindow;
class CurveStrip;
class SceneTake;
class Player;
class StagePane;
class Timeline;
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
  gui::component::qt::ViewHandler* GetStage() override;
  gui::component::qt::ViewHandler* GetTimeline() override;
  void MakePages(rws::core::windows::MainWindowFrame& window, const AddPage& add) override;
  void ApplyAppearance() override;
  void OnPreferences() override;

  // ScriptHost
  rws::core::CoreImplementation& ScriptedCore() override;
  std::string ScriptNew() override;
  std::string ScriptOpen(const std::string& path) override;
  std::string ScriptSave(const std::string& path) override;
  std::string ScriptPreview(const ScriptPreviewWish& wish) override;
  nlohmann::json ScriptView(const ScriptLine& line) override;
  nlohmann::json ScriptTakes(const ScriptLine& line) override;
  nlohmann::json ScriptState() override;
  void ScriptKeepOpen(bool keep) override { m_keepOpen = keep; }
  void ScriptQuit(int status) override;

 private:
  struct Command {
    int id;
    void (Studio::*run)();
  };
  static const std::vector<Command>& Commands();
  struct Example {
    const char* file;  ///< below ":/examples"
    const char* label;
    const char* text;
  };
  static const std::vector<Example>& GetExamples();

  /// While long work goes on, which may handle events: menus and scripts get no other scene
  /// meanwhile.
  struct Working {
    explicit Working(Studio& studio);
    ~Working();
    Working(const Working&) = delete;
    Working& operator=(const Working&) = delete;
    Studio& at;
  };

  // Commands of the menus.
  void NewScene();
  void OpenScene();
  void SaveScene() { Save(); }
  void SaveSceneAs() { SaveAs(); }
  void ImportModel();
  void AddModelFromMenu() { AddModel({}); }
  void MakeModel();
  void ExportScene();
  void ExportPoses();
  void ExportAnimation();
  void ExportPicture();
  void ExportPreview();
  void Play() { PlayOrStop(false); }
  void PlayBackwards() { PlayOrStop(true); }
  void FrameBack();
  void FrameOn();
  void KeyBack();
  void KeyOn();
  void RangeBegin();
  void RangeEnd();
  void SwitchLoop();
  void SwitchEveryFrame();
  void SwitchCurves();
  void RecordMarks();
  void MarkBegin();
  void MarkEnd();
  void FollowLine();
  /// Why not, or nothing.
  std::string BeginMarkedTake(double preRoll, double blend, bool goOn);
  // Kept takes, by number.
  void UseTake(int number);
  void RemoveTake(int number);
  void ExportTake(int number);
  void ImportTakes();
  void ChooseSound();
  void ChooseBackdrop();
  void ShowHelp();
  void ShowLicence();
  void CheckForUpdate();
  void Quit();

  nlohmann::json CurvesReply(const ScriptLine& line);

  /// Of the playback range, as the view shows it.
  PreviewOptions PreviewOfRange();
  void BeginPlayback();
  void PlayOrStop(bool backwards);
  /// What the menu and the buttons of time show.
  void ShowPlayback();
  /// Reads the sound that the scene refers to, when that is another one than before.
  void FollowSound();
  bool Open(const std::string& path);
  void OpenExample(int number);
  void TakeDropped(const std::vector<std::string>& paths);
  void Import(const std::string& path);
  /// Selects them, and brings them into the picture unless that is a camera's.
  void ShowNodes(const std::vector<std::string>& names);
  /// Asks which one; `path`, if any, is the first choice.
  void AddModel(const std::string& path);
  std::vector<std::string> GetGrounds();
  bool Save();
  bool SaveAs();
  /// Whether the scene may go: asks about what is not saved.
  bool MayDiscard();
  void OfferLeftovers();
  /// Asks once for consent, and checks when a week has gone by.
  void AskForUpdates();

  /// What a call came to: problems as a box, what was odd as lines of the log and a box of their
  /// own. True when it was done.
  bool ShowResult(const std::string& title, const DocumentResult& result);
  void Show(const std::string& title, const Problem& problem);
  /// In the main window, without a box: also during a take, which a box would hold up.
  void Tell(const std::string& text) { m_windows.ShowNotice(text); }
  /// That it is done, and what was odd, which the log keeps.
  void TellDone(const std::string& text, const std::vector<std::string>& notes);
  static std::string MoreInLog(std::size_t count);
  /// Warns of rigs in what was saved that the licence does not cover.
  void TellUncovered();
  /// Whether a take or resimulation runs, which is told: `what` has to wait.
  bool IsLocked(const std::string& what);
  std::string WhyLocked() const;
  int Ask(const std::string& title, const std::string& text, unsigned flags);
  void SetGeometry(const std::string& geometry);

  StudioOptions m_options;
  QPalette m_systemPalette;  ///< as it was before any theme
  SceneDocument m_document;
  HeadlessBrowser m_browser;
  Devices m_devices;
  std::unique_ptr<StagePane> m_stage;
  std::unique_ptr<Player> m_player;
  std::unique_ptr<Timeline> m_timeline;
  std::unique_ptr<CurveStrip> m_curves;
  Monitor m_takeMonitor;
  std::unique_ptr<SceneTake> m_take;  ///< between the marks, while it runs
  class TakeWatch;
  std::unique_ptr<TakeWatch> m_watch;
  std::string m_soundFile;             ///< that was read, or could not be
  const void* m_soundScene = nullptr;  ///< for which it was
  rws::core::windows::Windows m_windows;
  rws::core::windows::WindowInput m_input;
  rws::core::windows::KeyFilter m_keys;  ///< behind it, and so ahead of it with every key
  std::unique_ptr<HelpWindow> m_help;
  int m_working = 0;        ///< levels of Working
  bool m_keepOpen = false;  ///< also without a main window; see ScriptKeepOpen
  std::unique_ptr<ScriptDriver> m_script;
};

}  // namespace orv::app
