#include "core/windows/MainWindowTake.h"

#include <algorithm>
#include <cmath>

#include "core/CoreImplementation.h"
#include "core/WindowIds.h"
#include "core/host/AdaptorInterface.h"
#include "core/instances/Instance.h"
#include "core/take/RunStatus.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/MenuIds.h"
#include "core/windows/SceneBrowser.h"
#include "gui/Component.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/CheckBox.h"
#include "gui/componentinterface/Spinner.h"
#include "util/NumberText.h"

namespace orv::rws::core::windows {

namespace {

using namespace gui::componentinterface;
using gui::Translate;

constexpr char kTakeStep[] = "Record";  ///< what a take is called in the list of undo

}  // namespace

// --- what is shown ---

void MainWindowTake::OnBuilt() {
  if (!GetBrowser())
    GetWindow().SetEnabled(kTakeRate, false, Translate("Set the frame rate in the host."));
  ShowTimes();
  ShowSlowFactor();
  ShowState();
}

void MainWindowTake::ShowState() {
  const util::Sentence text = GetRunStatus(GetCore()).text;
  std::string status = util::Sentence::fill(Translate(text.text), text.values);
  if (!m_problem.empty() && GetCore().GetRunState() == RunState::kIdle) status = m_problem;
  const auto [armed, all] = CountArmed();
  if (armed < all && GetCore().GetRunState() != RunState::kResimulating && m_problem.empty())
    status += " " + (GetCore().IsRecording()
                         ? Translate("%1 of %2 inputs are recorded, the others played.",
                                     {std::to_string(armed), std::to_string(all)})
                         : Translate("%1 of %2 inputs will be recorded, the others played.",
                                     {std::to_string(armed), std::to_string(all)}));
  if (status == m_status) return;
  m_status = status;
  GetWindow().SetText(kTakeStatus, status);
}

void MainWindowTake::ShowSlowFactor() {
  const int index = GetCore().GetSlowFactorIndex();
  GetWindow().SetSpinner(kSlowMotionFactor, index);
  const double factor = static_cast<RecordManager&>(GetCore()).GetSlowFactor();
  GetWindow().SetText(kTakeSlowText, index <= 1
                                         ? Translate("real time")
                                         : Translate("%1 x slower", {util::shortText(factor)}));
}

void MainWindowTake::SetSpinnerQuietly(int id, double value) {
  With<Spinner>(id, [value](Spinner& spinner) {
    if (spinner.GetValue() != value && !spinner.IsBeingEdited()) spinner.SetValue(value);
  });
}

void MainWindowTake::ShowTimes() {
  AdaptorInterface* host = GetCore().GetAdaptor();
  if (!host) return;
  double start = 0.0, end = 0.0;
  host->GetTimeRange(start, end);
  SetSpinnerQuietly(kTakeTime, host->GetCurrentTime());
  SetSpinnerQuietly(kTakeFrame, GetCore().FrameIndex(host->GetCurrentTime()));
  SetSpinnerQuietly(kTakeFrom, start);
  SetSpinnerQuietly(kTakeTo, end);
  SetSpinnerQuietly(kTakeRate, host->GetFrameRate());
  With<Spinner>(kTakeTime, [host](Spinner& spinner) {
    const double step = host->GetFrameDuration();
    if (spinner.GetStep() != step) spinner.SetStep(step);
  });
}

void MainWindowTake::OnLive() {
  ShowTimes();
  ShowState();
}

std::pair<int, int> MainWindowTake::CountArmed() const {
  int armed = 0, all = 0;
  for (Instance* rig : GetCore().List(true))
    for (int i = 0; i < rig->GetProperties().count(); ++i, ++all) armed += !rig->IsPlayed(i);
  return {armed, all};
}

std::string MainWindowTake::WhyNoTake() const {
  return Translate(GetCore().WhyNoTake().text);
}

void MainWindowTake::ShowCommands() {
  MainWindowFrame& window = GetWindow();
  const RunState state = GetCore().GetRunState();
  const bool idle = state == RunState::kIdle;
  const bool takes = state == RunState::kCountdown || state == RunState::kRecording;
  const std::string why = WhyNoTake();
  const std::string noRun = Translate("No take or resimulation runs.");
  const auto show = [&](int button, int command, bool can, const std::string& reason) {
    window.SetEnabled(button, can, reason);
    window.ShowCommand(command, can, reason);
  };
  show(kTakeRecord, kCommandRecord, why.empty(), why);
  const auto [armed, all] = CountArmed();
  if (gui::Component* record = window.Find(kTakeRecord))
    record->SetLabel(
        armed < all ? Translate("Re&cord %1 of %2", {std::to_string(armed), std::to_string(all)})
                    : Translate("Re&cord"));
  show(kTakeStop, kCommandStop, !idle, noRun);
  const bool isLast = takes || IsTakeLast();
  show(kTakeRetry, kCommandRetry, takes || (isLast && why.empty()),
       isLast ? why : Translate("The last step is no take."));
  show(kResimulateButton, kCommandResimulate, why.empty(), why);
  const std::string locked = window.WhyLocked();
  for (const int id : {kTakeTime, kTakeFrame, kTakeFrom, kTakeTo})
    window.SetEnabled(id, idle, locked);
  if (GetBrowser()) window.SetEnabled(kTakeRate, idle, locked);
  window.SetEnabled(kSlowMotionFactor, state != RunState::kResimulating, locked);
}

void MainWindowTake::OnCore(const util::Message& message) {
  if (const auto* run = NewsIn<RunStateChanged>(message)) {
    if (run->state != RunState::kIdle) m_problem.clear();
    ShowState();
    ShowTimes();
  } else if (const auto* refused = NewsIn<TakeRefused>(message)) {
    m_problem = Translate(refused->why.text);
    ShowState();
  } else if (NewsIn<SlowFactorChanged>(message)) {
    ShowSlowFactor();
  } else if (NewsIn<TimeChanged>(message)) {
    // In a take the live rounds are enough.
    if (GetCore().GetRunState() == RunState::kIdle) ShowTimes();
  } else if (NewsIn<RowCreated>(message) || NewsIn<RowDeleted>(message) ||
             NewsIn<InputsChanged>(message)) {
    ShowCommands();
    ShowState();
  }
}

// --- what the user does ---

void MainWindowTake::OnComponent(gui::Component& source, util::Message& message) {
  const int id = source.GetId();
  if (message.id == gui::kMsgClicked) {
    if (id == kTakeRecord) OnCommand(kCommandRecord);
    if (id == kTakeStop) OnCommand(kCommandStop);
    if (id == kTakeRetry) OnCommand(kCommandRetry);
    if (id == kResimulateButton) OnCommand(kCommandResimulate);
  }
  const auto* spinner = dynamic_cast<Spinner*>(&source);
  if (message.id != gui::kMsgValueChanged || !spinner) return;
  const double value = spinner->GetValue();
  AdaptorInterface* host = GetCore().GetAdaptor();
  double start = 0.0, end = 0.0;
  host->GetTimeRange(start, end);
  switch (id) {
    case kSlowMotionFactor:
      return GetCore().SetSlowFactorIndex(static_cast<int>(std::lround(value)));
    case kTakeTime:
      return SetTime(value);
    case kTakeFrame:
      return SetTime(std::lround(value) * host->GetFrameDuration());
    case kTakeFrom:
      return SetRange(value, std::max(value, end));
    case kTakeTo:
      return SetRange(std::min(start, value), value);
    case kTakeRate:
      return SetRate(value);
    default:
      return;
  }
}

void MainWindowTake::OnCommand(int command) {
  switch (command) {
    case kCommandRecord:
      if (WhyNoTake().empty()) GetCore().StartRecording();
      break;
    case kCommandStop:
      GetCore().StopRecording();
      break;
    case kCommandRetry:
      Retry();
      break;
    case kCommandResimulate:
      Resimulate();
      break;
    default:
      return;
  }
}

bool MainWindowTake::IsTakeLast() const {
  const SceneBrowser::UndoSteps steps =
      GetBrowser() ? GetBrowser()->GetUndoSteps() : SceneBrowser::UndoSteps();
  return steps.position > 0 && steps.names[steps.position - 1] == kTakeStep;
}

void MainWindowTake::Retry() {
  CoreImplementation& core = GetCore();
  if (core.IsResimulating()) return;
  // One that is stopped before its first frame leaves no step.
  const bool wasLast = IsTakeLast();
  const std::size_t before = GetBrowser() ? GetBrowser()->GetUndoSteps().position : 0;
  const bool runs = core.IsRecording();
  core.StopRecording();
  const std::size_t after = GetBrowser() ? GetBrowser()->GetUndoSteps().position : 1;
  if (runs ? after > before : wasLast) core.Undo();
  if (runs || wasLast) core.StartRecording();
}

void MainWindowTake::Resimulate() {
  if (!WhyNoTake().empty()) return;
  AdaptorInterface* host = GetCore().GetAdaptor();
  double start = 0.0, end = 0.0;
  host->GetTimeRange(start, end);
  const CheckBox* first = Get<CheckBox>(kResimulateFromFirstFrame);
  GetCore().Resimulate(first && first->IsOn() ? start : host->GetCurrentTime(), end);
}

void MainWindowTake::SetTime(double time) {
  if (GetWindow().WhyLocked().empty()) GetCore().GetAdaptor()->SetCurrentTime(time);
  ShowTimes();
}

void MainWindowTake::SetRange(double start, double end) {
  if (GetWindow().WhyLocked().empty()) {
    AdaptorInterface* host = GetCore().GetAdaptor();
    host->BeginUndoBlock("Playback range");
    host->SetTimeRange(start, end);
    host->EndUndoBlock();
  }
  ShowTimes();
}

void MainWindowTake::SetRate(double fps) {
  m_problem = GetBrowser() && GetWindow().WhyLocked().empty() ? GetBrowser()->SetFrameRate(fps)
                                                              : std::string();
  ShowTimes();
  ShowState();
}

}  // namespace orv::rws::core::windows
