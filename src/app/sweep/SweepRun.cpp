#include "app/sweep/SweepRun.h"

#include "adaptor/headless/Scene.h"
#include "app/plot/PlotSubject.h"
#include "app/session/SceneRange.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/FrameTimes.h"
#include "app/session/anyhost/InputFile.h"
#include "app/session/anyhost/RunRigs.h"
#include "app/sweep/SweepMeasuring.h"
#include "app/sweep/SweepPick.h"
#include "app/sweep/SweepPlan.h"
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"

namespace orv::app {

namespace {

using rws::core::CoreImplementation;
using rws::core::Instance;

/// What rigs call the number that their chance begins with.
constexpr const char* kSeedLabels[] = {"Random Seed", "Random Seed Adder"};

std::string ApplySeed(CoreImplementation& core, const std::string& value) {
  std::string problem = "no rig has a seed";
  for (Instance* rig : core.List(false)) {
    for (const char* label : kSeedLabels) {
      for (const rws::core::ConfigElement* element : rig->GetConfig().FindAll(label)) {
        problem.clear();
        core.EditParameter(*rig, element->GetId(), value, problem);
        if (!problem.empty()) return rig->GetInstanceName() + ":" + label + ": " + problem;
      }
    }
  }
  return problem;
}

std::string ApplyInputs(CoreImplementation& core, const std::string& path) {
  InputFile file;
  std::string problem = file.Load(core, path);
  if (problem.empty()) file.PutIntoTracks();
  return problem;
}

/// A parameter would be lost under a profile that comes after it.
std::string ApplyAll(SceneSession& session, const SweepPlan& plan, long number) {
  const std::vector<std::string> values = plan.ValuesOf(number);
  using Kind = SweepAxis::Kind;
  for (const Kind kind : {Kind::kProfile, Kind::kInputs, Kind::kSeed, Kind::kParameter}) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (plan.axes[i].kind != kind) continue;
      std::string problem = ApplySweepValue(session, plan.axes[i], values[i]);
      if (!problem.empty()) return problem;
    }
  }
  return {};
}

}  // namespace

std::string ApplySweepValue(SceneSession& session, const SweepAxis& axis,
                            const std::string& value) {
  CoreImplementation& core = session.GetCore();
  if (axis.kind == SweepAxis::Kind::kInputs) return ApplyInputs(core, value);
  if (axis.kind == SweepAxis::Kind::kSeed) return ApplySeed(core, value);
  Instance* rig = core.FindInstance(axis.rig);
  if (!rig) return "there is no rig " + axis.rig;
  if (axis.kind == SweepAxis::Kind::kProfile) {
    const std::string problem = core.LoadProfile(axis.rig, value);
    return problem.empty() ? problem : "profile " + value + ": " + problem;
  }
  std::string problem;  // also told where the value is taken, but not as it stands
  core.EditParameter(*rig, axis.element, value, problem);
  return problem.empty() ? problem : axis.name + ": " + problem;
}

SweepRow RunSweepRow(SceneSession& session, const SweepPlan& plan, long number,
                     const Monitor& monitor) {
  SweepRow row;
  row.number = number;
  row.picked = false;
  row.error = session.Open(plan.scene, plan.clip);
  if (row.error.empty()) row.error = ApplyAll(session, plan, number);
  Instance* const rig = session.GetCore().FindInstance(plan.rig);
  if (row.error.empty() && !rig) row.error = "there is no rig " + plan.rig;
  session.TakeWarnings();  // of a file that the user knows
  if (!row.error.empty()) return row;

  SweepMeasuring measuring(session, *rig, plan.span);
  const RunResult run = Resimulate(session.GetCore(), plan.span, monitor, {},
                                   [&measuring] { measuring.NoteFrame(); });
  if (!run.began) row.error = "the run could not begin";
  if (!run.began || run.cancelled) return row;
  StretchRange(session, plan.span);
  measuring.Finish(plan.near, row);
  SweepPick pick;
  row.picked = plan.pick.empty() || (pick.Parse(plan.pick).empty() && pick.Picks(row));
  return row;
}

}  // namespace orv::app
