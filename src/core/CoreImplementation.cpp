#include "core/CoreImplementation.h"

#include <algorithm>
#include <new>
#include <set>

#include "core/CoreRequest.h"
#include "core/HotKeys.h"
#include "core/config/ParameterEdit.h"
#include "core/host/AdaptorInterface.h"
#include "core/host/CoreNode.h"
#include "core/instances/Instance.h"
#include "core/services/CalibrationFile.h"
#include "core/services/DataRoot.h"
#include "core/services/Log.h"
#include "core/services/Translation.h"
#include "core/tools/CoreLibrary.h"
#include "core/tools/TemplateLibrary.h"
#include "core/tools/Tool.h"
#include "gui/Component.h"
#include "unidevice/DriverManager.h"

namespace orv::rws::core {

CoreImplementation::CoreImplementation() {
  unidevice::DriverManager::instance();  // outlives the core, whose instances are its devices
  for (CoreSubSystem* part : OpenList()) part->m_pCore = this;
  s_listClosed = true;
  std::vector<int> watched = HotKeyCodes();
  watched.push_back(70);  // hosts watch "F" as well, and nothing is bound to it
  SetHotKeys(watched);
  for (CoreSubSystem* part : OpenList()) part->OnCoreReady();
}

CoreImplementation::~CoreImplementation() {
  try {
    StopRecording();
  } catch (const std::bad_alloc&) {
    // The keys of a run that filled the memory: the core goes, and with it the run.
    LogEntry(LogLevel::kError, "There is no memory for the keys of the run that ends");
  }
  HideMainWindow();
  SetHooks(nullptr);
  DropAllRows();
  s_listClosed = false;
}

void CoreImplementation::LoadTools(const std::vector<CCameraPlugin*>& rigs, TemplateMaker maker) {
  m_library.AddLibrary(std::make_unique<CoreLibrary>(*this, rigs));
  if (maker) m_library.AddLibrary(std::make_unique<TemplateLibrary>(*this, maker));
  m_library.Load();
  CalibrationFile::Load();
  if (m_licensing.GetState() != LicenceState::kNotNeeded)
    LogEntry(LogLevel::kInfo, m_licensing.GetText());
  m_messages.Tell(ToolsChanged{});
}

bool CoreImplementation::RescanTools() {
  if (RecordManager::IsRecording()) return false;
  const CoreRequest request(*this);
  m_library.Rescan();
  m_messages.Tell(ToolsChanged{});
  return true;
}

void CoreImplementation::onMessage(util::Message& message, bool) {
  if (message.id == util::MSG_CONNECTED) m_messages.NoteListener(message.origin);
}

// --- windows and boxes ---

void CoreImplementation::SetUserInterface(UserInterface* ui) {
  if (ui == m_pUserInterface) return;
  m_pUserInterface = ui;
  UserInterfaceChanged();
}

void CoreImplementation::ShowInputConfig(const std::string& instanceName) {
  if (m_pUserInterface) m_pUserInterface->ShowInputConfig(instanceName);
}

MainWindowView* CoreImplementation::GetMainWindow() const {
  return m_pUserInterface ? m_pUserInterface->GetMainWindow() : nullptr;
}

gui::Component* CoreImplementation::GetRootComponent() {
  MainWindowView* const window = GetMainWindow();
  return window ? window->GetRootComponent() : nullptr;
}

int CoreImplementation::ShowMainWindow(void* parent) {
  if (IsMainWindowOpen()) {
    m_pUserInterface->RaiseMainWindow();
    return kWindowIsOpen;
  }
  if (!m_pUserInterface || !m_pUserInterface->OpenMainWindow(parent))
    LogEntry(LogLevel::kInfo, "There is no main window in this program");
  return 0;
}

int CoreImplementation::HideMainWindow() {
  if (!IsMainWindowOpen()) return kWindowIsNotOpen;
  m_pUserInterface->CloseMainWindow();
  return 0;
}

bool CoreImplementation::IsMainWindowOpen() {
  return GetMainWindow() != nullptr;
}

void CoreImplementation::RegisterFactories(util::AbstractFactory<gui::Component>*) {}

void CoreImplementation::RegisterImageAliases(gui::Component* component) {
  const std::vector<std::string> folders{DataRoot::GetDataFolder() + "/core/images",
                                         ":/data/core/images"};
  component->SetPathAlias("[images]", folders);
  component->SetPathAlias("[coreimages]", folders);
}

void CoreImplementation::ShowError(const std::string& text) {
  LogEntry(LogLevel::kError, text);
}

int CoreImplementation::MessageBox(const std::string& title, const std::string& text,
                                   unsigned flags) {
  if (m_pUserInterface) return m_pUserInterface->MessageBox(title, text, flags);
  LogEntry(LogLevel::kWarning, title + ": " + text);
  return kAnswerCancel;  // as a box that is closed without a button
}

bool CoreImplementation::CheckLicence(const std::string& feature) {
  return m_licensing.Allows(feature);
}

void CoreImplementation::CheckSaving() {
  std::set<std::string> told;
  for (Instance* instance : List(false)) {
    const std::string feature = instance->GetTool()->GetLicenceName();
    if (CheckLicence(feature) || !told.insert(feature).second) continue;
    LogEntry(LogLevel::kWarning, Translate("Saved with rigs that can't be performed: %1",
                                           {m_licensing.WhyNot(feature)}));
  }
}

// --- keys ---

void CoreImplementation::SetHooks(Hooks* hooks) {
  if (m_pHooks) m_pHooks->Uninstall();
  m_pHooks = hooks;
  if (!m_pHooks) return;
  m_pHooks->SetWatched(m_hotKeys);
  if (!m_pHooks->Install(this)) LogEntry(LogLevel::kWarning, "The keyboard hook is not available");
}

void CoreImplementation::SetHotKeys(const std::vector<int>& keys) {
  m_hotKeys = keys;
  if (m_pHooks) m_pHooks->SetWatched(keys);
}

void CoreImplementation::OnKeyEvent(int key, bool down, const KeyModifiers& modifiers) {
  if (down) HandleKey(key, modifiers);
}

bool CoreImplementation::HandleKey(int key, const KeyModifiers& modifiers) {
  constexpr int kMostByKeys = 10;  // index of the slow factor
  if (RecordManager::IsResimulating()) return false;
  const HotKeyTime now = RecordManager::IsRecording() ? HotKeyTime::kInTake : HotKeyTime::kIdle;
  const HotKey* const row = FindHotKey(key, modifiers, now);
  if (!row) return false;
  const int slow = RecordManager::GetSlowFactorIndex();
  switch (row->action) {
    case HotKeyAction::kStop:
      RecordManager::StopRecording();
      break;
    case HotKeyAction::kRetry: {
      const int take = GetAdaptor()->GetUndoBlock();
      RecordManager::StopRecording();
      if (UndoBlock(take)) RecordManager::StartRecording();
      break;
    }
    case HotKeyAction::kSlower:
      RecordManager::SetSlowFactorIndex(std::min(slow + 1, kMostByKeys));
      break;
    case HotKeyAction::kFaster:
      RecordManager::SetSlowFactorIndex(std::max(slow - 1, 1));
      break;
    case HotKeyAction::kStart:
      // Not within a request that asks its user something.
      if (GetAdaptor()->IsUndoBlockOpen()) break;
      if (const util::Sentence why = WhyNoTake())
        m_messages.Tell(TakeRefused{why});
      else
        RecordManager::StartRecording();
      break;
  }
  return true;
}

// --- take and time ---

Preferences& CoreImplementation::GetPreferences() {
  if (!m_preferencesRead) m_preferences.Load();
  m_preferencesRead = true;
  return m_preferences;
}

void CoreImplementation::GetCountdownSeconds(int& out) {
  out = GetPreferences().countdownSeconds;
}

util::Sentence CoreImplementation::WhyLocked() const {
  switch (GetRunState()) {
    case RunState::kIdle:
      return {};
    case RunState::kResimulating:
      return Translatable("A resimulation runs. Stop it first.");
    default:
      return Translatable("A take runs. Stop it first.");
  }
}

util::Sentence CoreImplementation::WhyNoTake() const {
  if (const util::Sentence locked = WhyLocked()) return locked;
  if (const std::string refused = whyHostRefuses ? whyHostRefuses() : std::string();
      !refused.empty())
    return {"%1", {refused}};
  if (List(false).empty()) return Translatable("There is no rig. Add one from the list of tools.");
  if (List(true).empty()) return Translatable("No rig is checked. Check one in its row.");
  return {};
}

void CoreImplementation::StopRecording() {
  const CoreRequest request(*this);
  if (RecordManager::IsResimulating())
    EndResimulation();
  else
    RecordManager::StopRecording();
}

void CoreImplementation::UpdateTime(double time) {
  const MessageQueue::Hold hold(m_messages);
  const std::vector<Instance*> instances =
      RecordManager::IsRecording() ? GetTakeInstances() : List(false);
  for (Instance* instance : instances) {
    if (CheckLicence(instance->GetTool()->GetLicenceName())) instance->Update(time);
  }
  m_messages.Tell(TimeChanged{time});
}

// --- tools ---

Instance* CoreImplementation::CreateToolFromFactory(const std::string& kind,
                                                    const std::string& name) {
  Tool* tool = m_library.Find(kind);
  return tool ? InstanceManager::Create(tool, name) : nullptr;
}

std::string CoreImplementation::CreateTool(const std::string& name) {
  Tool* tool = m_library.Find(name);
  const std::string why = tool ? m_licensing.WhyNot(tool->GetLicenceName()) : std::string();
  if (!why.empty()) {
    MessageBox(tool->GetDisplayName(), why, kIconWarning);
    return {};
  }
  Instance* instance = CreateToolFromFactory(name, {});
  return instance ? instance->GetInstanceName() : std::string();
}

void CoreImplementation::DeleteAllTools() {
  DeleteAll();
}

InstanceReference* CoreImplementation::FindTool(const std::string& name) {
  return Find(name);
}

InstanceReference* CoreImplementation::SelectTool(const std::string& name) {
  InstanceReference* const row = Find(name);
  if (row) SetSelection({row->GetId()});
  return row;
}

bool CoreImplementation::DeleteTool(const std::string& name) {
  InstanceReference* row = Find(name);
  if (!row) return false;
  Delete(row, true);
  return true;
}

std::string CoreImplementation::CloneTool(const std::string& name, std::string& problem) {
  InstanceReference* row = Find(name);
  if (!row) {
    problem = "there is no rig \"" + name + "\"";
    return {};
  }
  Instance* clone = Clone(row, problem);
  return clone ? clone->GetInstanceName() : std::string();
}

// --- the scene ---

void CoreImplementation::SaveScene(XmlSink& out) {
  CheckSaving();
  for (Instance* instance : List(false)) {
    std::string problem;
    util::xml::Tag record = SaveInstance(*instance, problem);
    if (record.name.empty())
      LogEntry(LogLevel::kError, problem);
    else
      out.emplaceChild(std::move(record));
  }
  WriteRows(out);
}

void CoreImplementation::GetSceneTools(XmlSink& out) {
  for (Instance* instance : List(false)) {
    bool alive = false;
    for (CoreNode* node : instance->GetNodes()) alive = alive || node->IsValid();
    if (!alive) continue;
    util::xml::Tag head("RWT_Plugin");
    instance->GetTool()->WriteSaveData(head);
    head.setAttribute("name", instance->GetInstanceName());
    out.emplaceChild(std::move(head));
  }
}

}  // namespace orv::rws::core
