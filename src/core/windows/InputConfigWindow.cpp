#include "core/windows/InputConfigWindow.h"

#include <utility>

#include "core/CoreImplementation.h"
#include "core/CoreMessages.h"
#include "core/config/InputConflicts.h"
#include "core/instances/Instance.h"
#include "core/tools/Tool.h"
#include "core/windows/ControlWords.h"
#include "core/windows/InputConfigIds.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "unidevice/Control.h"
#include "unidevice/Property.h"

namespace orv::rws::core::windows {

namespace {

using gui::Translate;
using State = unidevice::ControlFinder::State;
/// Kinds of which two controls make one.
constexpr std::uint32_t kPairs = unidevice::kFiniteControl | unidevice::kInfiniteControl;

}  // namespace

InputConfigWindow::InputConfigWindow(Windows& windows, int row)
    : Window(windows, "InputConfig", "/core/layout/rws_inputconfig.xml"),
      m_row(row),
      m_rows(windows.GetLayout()),
      m_profiles(windows, row, ProfileRequests::Kind::kInputs,
                 [this](const std::string& text) { Tell(text); }),
      m_editor(windows.GetCore(), row, [this](const std::string& text) { Tell(text); }),
      m_calibration(windows) {
  if (const Instance* rig = FindRig()) {
    m_kind = rig->GetTool()->GetDisplayId();
    setName("InputConfig_" + m_kind);
  }
  m_watch.setInterval(kWatchPeriod);
  QObject::connect(&m_watch, &QTimer::timeout, &m_watch,
                   [this] { Look(static_cast<double>(m_clock.elapsed()) / 1000.0); });
}

InputConfigWindow::~InputConfigWindow() {
  if (GetRoot()) m_rows.Release();
}

Instance* InputConfigWindow::FindRig() const {
  return GetCore().FindByIdentity(m_row);
}

unidevice::Property* InputConfigWindow::FindInput() const {
  const Instance* rig = FindRig();
  return rig ? rig->GetProperties().property(m_input) : nullptr;
}

// --- what is shown ---

void InputConfigWindow::OnBuilt() {
  if (gui::Component* profiles = Find(kInputProfiles)) m_profiles.Build(*profiles);
  if (gui::Component* calibration = Find(kInputCalibration)) m_calibration.Build(*calibration);
  m_editor.Build(*GetRoot());
  NoteInputs();
  ShowAll();
}

void InputConfigWindow::OnShown() {
  m_wake = std::make_unique<DevicePolling::Wake>(GetCore());
}

void InputConfigWindow::OnHidden() {
  if (m_finder) EndLooking();
  m_calibration.Cancel();
  m_wake.reset();
}

void InputConfigWindow::OnSettingsChanged() {
  m_profiles.Show(false);
  m_calibration.Show();
  ShowAll();
}

int InputConfigWindow::NoteInputs() {
  auto before = std::move(m_noted);
  m_noted.clear();
  const Instance* rig = FindRig();
  for (int i = 0; rig && i < rig->GetProperties().count(); ++i) {
    const unidevice::Property& input = *rig->GetProperties().property(i);
    m_noted.emplace_back(InputResponse::Of(input), ControlsOf(input));
  }
  before.resize(m_noted.size());
  int changed = 0;
  for (std::size_t i = 0; i < before.size(); ++i)
    if (!(before[i] == m_noted[i])) ++changed;
  return changed;
}

namespace {

std::vector<bool> ArmedInputs(const Instance& rig) {
  std::vector<bool> armed;
  for (int i = 0; i < rig.GetProperties().count(); ++i) armed.push_back(!rig.IsPlayed(i));
  return armed;
}

}  // namespace

void InputConfigWindow::ShowAll() {
  const Instance* rig = FindRig();
  gui::Component* rows = Find(kInputRows);
  if (!rig || !rows) return;
  m_rows.Build(*rows, *rig);
  const bool none = rig->GetProperties().count() == 0;
  SetText(kInputHint, Translate("This rig has no inputs."));
  if (gui::Component* hint = Find(kInputHint)) hint->SetVisible(none);
  if (gui::Component* chosen = Find(kInputChosen)) chosen->SetVisible(!none);
  ShowTitle();
  ShowMappings();
  Choose(m_input);
}

void InputConfigWindow::ShowTitle() {
  const Instance* rig = FindRig();
  if (!rig) return;
  SetText(kInputTitle, rig->GetInstanceName());
  SetTitle(Translate("Inputs of %1", {rig->GetInstanceName()}));
}

void InputConfigWindow::ShowMappings() {
  const Instance* rig = FindRig();
  gui::Component* rows = Find(kInputRows);
  if (!rig || !rows) return;
  const gui::Frozen frozen(*rows);
  m_rows.Refresh(GetCore(), *rig);
  m_rows.RefreshLive(*rig);
  const std::vector<bool> armed = ArmedInputs(*rig);
  const auto count = std::count(armed.begin(), armed.end(), true);
  With<CheckBox>(kInputArmAll, [&](CheckBox& box) {
    box.SetState(count == 0                                        ? CheckState::kOff
                 : static_cast<std::size_t>(count) == armed.size() ? CheckState::kOn
                                                                   : CheckState::kUndetermined);
  });
}

/// A word for one input, or for all of them with -1.
void InputConfigWindow::Arm(int input, bool armed) {
  Instance* rig = FindRig();
  if (!rig) return;
  std::vector<bool> wanted = ArmedInputs(*rig);
  if (input < 0) wanted.assign(wanted.size(), armed);
  if (input >= 0 && static_cast<std::size_t>(input) < wanted.size())
    wanted[static_cast<std::size_t>(input)] = armed;
  Tell(Shown(GetCore().ArmInputs(*rig, wanted)));
  ShowMappings();
}

void InputConfigWindow::Choose(int input) {
  if (m_finder && input != m_input) EndLooking();
  m_input = input;
  m_rows.Choose(input);
  m_editor.Choose(input);
  ShowChosen();
}

std::string InputConfigWindow::WhyLocked() const {
  if (!GetCore().IsResimulating()) return {};
  return Translate("A resimulation runs, which feeds the inputs. Stop it first.");
}

void InputConfigWindow::ShowChosen() {
  const unidevice::Property* input = FindInput();
  if (!input) return;
  SetText(kInputName, Translate(input->name));
  const bool described = input->displayName != input->name;
  SetText(kInputDescription, described ? Translate(input->displayName) : std::string());
  if (gui::Component* description = Find(kInputDescription)) description->SetVisible(described);
  SetText(kInputMapping, MappingWords(*input));
  std::vector<unidevice::ControlChoice> controls = ControlsOf(*input);
  const std::string locked = WhyLocked();
  const std::string looking =
      m_finder ? Translate("A control is looked for. Cancel that first.") : std::string();
  const auto enable = [this, &locked](int id, const std::string& why) {
    const std::string& first = locked.empty() ? why : locked;
    SetEnabled(id, first.empty(), first);
  };
  enable(kInputPress, looking);
  enable(kInputPressPair,
         (input->flags & kPairs) ? looking : Translate("This input takes a single button."));
  enable(kInputUnmap, controls.empty() ? Translate("It is not mapped.") : looking);
  m_editor.SetLocked(locked);
  m_profiles.SetLocked(locked);
  m_calibration.SetControls(std::move(controls));
  ShowTask();
}

void InputConfigWindow::ShowTask() {
  if (gui::Component* task = Find(kInputTask)) task->SetVisible(m_finder.has_value());
  const unidevice::Property* input = FindInput();
  if (!m_finder || !input) return;
  std::string text = Shown(m_finder->text());
  if (m_finder->wantsNegative())
    text = Translate("Found %1.", {ControlWords(m_finder->found()[0].control)}) + " " + text;
  SetText(kInputTaskText, Translate("%1: %2 Escape cancels.", {Translate(input->name), text}));
}

void InputConfigWindow::OnLive() {
  const Instance* rig = FindRig();
  if (!rig) return;
  m_rows.RefreshLive(*rig);
  m_editor.ShowLive();
  m_calibration.ShowLive();
}

void InputConfigWindow::OnCore(const util::Message& message) {
  if (const auto* changed = NewsIn<InputsChanged>(message)) {
    const Instance* rig = FindRig();
    if (rig && rig->GetProperties().count() != m_rows.GetCount()) return ShowAll();
    // Of a drag only the drawing follows each step.
    if (!m_editor.IsDragging()) ShowMappings();
    if (changed->row != m_row) return;
    m_editor.Show();
    if (m_editor.IsDragging()) return;
    // A device that has come back, or the end of a resimulation, is told of all and changes none.
    m_profiles.Show(NoteInputs() > 1);
    ShowChosen();
  } else if (const auto* list = NewsIn<ProfileListChanged>(message)) {
    if (list->tool == m_kind && list->inputs) m_profiles.Show(false);
  } else if (const auto* deleted = NewsIn<RowDeleted>(message)) {
    if (deleted->row == m_row) return GetWindows().Drop(WindowKind::kInputConfig, m_row);
    ShowMappings();
  } else if (NewsIn<DevicesChanged>(message) || NewsIn<CalibrationsChanged>(message)) {
    ShowMappings();
    m_editor.Show();
    ShowChosen();
    m_calibration.Show();
  } else if (NewsIn<RunStateChanged>(message)) {
    if (GetCore().IsRecording()) m_calibration.Cancel();
    if (m_finder && GetCore().IsResimulating()) EndLooking();
    ShowChosen();
    m_calibration.Show();
  } else if (NewsIn<RowRenamed>(message) || NewsIn<RowCreated>(message)) {
    ShowTitle();
    ShowMappings();
  }
}

// --- what the user does ---

void InputConfigWindow::OnComponent(gui::Component& source, util::Message& message) {
  const bool escape = message.id == gui::kMsgCloseRequest && message.param != 0;
  if (escape && (m_finder || m_calibration.IsMeasuring())) {
    gui::DataOf<gui::CloseRequest>(message)->refused = true;
    if (m_finder) {
      EndLooking();
      Tell(Translate("Nothing has changed."));
    }
    return m_calibration.Cancel();
  }
  if (!FindRig() || m_profiles.OnComponent(source, message)) return;
  if (m_calibration.OnComponent(source, message)) {
    // What is moved to be measured is not meant to be mapped.
    if (m_finder && m_calibration.IsMeasuring()) EndLooking();
    return;
  }
  if (m_editor.OnComponent(source, message)) {
    if (message.id == gui::kMsgEditEnd) m_profiles.Show(false);
    return;
  }
  if (message.id == gui::kMsgClicked) OnButton(source.GetId());
  const int row = m_rows.InputOf(source);
  if (message.id == gui::kMsgValueChanged && source.GetId() == kInputArmAll)
    return Arm(-1, message.param != 0);
  if (message.id == gui::kMsgValueChanged && source.GetId() == kInputRowArmed && row >= 0)
    return Arm(row, message.param != 0);
  const bool chosen = message.id == gui::kMsgValueChanged || message.id == gui::kMsgFocusGained;
  if (row < 0 || !chosen || source.GetId() != kInputRowName) return;
  if (row != m_input) Tell({});
  Choose(row);
}

void InputConfigWindow::OnButton(int id) {
  switch (id) {
    case kInputDevices:
      GetWindows().Open(WindowKind::kDevices);
      break;
    case kInputPress:
      BeginLooking(false);
      break;
    case kInputPressPair:
      BeginLooking(true);
      break;
    case kInputUnmap:
      Tell(GetCore().MapInput(*FindRig(), m_input, nullptr));
      break;
    case kInputTaskCancel:
      if (m_finder) EndLooking();
      break;
    default:
      break;
  }
}

// --- mapping by moving ---

void InputConfigWindow::BeginLooking(bool pair) {
  const Instance* rig = FindRig();
  const unidevice::Property* input = FindInput();
  if (!input || !WhyLocked().empty()) return;
  unidevice::ControlFinder::Wish wish;
  wish.kinds = input->flags;
  wish.pair = pair;
  wish.exclude = ControlsTaken(*rig, m_input);
  m_calibration.Cancel();
  Tell({});
  m_finder.emplace(std::move(wish));
  m_search.emplace(GetCore());
  m_clock.start();
  m_watch.start();
  ShowChosen();
  if (gui::Component* cancel = Find(kInputTaskCancel)) cancel->TakeFocus();
}

void InputConfigWindow::Look(double now) {
  if (!m_finder) return;
  const bool wantedNegative = m_finder->wantsNegative();
  const State state = m_finder->look(now);
  if (!m_finder->isOver()) {
    if (m_finder->wantsNegative() != wantedNegative) ShowTask();
    return;
  }
  const std::string text = Shown(m_finder->text());
  const util::xml::Tag tag = m_finder->tag();
  EndLooking();
  Instance* rig = FindRig();
  const std::string problem =
      state == State::kFound && rig ? GetCore().MapInputTo(*rig, m_input, tag) : std::string();
  Tell(problem.empty() ? text : problem);
}

void InputConfigWindow::EndLooking() {
  m_watch.stop();
  m_finder.reset();
  m_search.reset();
  ShowChosen();
  gui::Component* press = IsShown() ? Find(kInputPress) : nullptr;
  if (press) press->TakeFocus();
}

void InputConfigWindow::Tell(const std::string& text) {
  SetText(kInputNotice, text);
  if (gui::Component* notice = Find(kInputNotice)) notice->SetVisible(!text.empty());
}

}  // namespace orv::rws::core::windows
