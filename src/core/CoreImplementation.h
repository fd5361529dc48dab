// The one object that ties the system together.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/CoreInterface.h"
#include "core/MessageQueue.h"
#include "core/UserInterface.h"
#include "core/config/InputResponse.h"
#include "core/config/ProfileValues.h"
#include "core/host/AdaptorManager.h"
#include "core/instances/InstanceManager.h"
#include "core/interface/TemplateMaker.h"
#include "core/licensing/Licensing.h"
#include "core/services/Hooks.h"
#include "core/services/LogFeed.h"
#include "core/services/Preferences.h"
#include "core/take/RecordManager.h"
#include "core/tools/LibraryManager.h"
#include "core/update/UpdateManager.h"
#include "util/Singleton.h"

namespace orv::rws {
class CCameraPlugin;
}
namespace orv::unidevice {
class CalibrationTable;
class Control;
struct Calibration;
struct ControlChoice;
}  // namespace orv::unidevice

namespace orv::rws::core {

class ConfigElement;
class OpenEdit;

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
  /// At any time, null for none. Nothing of the old one is called from here on; what it made is
  /// deleted, and the new one shows what runs.
  void SetUserInterface(UserInterface* ui);
  UserInterface* GetUserInterface() const { return m_pUserInterface; }
  /// Null while there is no main window.
  MainWindowView* GetMainWindow() const;
  /// Installs the platform's hook; null takes the old one out.
  void SetHooks(Hooks* hooks);

  LibraryManager& GetLibrary() { return m_library; }
  /// Read from the data root when they are first asked for.
  Preferences& GetPreferences();
  Licensing& GetLicensing() { return m_licensing; }
  /// In place of the one by the key that was built in.
  void SetLicensing(Licensing licensing) { m_licensing = std::move(licensing); }
  /// To be called by who saves the rigs: warns of those that the licence does not cover, which are
  /// saved all the same.
  void CheckSaving();

  // What a user edits. Undoable; each is one step.

  /// A user's edit of one element, callbacks included. False with `problem` filled when the text is
  /// no value for it; a value out of range is clamped and `problem` says so.
  bool EditParameter(Instance& instance, int elementId, const std::string& text,
                     std::string& problem);
  /// An edit of many changes, such as a drag: it begins, changes the value as often as it likes and
  /// ends as one step, or as none when it ends where it began. There is one at a time: whatever is
  /// asked of the core beside it ends it, as do the begin and end of a take. Then DragEdit is
  /// false.
  bool BeginEdit(Instance& instance, int elementId, std::string& problem);
  bool DragEdit(Instance& instance, int elementId, const std::string& text, std::string& problem);
  void EndEdit();
  /// Puts back what it has changed.
  void CancelEdit();
  /// A user's press of a button. False when the element is no button.
  bool PressButton(Instance& instance, int elementId);
  /// The values that the rig's parameters are compared with.
  ProfileValues GetBaseValues(const Instance& instance, ParameterBase base) const;
  /// Puts these elements, or all below `group`, back. Empty when that is done, or when they stand
  /// there already; else why not.
  std::string ResetParameters(Instance& instance, const std::vector<int>& elements,
                              ParameterBase base);
  std::string ResetGroup(Instance& instance, const ConfigElement& group, ParameterBase base);
  // Of inputs, by their index. An empty text means success, any other why not: in a resimulation,
  // which feeds the inputs from their tracks, nothing of this can be had.
  /// Null unmaps.
  std::string MapInput(Instance& instance, int input, unidevice::Control* control);
  /// As what a `control` element names, such as ControlFinder::tag; a device that is away is taken
  /// up when it comes. An empty tag unmaps.
  std::string MapInputTo(Instance& instance, int input, const util::xml::Tag& controlTag);
  std::string SetInputResponse(Instance& instance, int input, const InputResponse& response);
  /// Which inputs takes record, by their index; the others play what they have. With all of them it
  /// is as if nothing had been said. No step of undo; refused in a run.
  std::string ArmInputs(Instance& instance, const std::vector<bool>& armed);
  /// The same as an edit of many changes, which EndEdit and CancelEdit end as those of a parameter.
  std::string BeginResponseEdit(Instance& instance, int input);
  std::string DragResponse(Instance& instance, int input, const InputResponse& response);
  /// Tells the inputs with a number that was refused too; the others have loaded then.
  std::string LoadInputProfile(Instance& instance, const std::string& profileName);
  /// Every input as the rig's Define made it, unmapped.
  std::string LoadInputFactorySettings(Instance& instance);
  // Calibrations belong to the user's devices and not to the scene: they act at once, are kept in
  // the data root and are not undoable. An empty text means success.
  /// Refused in a take, whose tracks would jump. One that can't be saved doesn't act either.
  std::string SetCalibration(const unidevice::ControlChoice& control,
                             const unidevice::Calibration& calibration);
  std::string ClearCalibration(const unidevice::ControlChoice& control);
  /// The host's undo and redo, with what they change told when all is done.
  bool Undo();
  bool Redo();

  // CoreInterface
  void SaveScene(XmlSink& out) override;
  void GetSceneTools(XmlSink& out) override;
  std::string CreateTool(const std::string& name) override;
  void DeleteAllTools() override;
  int ShowMainWindow(void* parent) override;
  int HideMainWindow() override;
  bool IsMainWindowOpen() override;
  gui::Component* GetRootComponent() override;
  void RegisterFactories(util::AbstractFactory<gui::Component>* table) override;
  void GetCountdownSeconds(int& out) override;
  void UpdateTime(double time) override;
  /// Why the user can't edit now, and why no take can begin; empty when that can be.
  util::Sentence WhyLocked() const;
  util::Sentence WhyNoTake() const;
  /// Why the host can have no take at all; may be empty, as may what it answers.
  std::function<std::string()> whyHostRefuses;
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
  InstanceReference* SelectTool(const std::string& name) override;
  bool DeleteTool(const std::string& name) override;
  void RegisterImageAliases(gui::Component* component) override;
  void ShowError(const std::string& text) override;
  bool CheckLicence(const std::string& feature) override;
  int MessageBox(const std::string& title, const std::string& text, unsigned flags) override;

  // InstanceHost
  AdaptorInterface* GetAdaptor() const override { return AdaptorManager::GetAdaptor(); }
  MessageQueue& GetMessages() override { return m_messages; }
  double GetFrameRate() const override { return RecordManager::GetFrameRate(); }
  double GetFrameDuration() const override { return RecordManager::GetFrameDuration(); }
  void ShowInputConfig(const std::string& instanceName) override;
  Tool* FindKind(const std::string& id) const override { return m_library.Find(id); }
  int NextObjectId() override { return ++m_lastObjectId; }
  void Forget(Instance* instance) override { RecordManager::Forget(instance); }

  // MessageNode
  void onMessage(util::Message& message, bool broadcast) override;

  /// A key that went down, in a window of the program: does what its row of HotKeys says. True when
  /// it was a hot key, and then nobody else should get it.
  bool HandleKey(int key, const KeyModifiers& modifiers);

  // Hooks::KeyEventCallback
  void OnKeyEvent(int key, bool down, const KeyModifiers& modifiers) override;

 private:
  bool UndoBlock(int block);
  ConfigElement* FindEditable(Instance& instance, int elementId, std::string& problem) const;
  std::string ResetElements(Instance& instance, const std::vector<ConfigElement*>& elements,
                            ParameterBase base, const std::string& what);
  std::string ChangeCalibration(const std::function<void(unidevice::CalibrationTable&)>& change);
  std::string ChangeInputs(Instance& instance, const std::string& undoName, std::vector<int> inputs,
                           const std::function<void()>& change);

  MessageQueue m_messages{*this};
  LogFeed m_logFeed{m_messages};
  std::shared_ptr<OpenEdit> m_edit;  ///< the one that is open
  UserInterface* m_pUserInterface = nullptr;
  Hooks* m_pHooks = nullptr;
  std::vector<int> m_hotKeys;
  LibraryManager m_library;
  Licensing m_licensing;
  Preferences m_preferences;
  bool m_preferencesRead = false;
  int m_lastObjectId = 0;
};

}  // namespace orv::rws::core
