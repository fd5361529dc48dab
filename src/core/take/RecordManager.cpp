#include "core/take/RecordManager.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <map>

#include "core/CoreRequest.h"
#include "core/UserInterface.h"
#include "core/WindowIds.h"
#include "core/host/AdaptorInterface.h"
#include "core/host/CoreNode.h"
#include "core/instances/Instance.h"
#include "core/services/Log.h"
#include "core/services/Translation.h"
#include "core/take/HostTimeUndo.h"
#include "core/take/ResimulateWindow.h"
#include "core/tools/Tool.h"
#include "util/FrameGrid.h"
#include "util/ReturnValue.h"

namespace orv::rws::core {

namespace {

/// Where typed slow factor indices end: 2^999 still is a number.
constexpr int kMostSlow = 1000;
constexpr double kMinimumWait = 0.001;  ///< s, floor of the tick's timer

/// Milliseconds since the system's start, low 32 bits.
unsigned SystemTickCount() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<unsigned>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

}  // namespace

/// Models under one dummy model of a rig, with the visibility that they had before the take. The
/// first bit is the dummy model's own.
struct RecordManager::HiddenModels {
  CoreNode* dummy = nullptr;
  std::vector<bool> visible;
};

RecordManager::RecordManager() : tickCount(SystemTickCount) {}

RecordManager::~RecordManager() = default;

// --- the frame grid ---

double RecordManager::GetFrameDuration() const {
  return m_bFixedFrameDuration ? m_fixedFrameDuration : GetCore()->GetAdaptor()->GetFrameDuration();
}

double RecordManager::GetFrameRate() const {
  return m_bFixedFrameDuration ? 1.0 / m_fixedFrameDuration
                               : GetCore()->GetAdaptor()->GetFrameRate();
}

void RecordManager::SetFixedFrameDuration(double duration) {
  m_bFixedFrameDuration = duration > 0.0;
  if (m_bFixedFrameDuration) m_fixedFrameDuration = duration;
}

int RecordManager::FrameIndex(double t) const {
  return util::frameAtOrBefore(t, GetFrameDuration());
}

double RecordManager::SnapToFrame(double t) const {
  return util::snapToFrame(t, GetFrameDuration());
}

double RecordManager::GetFrameTime() const {
  return (m_bResimulating ? m_resimFrame : m_frame) * GetFrameDuration();
}

// --- begin and end of both kinds of run ---

void RecordManager::BeginTake(const char* undoName) {
  CoreImplementation& core = *GetCore();
  core.GetAdaptor()->BeginUndoBlock(undoName);
  m_bRecording = true;
}

std::vector<Instance*> RecordManager::ListPerformers() {
  CoreImplementation& core = *GetCore();
  std::vector<Instance*> rigs = core.List(true);
  std::map<std::string, std::string> leftOut;  // names of rigs by feature
  const auto isLeftOut = [&](Instance* rig) {
    const std::string feature = rig->GetTool()->GetLicenceName();
    if (core.CheckLicence(feature)) return false;
    std::string& names = leftOut[feature];
    names += (names.empty() ? "" : ", ") + rig->GetInstanceName();
    return true;
  };
  rigs.erase(std::remove_if(rigs.begin(), rigs.end(), isLeftOut), rigs.end());
  for (const auto& [feature, names] : leftOut)
    LogEntry(LogLevel::kWarning, Translate("Left out, with its keys as they are: %1. %2",
                                           {names, core.GetLicensing().WhyNot(feature)}));
  return rigs;
}

bool RecordManager::IsLicensed() {
  CoreImplementation& core = *GetCore();
  const std::vector<Instance*> rigs = core.List(true);
  std::string why;
  for (Instance* rig : rigs) {
    why = core.GetLicensing().WhyNot(rig->GetTool()->GetLicenceName());
    if (why.empty()) break;
  }
  if (why.empty()) {
    core.GetLicensing().NoteUse();
    return true;
  }
  core.MessageBox(Translate("None of the rigs can be performed"), why, kIconWarning);
  return false;
}

void RecordManager::StartInstances(double t) {
  CoreImplementation& core = *GetCore();
  for (Instance* instance : core.List(false)) instance->SetTouched(true);

  const std::vector<Instance*> active = ListPerformers();
  std::vector<CInterface*> filtered(active.begin(), active.end());
  util::ReturnValue<std::vector<CInterface*>> result(filtered);
  core.GetAdaptor()->BeginRecording(t, result);
  m_instances.clear();
  for (Instance* instance : active) {
    CInterface* const asInterface = instance;
    if (std::find(filtered.begin(), filtered.end(), asInterface) != filtered.end())
      m_instances.push_back(instance);
  }

  m_forces.Begin(m_instances);
  m_devices.BeginTake(core);
  for (std::size_t i = 0; i < m_instances.size(); ++i) m_instances[i]->Start(t);
}

void RecordManager::EndTake() {
  CoreImplementation& core = *GetCore();
  core.EndEdit();
  m_forces.Stop(m_instances);
  m_devices.EndTake();
  m_bRecording = false;
  m_bResimulating = false;
  if (MainWindowView* window = core.GetMainWindow()) window->SetRecordState(false);
  core.GetAdaptor()->EndRecording();
  core.GetAdaptor()->EndUndoBlock();
  // What live spinners and the rigs themselves have set in the frames was not told there.
  for (Instance* instance : m_instances) instance->RefreshConfig();
  m_instances.clear();
  TellRunState();
}

RunState RecordManager::GetRunState() const {
  if (m_bResimulating) return RunState::kResimulating;
  if (!m_bRecording) return RunState::kIdle;
  return m_clock < m_startTime ? RunState::kCountdown : RunState::kRecording;
}

void RecordManager::TellRunState() {
  const RunState state = GetRunState();
  if (state == m_toldState) return;
  m_toldState = state;
  GetCore()->GetMessages().Tell(RunStateChanged{state});
}

void RecordManager::Forget(Instance* instance) {
  m_instances.erase(std::remove(m_instances.begin(), m_instances.end(), instance),
                    m_instances.end());
}

// --- a take ---

int RecordManager::StartRecording() {
  if (m_bRecording) return kTakeRunning;
  if (!IsLicensed()) return kNotLicensed;
  CoreImplementation& core = *GetCore();
  const CoreRequest request(core);
  if (beforeTake) beforeTake();
  AdaptorInterface& adaptor = *core.GetAdaptor();
  HideHighPolyModels();
  BeginTake("Record");
  adaptor.PushUndo(new HostTimeUndo(adaptor));
  m_hostTime = adaptor.GetCurrentTime();
  m_startTime = SnapToFrame(m_hostTime);
  double rangeStart = 0.0;
  adaptor.GetTimeRange(rangeStart, m_endTime);
  m_clock = m_startTime;
  m_tickBegin = tickCount();
  m_frame = FrameIndex(m_clock);
  m_inputs.Clear();
  StartInstances(m_startTime);
  if (takeStarted) takeStarted();
  m_bFirstTick = true;

  int countdown = 0;
  core.GetCountdownSeconds(countdown);
  const double ahead = countdown + std::max(m_preRoll, 0.0);
  m_clock -= ahead;
  TellSlowFactor();
  CountdownDialog* const dialog = FindCountdown();
  if (ahead > 0.0 && dialog) {
    dialog->Set(static_cast<int>(std::ceil(ahead)), 0.0);
    dialog->Show();
  }
  StartTimer(kTakeTimer, GetFrameDuration());
  if (MainWindowView* window = core.GetMainWindow()) window->SetRecordState(true);
  TellRunState();
  return 0;
}

void RecordManager::StopRecording() {
  if (!m_bRecording || m_bResimulating) return;
  const MessageQueue::Hold hold(GetCore()->GetMessages());
  HideCountdown();
  KillTimer(kTakeTimer);
  const bool inCountdown = m_clock < m_startTime;
  m_clock = std::max(m_clock, m_startTime);
  const double t = m_frame * GetFrameDuration();
  for (std::size_t i = 0; i < m_instances.size(); ++i) m_instances[i]->Stop(t);
  if (!inCountdown && takeStopped) takeStopped();
  EndTake();
  ShowHighPolyModels();
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  if (inCountdown) adaptor.SetCurrentTime(m_hostTime);
  adaptor.TakeEnded();
  if (!inCountdown && takeEnded) takeEnded();
}

void RecordManager::OnTimer(int id, unsigned elapsedMs) {
  if (id == DevicePolling::kTimer && !m_bRecording) m_devices.Poll(*GetCore());
  if (id != kTakeTimer) return;
  if (m_bFirstTick) {
    m_bFirstTick = false;
    m_lastTick = elapsedMs;
  }
  KillTimer(kTakeTimer);
  if (!m_bRecording || m_bResimulating) return;
  if (!Tick(elapsedMs)) return;

  // Between two ticks the program's event loop runs: the host redraws, and input arrives. A loop
  // within the tick would hold the take up for as long as a menu that is opened there stays open.
  //
  // The two counters have different origins, so this nearly always falls to the floor. That is
  // meant: the take clock alone decides when a frame falls due, not the timer's period.
  double wait = GetFrameDuration() -
                (static_cast<double>(tickCount()) - static_cast<double>(elapsedMs)) / 1000.0;
  if (wait <= 0.0) wait = kMinimumWait;
  if (m_bRecording) StartTimer(kTakeTimer, wait);
}

bool RecordManager::Tick(unsigned elapsedMs) {
  const MessageQueue::Hold hold(GetCore()->GetMessages());
  m_clock += (elapsedMs - m_lastTick) * 0.001 / m_slowFactor;
  m_lastTick = elapsedMs;
  m_tickBegin = tickCount();

  const int target = FrameIndex(m_clock) + 1;
  if (m_clock > m_startTime) HideCountdown();
  TellRunState();
  // A frame falls due when the clock has reached the start. Before that none is used up, so that a
  // take steps the frames that its resimulation steps, wherever it starts.
  const bool isIdle = m_frame >= target || m_clock < m_startTime;
  for (int i = 0; i < kMaxFramesPerTick && m_frame < target && m_clock >= m_startTime; ++i) {
    if (!StepDueFrame(i == 0 ? m_clock : GetClockNow())) return false;
  }
  if (isIdle) {
    NoteInputs(m_clock);
    PlayForces(false);
  }
  m_inputs.DropBefore(std::min(m_clock, GetDue(m_frame + 1)));
  if (m_clock < m_startTime) ShowCountdown();
  GetCore()->GetAdaptor()->SetCurrentTime(m_clock);
  return true;
}

/// When the take's clock asks for a frame: one frame ahead of its own time.
double RecordManager::GetDue(int frame) const {
  return (frame - 1) * GetFrameDuration();
}

bool RecordManager::StepDueFrame(double polledAt) {
  ++m_frame;
  if (!HandleRangeEnd()) return false;
  NoteInputs(polledAt);
  {
    const InputHistory::AsOf inputs(m_inputs, GetDue(m_frame));
    StepInstances(m_frame * GetFrameDuration());
  }
  PlayForces(true);
  if (!IsBeyondTakeLength(m_frame + 1)) return true;
  StopRecording();
  return false;
}

void RecordManager::StepInstances(double t) {
  for (std::size_t i = 0; i < m_instances.size(); ++i) {
    // In a scene of many rigs most of a step is waiting for memory: the next ones' is fetched now.
    if (i + 2 < m_instances.size()) m_instances[i + 2]->Prefetch();
    if (i + 1 < m_instances.size()) m_instances[i + 1]->PrefetchRig();
    m_instances[i]->Step(t);
  }
}

/// The take's clock with what has gone by since the tick began.
double RecordManager::GetClockNow() const {
  return m_clock + (tickCount() - m_tickBegin) * 0.001 / m_slowFactor;
}

void RecordManager::NoteInputs(double clock) {
  m_devices.Poll(*GetCore());
  m_inputs.Note(clock);
}

void RecordManager::PlayForces(bool isFrame) {
  m_forces.Play(GetCore()->GetPreferences(), m_instances, tickCount() * 0.001, isFrame);
}

void RecordManager::PollInputs() {
  if (!m_bRecording || m_bResimulating) return;
  m_devices.Read();
  m_inputs.Note(GetClockNow());
}

bool RecordManager::IsBehind() const {
  return GetRunState() == RunState::kRecording && FrameIndex(GetClockNow()) + 1 > m_frame;
}

std::vector<double> RecordManager::TakeInputAges() {
  const double now = GetClockNow();
  std::vector<double> ages = m_inputs.TakeMoves(GetDue(m_frame));
  for (double& age : ages) age = (now - age) * m_slowFactor * 1000.0;
  return ages;
}

bool RecordManager::HandleRangeEnd() {
  // A take of a told length ends by itself within the range, however late its last frames come.
  const bool endsInRange =
      m_takeLength > 0.0 && m_startTime + m_takeLength <= m_endTime + util::kFrameTolerance;
  if (m_clock < m_endTime || endsInRange) return true;
  CoreImplementation& core = *GetCore();
  bool expand = true;
  if (MainWindowView* window = core.GetMainWindow())
    window->GetCheckBox(kAutoExpandTimeline, expand);
  if (!expand) {
    StopRecording();
    return false;
  }
  if (m_endTime <= 0.0) return true;  // doubling would not bring it forward
  double start = 0.0;
  double end = 0.0;
  core.GetAdaptor()->GetTimeRange(start, end);
  m_endTime *= 2.0;
  core.GetAdaptor()->SetTimeRange(start, m_endTime);
  return true;
}

bool RecordManager::IsBeyondTakeLength(int frame) const {
  return m_takeLength > 0.0 &&
         frame * GetFrameDuration() > m_startTime + m_takeLength + util::kFrameTolerance;
}

CountdownDialog* RecordManager::FindCountdown() {
  UserInterface* const ui = GetCore()->GetUserInterface();
  if (!m_pCountdownDialog && ui) m_pCountdownDialog.reset(ui->CreateCountdownDialog());
  return m_pCountdownDialog.get();
}

void RecordManager::ShowCountdown() {
  if (!m_pCountdownDialog) return;
  const double remaining = m_startTime - m_clock;
  const int seconds = static_cast<int>(remaining + 0.999);
  if (seconds < 1)
    m_pCountdownDialog->Set(1, 0.0);
  else
    m_pCountdownDialog->Set(seconds, remaining - std::floor(remaining));
}

void RecordManager::HideCountdown() {
  if (m_pCountdownDialog) m_pCountdownDialog->Hide();
}

void RecordManager::UserInterfaceChanged() {
  m_pCountdownDialog.reset();
  if (GetRunState() == RunState::kCountdown && FindCountdown()) {
    ShowCountdown();
    m_pCountdownDialog->Show();
  }
  if (MainWindowView* window = GetCore()->GetMainWindow())
    window->SetRecordState(m_bRecording && !m_bResimulating);
  ShowSlowFactor();
  if (m_pResimulateWindow) m_pResimulateWindow->UserInterfaceChanged();
}

// --- "Low poly on record" ---

void RecordManager::HideHighPolyModels() {
  m_hiddenModels.clear();
  CoreImplementation& core = *GetCore();
  bool on = false;
  MainWindowView* window = core.GetMainWindow();
  if (!window || !window->GetCheckBox(kLowPolyOnRecord, on) || !on) return;
  for (Instance* instance : core.List(true)) {
    for (CoreNode* dummy : instance->GetNodes()) {
      std::vector<CoreNode*> models;
      util::ReturnValue<std::vector<CoreNode*>> result(models);
      core.GetAdaptor()->GetModelsUnder(dummy, result);
      if (models.empty()) continue;
      HiddenModels hidden;
      hidden.dummy = dummy;
      hidden.visible.push_back(dummy->IsVisible());
      for (CoreNode* model : models) {
        hidden.visible.push_back(model->IsVisible());
        model->Hide();
      }
      m_hiddenModels.push_back(std::move(hidden));
    }
  }
  core.GetAdaptor()->RefreshViews();
}

void RecordManager::ShowHighPolyModels() {
  if (m_hiddenModels.empty()) return;
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  for (const HiddenModels& hidden : m_hiddenModels) {
    std::vector<CoreNode*> models;
    util::ReturnValue<std::vector<CoreNode*>> result(models);
    adaptor.GetModelsUnder(hidden.dummy, result);
    // Children that came or went: what was noted no longer fits.
    if (hidden.visible.size() != models.size() + 1) continue;
    for (std::size_t i = 0; i < models.size(); ++i) {
      if (hidden.visible[i + 1]) models[i]->Show();
    }
  }
  m_hiddenModels.clear();
  adaptor.RefreshViews();
}

// --- slow factor ---

int RecordManager::GetSlowFactorIndex() const {
  return static_cast<int>(std::floor(std::log(m_slowFactor) / std::log(2.0) + 0.001)) + 1;
}

void RecordManager::SetSlowFactorIndex(int index) {
  m_slowFactor = std::pow(2.0, std::clamp(index, 1, kMostSlow) - 1);
  ShowSlowFactor();
  ShowSlowFactor();  // twice: the spinner's own event would else put the old value back
  TellSlowFactorIndex();
  if (m_bRecording && !m_bResimulating) TellSlowFactor();
}

void RecordManager::TellSlowFactor() {
  constexpr double kMost = 1 << 30;
  GetCore()->GetAdaptor()->SetSlowFactor(static_cast<int>(std::min(m_slowFactor, kMost)));
}

void RecordManager::TellSlowFactorIndex() {
  GetCore()->GetMessages().Tell(SlowFactorChanged{GetSlowFactorIndex()});
}

void RecordManager::ShowSlowFactor() {
  if (MainWindowView* window = GetCore()->GetMainWindow())
    window->SetSpinner(kSlowMotionFactor, GetSlowFactorIndex());
}

// --- a resimulation ---

int RecordManager::Resimulate(double from, double to) {
  if (const int refused = BeginResimulation(from, to)) return refused;
  if (!m_pResimulateWindow) m_pResimulateWindow = std::make_unique<ResimulateWindow>(*this);
  m_pResimulateWindow->Open(m_startTime);
  return 0;
}

int RecordManager::BeginResimulation(double from, double to) {
  if (m_bRecording) return kTakeRunning;
  if (!IsLicensed()) return kNotLicensed;
  const CoreRequest request(*GetCore());
  BeginTake("Resimulating");
  m_bResimulating = true;
  m_startTime = SnapToFrame(from);
  m_endTime = to;
  m_resimFrame = FrameIndex(m_startTime) + 1;  // the frame at the start is not simulated again
  m_resimTime = m_resimFrame * GetFrameDuration();
  m_resimProgress = 0.0f;
  m_savedSlowFactor = m_slowFactor;
  m_slowFactor = 1.0;
  ShowSlowFactor();
  TellSlowFactorIndex();
  StartInstances(m_startTime);
  if (runStarted) runStarted();
  TellRunState();
  return 0;
}

bool RecordManager::StepResimulation() {
  if (!m_bResimulating || !(m_resimTime < m_endTime + util::kFrameTolerance)) return false;
  const MessageQueue::Hold hold(GetCore()->GetMessages());
  const double length = m_endTime - m_startTime;
  if (length > 0.0)
    m_resimProgress =
        static_cast<float>(std::clamp((m_resimTime - m_startTime) / length, 0.0, 1.0));
  StepInstances(m_resimTime);
  ++m_resimFrame;
  m_resimTime = m_resimFrame * GetFrameDuration();
  return true;
}

void RecordManager::EndResimulation() {
  if (!m_bResimulating) return;
  const MessageQueue::Hold hold(GetCore()->GetMessages());
  m_resimProgress = 1.0f;
  for (std::size_t i = 0; i < m_instances.size(); ++i) m_instances[i]->Stop(m_endTime);
  if (runStopped) runStopped();
  m_slowFactor = m_savedSlowFactor;
  EndTake();
  ShowSlowFactor();
  TellSlowFactorIndex();
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  adaptor.SetCurrentTime(m_startTime);
  adaptor.TakeEnded();
  if (runEnded) runEnded();
  if (m_pResimulateWindow) m_pResimulateWindow->Close();
}

}  // namespace orv::rws::core
