// The one object that ties the system together.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/AdaptorManager.h"
#include "core/CoreInterface.h"
#include "core/Hooks.h"
#include "core/InstanceManager.h"
#include "core/LibraryManager.h"
#include "core/Preferences.h"
#include "core/RecordManager.h"
#include "core/UpdateManager.h"
#include "core/UserInterface.h"
#include "core/interface/TemplateMaker.h"
#include "util/Singleton.h"

namespace orv::rws {
class CCameraPlugin;
}

namespace orv::rws::core {

/// The core. A plug-in or program uses the process-wide one of instance(); a test may make its own,
/// one at a time. Owns instances and tools; adaptor, user interface and hook are not owned and must
/// outlive their use.
class CoreImplementation : public util::Singleton<CoreImplementation>,
                           public CoreInterface,
                           public AdaptorManager,
                           public RecordManager,
                           public InstanceManager,
                           public UpdateManager,
                           public Hooks::KeyEventCallback {
 public:
  CoreImplementation();
  ~CoreImplementation() override;

  /// Registers the rig kinds and loads the profiles of all. To be called once, before any tool is
  /// made; the factories stay the caller's. With `maker` the templates load too.
  void LoadTools(const std::vector<CCameraPlugin*>& rigs, TemplateMaker maker = nullptr);
  void SetUserInterface(UserInterface* ui) { m_pUserInterface = ui; }
  UserInterface* GetUserInterface() const { return m_pUserInterface; }
  /// Null while there is no main window.
  MainWindowView* GetMainWindow() const;
  /// Installs the platform's hook; null takes the old one out.
  void SetHooks(Hooks* hooks);

  LibraryManager& GetLibrary() { return m_library; }
  /// Read from the data root when they are first asked for.
  Preferences& GetPreferences();
  /// Next number of a rig object.
  int NextObjectId() { return ++m_lastObjectId; }

  /// A user's edit of one element, undoable, callbacks included. False with `problem` filled when
  /// the text is no value for it; a value out of range is clamped and `problem` says so.
  bool EditParameter(Instance& instance, int elementId, const std::string& text,
                     std::string& problem);
  /// A user's press of a button. False when the element is no button.
  bool PressButton(Instance& instance, int elementId);

  // CoreInterface
  void SaveScene(XmlSink& out) override;
  void GetSceneTools(XmlSink& out) override;
  std::string CreateTool(const std::string& name) override;
  void DeleteAllTools() override;
  int ShowMainWindow(void* parent) override;
  int HideMainWindow() override;
  bool IsMainWindowOpen() override;
  void* GetRootComponent() override { return nullptr; }
  void RegisterFactories(void* table) override;
  void GetCountdownSeconds(int& out) override;
  void UpdateTime(double time) override;
  bool IsRecording() override { return RecordManager::IsRecording(); }
  bool IsResimulating() override { return RecordManager::IsResimulating(); }
  void SetHotKeys(const std::vector<int>& keys) override;
  int StartRecording() override { return RecordManager::StartRecording(); }
  void StopRecording() override;
  int GetSlowFactorIndex() override { return RecordManager::GetSlowFactorIndex(); }
  void SetSlowFactorIndex(int index) override { RecordManager::SetSlowFactorIndex(index); }
  int Resimulate(double from, double to) override { return RecordManager::Resimulate(from, to); }
  InstanceReference* FindTool(const std::string& name) override;
  std::string LoadProfile(const std::string& toolName, const std::string& profileName) override;
  Instance* CreateToolFromFactory(const std::string& kind, const std::string& name) override;
  bool RescanTools() override;
  std::string CloneTool(const std::string& name, std::string& problem) override;
  InstanceReference* SelectTool(const std::string& name) override { return FindTool(name); }
  bool DeleteTool(const std::string& name) override;
  void RegisterImageAliases(void* component) override;
  void ShowError(const std::string& text) override;
  bool CheckLicence(const std::string& feature) override;
  int MessageBox(const std::string& title, const std::string& text, unsigned flags) override;

  // Hooks::KeyEventCallback
  void OnKeyEvent(int key, bool down, const KeyModifiers& modifiers) override;

 private:
  UserInterface* m_pUserInterface = nullptr;
  Hooks* m_pHooks = nullptr;
  std::vector<int> m_hotKeys;
  LibraryManager m_library;
  Preferences m_preferences;
  bool m_preferencesRead = false;
  int m_lastObjectId = 0;
};

}  // namespace orv::rws::core
