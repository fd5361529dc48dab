#include "adaptor/maya/plugin/PluginSession.h"

#include <maya/MFileIO.h>
#include <maya/MGlobal.h>
#include <maya/MQtUtil.h>

#include <QCoreApplication>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "adaptor/maya/MayaAdaptorInterface.h"
#include "adaptor/maya/plugin/TakeKeys.h"
#include "adaptor/maya/probes/Features.h"
#include "adaptor/maya/scene/SceneStorage.h"
#include "app/session/anyhost/Devices.h"
#include "core/CoreImplementation.h"
#include "core/CoreMessages.h"
#include "core/host/CoreNode.h"
#include "core/instances/Instance.h"
#include "core/services/DataRoot.h"
#include "core/services/Log.h"
#include "core/services/Preferences.h"
#include "core/services/Translation.h"
#include "core/windows/AllWindows.h"
#include "core/windows/KeyFilter.h"
#include "core/windows/WindowInput.h"
#include "core/windows/Windows.h"
#include "gui/Texts.h"
#include "plugins/release/all/AllRigs.h"
#include "plugins/release/templatetool/templatetool_CTemplateObject.h"

namespace orv::rws::adaptor::maya {

namespace {

// Commands are made by the host, which knows no object of ours.
PluginSession* g_session = nullptr;

}  // namespace

PluginSession* PluginSession::Get() {
  return g_session;
}

PluginSession::PluginSession(bool withWindows)
    : MessageNode("MAYA"),
      m_hasWindows(withWindows),
      m_adaptor(std::make_unique<MayaAdaptorInterface>()),
      m_core(std::make_unique<core::CoreImplementation>()),
      m_storage(std::make_unique<SceneStorage>(*m_core, *m_adaptor,
                                               [this](const std::string& text) { Tell(text); })) {
  std::string problem;
  if (!core::NewLog(core::DataRoot::GetDataFolder() + "/core.log", &problem))
    Tell("there is no log: " + problem);
  m_core->SetAdaptor(m_adaptor.get());
  // Without kinds of rigs those of a scene are kept as they are.
  if (Features::instance().IsOn(Feature::kTools))
    m_core->LoadTools(addon::AllRigs(), addon::MakeTemplatePlugin);
  else
    m_core->LoadTools({});
  m_core->whyHostRefuses = [] { return Features::instance().Why(Feature::kTakes); };
  connect(m_core.get());
  g_session = this;
}

PluginSession::~PluginSession() {
  EndWork();
  g_session = nullptr;
  m_startKey.reset();
  m_keys.reset();
  m_input.reset();
  m_windows.reset();
  disconnect(m_core.get());
  m_storage.reset();
  // Steps know rigs, and the host's queue knows steps.
  m_adaptor->ClearUndoHistory();
  m_core->DropAllRows();
  m_devices.reset();
  // What remains of the undo history asks the core for its rigs.
  m_core.reset();
  m_adaptor.reset();
  gui::SetTranslator(nullptr);
  core::LoadLanguage("en");
  core::CloseLog();
}

void PluginSession::Start() {
  // Without windows there is nobody to perform.
  if (m_hasWindows) m_devices = std::make_unique<app::Devices>([](const std::string&) {});
  if (m_devices && !m_devices->GetProblem().empty())
    core::LogEntry(core::LogLevel::kWarning, m_devices->GetProblem());
  if (m_hasWindows && Features::instance().IsOn(Feature::kWindows)) {
    m_windows = std::make_unique<core::windows::Windows>(*m_core, *this);
    core::windows::AddAllWindows(*m_windows);
    m_input = std::make_unique<core::windows::WindowInput>(*m_core);
    ApplyAppearance();
  }
  if (m_hasWindows && Features::instance().IsOn(Feature::kHotKeys)) {
    using core::windows::KeyFilter;
    m_keys = std::make_unique<KeyFilter>(*m_core, KeyFilter::Scope::kInTakes);
    m_startKey = std::make_unique<TakeKeys>();
    m_startKey->Do(TakeKeys::kBindStart);
  }
  OnPreferences();
  // A scene without them may have nodes of rigs that were there when the plug-in went: they keep
  // their tags until the scene is opened again.
  if (m_storage->IsThere()) AfterOpen();
}

void PluginSession::Tell(const std::string& warning) {
  core::LogEntry(core::LogLevel::kWarning, warning);
  MGlobal::displayWarning(warning.c_str());
}

QWidget* PluginSession::GetHostWindow() {
  return MQtUtil::mainWindow();
}

/// The host's own language is none of ours most often.
void PluginSession::ApplyAppearance() {
  const std::string language = m_core->GetPreferences().Text("language");
  core::LoadLanguage(language == "system" ? std::string() : language);
  gui::SetTranslator([](const std::string& text) { return core::Translate(text); });
  if (m_windows) m_windows->ShowSettings();
}

void PluginSession::OnPreferences() {
  if (!m_devices) return;
  const std::string problem = m_devices->Follow(m_core->GetPreferences());
  if (!problem.empty()) Tell(problem);
}

void PluginSession::onMessage(util::Message& message, bool) {
  if (const auto* refused = core::NewsIn<core::TakeRefused>(message)) Tell(refused->why.filled());
  const auto* run = core::NewsIn<core::RunStateChanged>(message);
  if (!run || run->state != core::RunState::kIdle) return;
  for (const std::string& warning : m_adaptor->TakeWarnings()) Tell(warning);
}

// --- the host's scene ---

void PluginSession::EndWork() {
  m_core->EndEdit();
  m_core->StopRecording();
}

void PluginSession::DropScene() {
  m_inSceneChange = m_inSave = false;
  m_standing.clear();
  EndWork();
  m_core->DropAllRows();
  m_adaptor->SceneGone();
  m_storage->Forget();
}

bool PluginSession::HasNodesAlive(core::Instance& rig) const {
  const std::vector<core::CoreNode*> nodes = rig.GetNodes();
  return std::any_of(nodes.begin(), nodes.end(),
                     [](core::CoreNode* node) { return node->IsValid(); });
}

void PluginSession::BeforeScene() {
  Settle();
  EndWork();
  m_inSceneChange = true;
  m_standing.clear();
  for (core::Instance* rig : m_core->List(false))
    if (HasNodesAlive(*rig)) m_standing.push_back(rig->GetInstanceName());
  SettleLater(0);
}

/// The host tells of a scene that could not be opened, or saved, by no message of its own. Where it
/// has no event loop, what comes next sees to it.
void PluginSession::SettleLater(int milliseconds) {
  if (!QCoreApplication::instance()) return;
  QTimer::singleShot(milliseconds, &m_later, [this] {
    constexpr int kOnceMore = 100;
    if (MFileIO::isReadingFile() || MFileIO::isWritingFile())
      SettleLater(kOnceMore);
    else
      Settle();
  });
}

void PluginSession::Settle() {
  LookAtFailedOpen();
  if (m_inSave) AfterSave();
}

void PluginSession::LookAtFailedOpen() {
  if (!m_inSceneChange) return;
  m_inSceneChange = false;
  std::vector<core::InstanceReference*> dead;
  bool anyAlive = false;
  for (const std::string& name : std::exchange(m_standing, {})) {
    core::Instance* const rig = m_core->FindInstance(name);
    const bool isAlive = rig && HasNodesAlive(*rig);
    anyAlive = anyAlive || isAlive;
    if (rig && !isAlive) dead.push_back(m_core->Find(name));
  }
  // Where no node stands the scene is lost, and with it what never had any.
  if (!dead.empty() && !anyAlive) return DropScene();
  for (core::InstanceReference* row : dead) m_core->RemoveRow(row);
}

void PluginSession::BeforeEdit() {
  Settle();
  if (m_adaptor->IsInTick()) EndWork();
}

void PluginSession::AfterNew() {
  DropScene();
}

void PluginSession::AfterOpen() {
  DropScene();
  if (Features::instance().IsOn(Feature::kStorage)) {
    m_storage->Open();
    m_storage->TellReferenced();
  } else {
    Tell(Features::instance().Why(Feature::kStorage));
  }
  for (const std::string& warning : m_adaptor->TakeWarnings()) Tell(warning);
}

void PluginSession::BeforeImport() {
  if (m_adaptor->IsImporting()) return;
  Settle();
  EndWork();
  m_storage->NoteOwn();
}

void PluginSession::AfterImport() {
  // An import of our own brings nodes for a rig that stands, and no rigs.
  if (m_adaptor->IsImporting()) return m_storage->Clear();
  EndWork();
  if (Features::instance().IsOn(Feature::kImport))
    m_storage->Add();
  else
    Tell(Features::instance().Why(Feature::kImport));
  for (const std::string& warning : m_adaptor->TakeWarnings()) Tell(warning);
}

void PluginSession::AfterReference() {
  m_storage->TellReferenced();
}

void PluginSession::BeforeSave() {
  Settle();
  EndWork();
  m_inSave = true;
  SettleLater(0);
  if (Features::instance().IsOn(Feature::kStorage))
    m_storage->Write();
  else
    Tell(Features::instance().Why(Feature::kStorage));
}

void PluginSession::AfterSave() {
  m_inSave = false;
  m_storage->Clear();
}

void PluginSession::TimeChanged() {
  if (!m_inSceneChange) m_core->UpdateTime(m_adaptor->GetCurrentTime());
}

void PluginSession::PlaybackStarted() {
  if (m_core->IsRecording()) m_core->StopRecording();
}

bool PluginSession::FollowsNodes() const {
  return !m_inSceneChange && !MFileIO::isReadingFile() &&
         Features::instance().IsOn(Feature::kNodeEvents);
}

}  // namespace orv::rws::adaptor::maya
