#include "core/take/Diagnosis.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "core/CoreImplementation.h"
#include "core/UserInterface.h"
#include "core/WindowIds.h"
#include "core/config/InputConflicts.h"
#include "core/host/AdaptorInterface.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "core/interface/CCamera.h"
#include "core/interface/GroundReport.h"
#include "core/services/Translation.h"
#include "core/tools/Tool.h"
#include "unidevice/Control.h"
#include "unidevice/Property.h"
#include "util/NumberText.h"

namespace orv::rws::core {

namespace {

using Kind = Reason::Kind;
using Severity = Reason::Severity;
using util::Sentence;

/// A control that moves by less may as well be shaking.
constexpr double kMovement = 0.02;
/// Of the slow factor: from here on a take is hard to follow.
constexpr int kHighSlowIndex = 4;

std::string Rounded(double value) {
  return util::shortText(std::round(value * 1000.0) / 1000.0);
}

std::string NameOf(const unidevice::ControlChoice& control) {
  return (control.device.empty() ? "any device" : control.device) + ": " + control.type + " " +
         std::to_string(control.index);
}

// --- the take as a whole ---

void AddRange(CoreImplementation& core, std::vector<Reason>& reasons) {
  bool expands = true;
  if (MainWindowView* window = core.GetMainWindow())
    window->GetCheckBox(kAutoExpandTimeline, expands);
  double start = 0.0, end = 0.0;
  AdaptorInterface& adaptor = *core.GetAdaptor();
  adaptor.GetTimeRange(start, end);
  const Severity severity = expands ? Severity::kNote : Severity::kPrevents;
  if (start >= end) {
    reasons.push_back(
        {severity,
         Kind::kRangeEmpty,
         0,
         -1,
         {"The playback range from %1 s to %2 s is empty.", {Rounded(start), Rounded(end)}},
         "Set an end behind its start."});
  } else if (adaptor.GetCurrentTime() >= end) {
    reasons.push_back({severity,
                       Kind::kRangeOver,
                       0,
                       -1,
                       {"The time %1 s is at the end of the playback range, or behind it.",
                        {Rounded(adaptor.GetCurrentTime())}},
                       expands ? "Go back to where the take is to begin; else the range grows."
                               : "Go back to where the take is to begin, or let the range grow."});
  }
}

void AddTake(CoreImplementation& core, std::vector<Reason>& reasons) {
  if (core.List(false).empty())
    reasons.push_back({Severity::kPrevents, Kind::kNoRig, 0, -1, "There is no rig in the scene.",
                       "Add one from the list of tools."});
  const bool running = core.GetRunState() != RunState::kIdle;
  if (running)
    reasons.push_back({Severity::kPrevents, Kind::kRunning, 0, -1,
                       core.GetRunState() == RunState::kResimulating
                           ? "A resimulation runs, so no take can begin."
                           : "A take runs already.",
                       "Stop it first."});
  // A take that runs keeps its range in view itself.
  if (!running) AddRange(core, reasons);
  const int slow = static_cast<RecordManager&>(core).GetSlowFactorIndex();
  if (slow >= kHighSlowIndex)
    reasons.push_back({Severity::kWarning,
                       Kind::kSlow,
                       0,
                       -1,
                       {"Takes run %1 times slower than real time.",
                        {Rounded(static_cast<RecordManager&>(core).GetSlowFactor())}},
                       "Lower the slow factor."});
}

// --- a rig ---

class RigDiagnosis {
 public:
  RigDiagnosis(CoreImplementation& core, Instance& rig, std::vector<Reason>& reasons)
      : m_core(core), m_rig(rig), m_reasons(reasons) {}

  void Run() {
    AddRow();
    if (!m_core.CheckLicence(m_rig.GetTool()->GetLicenceName()))
      Add(Severity::kPrevents, Kind::kNoLicence,
          {"%1 needs a licence that is not there.", {m_rig.GetInstanceName()}},
          "See the licence in the preferences.");
    AddInputs();
    AddGround();
  }

 private:
  void Add(Severity severity, Kind kind, Sentence text, Sentence remedy, int input = -1) {
    m_reasons.push_back(
        {severity, kind, m_rig.GetIdentity(), input, std::move(text), std::move(remedy)});
  }

  void AddRow() {
    const InstanceReference* const row = m_core.FindRow(m_rig.GetIdentity());
    if (!row) return;
    if (!row->IsChecked())
      Add(Severity::kPrevents, Kind::kUnchecked,
          {"%1 is not checked, so it takes no part in takes.", {row->GetLabel()}},
          "Check its row.");
    for (const InstanceReference* group = row->parent; group && group->parent;
         group = group->parent)
      if (!group->IsChecked())
        Add(Severity::kPrevents, Kind::kGroupUnchecked,
            {"%1 stands in the group %2, which is not checked.",
             {row->GetLabel(), group->GetLabel()}},
            "Check the group.");
  }

  bool IsLiveSpinner(const unidevice::Property& input) const {
    const auto& spinners = m_rig.GetLiveSpinners();
    return std::any_of(spinners.begin(), spinners.end(),
                       [&input](const auto& spinner) { return spinner.second == &input; });
  }

  void AddInputs() {
    int own = 0, mapped = 0;
    for (int i = 0; i < m_rig.GetProperties().count(); ++i) {
      const unidevice::Property& input = *m_rig.GetProperties().property(i);
      const auto controls = ControlsOf(input);
      if (!IsLiveSpinner(input)) {
        ++own;
        if (input.control || !controls.empty()) ++mapped;
      }
      if (input.control)
        AddSwallowed(input, i);
      else if (!controls.empty())
        AddAbsent(input, i, controls);
    }
    if (own > 0 && mapped == 0)
      Add(Severity::kWarning, Kind::kNoInput,
          {"No input of %1 is mapped to a control.", {m_rig.GetInstanceName()}},
          "Map one in the input configuration, or load an input profile.");
  }

  void AddAbsent(const unidevice::Property& input, int index,
                 const std::vector<unidevice::ControlChoice>& controls) {
    const auto away = std::find_if(controls.begin(), controls.end(),
                                   [](const auto& control) { return !control.present(); });
    if (away == controls.end()) return;
    Add(Severity::kWarning, Kind::kDeviceAbsent,
        {"%1 of %2 is mapped to %3, which is not there.",
         {Translate(input.name), m_rig.GetInstanceName(), NameOf(*away)}},
        "Plug the device in, or map the input to another control.", index);
  }

  void AddSwallowed(const unidevice::Property& input, int index) {
    const double raw = std::abs(input.raw());
    if (input.deadzone >= 1.0 || input.multiplier == 0.0) {
      Add(Severity::kWarning, Kind::kSwallowed,
          {"%1 of %2 gives nothing, whatever its control does.",
           {Translate(input.name), m_rig.GetInstanceName()}},
          "Set a dead zone below 1 and a multiplier that is not 0.", index);
    } else if (raw > kMovement && raw <= input.deadzone) {
      Add(Severity::kNote, Kind::kSwallowed,
          {"The control of %1 of %2 stands at %3, within the dead zone of %4.",
           {Translate(input.name), m_rig.GetInstanceName(), Rounded(raw), Rounded(input.deadzone)}},
          "Move it further, make the dead zone smaller, or calibrate the control.", index);
    }
  }

  void AddGround() {
    GroundReport ground;
    if (m_rig.GetRig()->Extension(kTellGround, &ground, nullptr) <= 0 || ground.meshes > 0) return;
    Add(Severity::kWarning, Kind::kNoGround,
        {"%1 meets no mesh. %2: %3.",
         {m_rig.GetInstanceName(), Translate(ground.title), Translate(ground.otherwise)}},
        ground.declaredBy.empty()
            ? Sentence("Choose the ground's meshes.")
            : Sentence("Put the ground's meshes below %1.", {ground.declaredBy}));
  }

  CoreImplementation& m_core;
  Instance& m_rig;
  std::vector<Reason>& m_reasons;
};

}  // namespace

std::vector<Reason> Diagnose(CoreImplementation& core) {
  std::vector<Reason> reasons;
  AddTake(core, reasons);
  for (Instance* rig : core.List(false)) RigDiagnosis(core, *rig, reasons).Run();
  return reasons;
}

}  // namespace orv::rws::core
