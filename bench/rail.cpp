// The camera rail: a whole headless resimulation on curves of both kinds, and the look-up along the
// arc. Each row prints a hash or sum of what came out.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/HeadlessSession.h"
#include "adaptor/headless/Scene.h"
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "plugins/release/all/AllRigs.h"
#include "plugins/release/splinespeedcontroller/CCurve.h"
#include "util/Angles.h"

namespace {

using orv::rws::addon::CCurve;
using orv::rws::core::Instance;
using Vector = orv::util::Vector3<double>;
namespace hl = orv::rws::adaptor::headless;

constexpr double kFrame = 0.04;
constexpr int kFrames = 10000;
constexpr int kPoints = 50;

/// A wavy ring.
Vector RingPoint(int i) {
  const double a = 2 * orv::util::kPi * i / kPoints;
  return {60 * std::cos(a), 3 * std::sin(5 * a), (60 + 4 * std::sin(3 * a)) * std::sin(a)};
}

void Press(hl::HeadlessSession& session, Instance& rig, const char* label) {
  session.GetCore().PressButton(rig, rig.GetConfig().FindAll(label)[0]->GetId());
}

void Edit(hl::HeadlessSession& session, Instance& rig, const char* label, const char* value) {
  std::string problem;
  session.GetCore().EditParameter(rig, rig.GetConfig().FindAll(label)[0]->GetId(), value, problem);
}

Instance& LayOwnCurve(hl::HeadlessSession& session) {
  Instance& rig = *session.GetCore().CreateToolFromFactory("Spline Speed-Controller", "Rail");
  for (int i = 0; i < kPoints; ++i) {
    Press(session, rig, "Create New Waypoint");
    const std::string number = (i < 9 ? "0" : "") + std::to_string(i + 1);
    auto* node = static_cast<hl::HeadlessNode*>(
        session.GetAdaptor().FindSceneNode("Rail_Waypoint" + number));
    orv::util::Matrix<double> pose;
    pose.setTranslation(RingPoint(i));
    node->SetWorldPose(0.0, pose, false);
  }
  session.GetCore().LoadProfile("Rail", "Gravity and Banking");
  Press(session, rig, "Create Curve");
  return rig;
}

Instance& LayHostCurve(hl::HeadlessSession& session) {
  Instance& rig = *session.GetCore().CreateToolFromFactory("Spline Speed-Controller", "Rail");
  hl::SceneNode& path = session.GetScene().AddNode("Path");
  orv::rws::adaptor::Curve curve;
  for (int i = 0; i < kPoints; ++i) curve.points.push_back(RingPoint(i));
  curve.closed = true;
  path.SetCurve(curve);
  session.GetScene().Move(*session.GetScene().Find("Rail_CarriageNode"), &path);
  for (const char* percent : {"0", "40", "70"}) {
    Edit(session, rig, "Waypoint Creation Position (in Percent)", percent);
    Press(session, rig, "Create New Waypoint");
  }
  Edit(session, rig, "Loop", "1");
  return rig;
}

void Resimulate(benchmark::State& state, bool own) {
  hl::HeadlessSession session(orv::rws::addon::AllRigs());
  session.GetScene().SetRange(0.0, kFrames * kFrame);
  own ? LayOwnCurve(session) : LayHostCurve(session);
  auto& core = session.GetCore();
  for (auto _ : state) {
    core.BeginResimulation(0.0, kFrames * kFrame);
    while (core.StepResimulation()) {
    }
    core.EndResimulation();
    state.PauseTiming();
    session.GetAdaptor().ClearUndoHistory();
    state.ResumeTiming();
  }
  state.counters["frames/s"] = benchmark::Counter(static_cast<double>(state.iterations()) * kFrames,
                                                  benchmark::Counter::kIsRate);
  const auto pose = session.GetScene().Find("Rail_CarriageNode")->WorldMatrix(kFrames * kFrame);
  std::uint64_t hash = 14695981039346656037u;
  for (const double number : pose.m)
    hash = (hash ^ static_cast<std::uint64_t>(std::llround(number * 1e6))) * 1099511628211u;
  state.SetLabel("pose " + std::to_string(hash));
}

void CarriageOnOwnCurve(benchmark::State& state) {
  Resimulate(state, true);
}
BENCHMARK(CarriageOnOwnCurve)->Unit(benchmark::kMillisecond);

void CarriageOnHostCurve(benchmark::State& state) {
  Resimulate(state, false);
}
BENCHMARK(CarriageOnHostCurve)->Unit(benchmark::kMillisecond);

/// Look-ups all over the curve, so that no table line is there already.
void ArcLookup(benchmark::State& state) {
  CCurve curve(static_cast<double>(state.range(0)));
  curve.SetClosed(true);
  for (int i = 0; i < kPoints; ++i) curve.AddPoint(RingPoint(i), 1.0, 1.0);
  const std::uint32_t samples = curve.SampleCount();
  double u = 0.0, sum = 0.0;
  for (auto _ : state) {
    u += 0.6180339887498949;
    if (u >= 1.0) u -= 1.0;
    sum += curve.ChordAt(u);
  }
  state.SetLabel(std::to_string(samples) + " samples, mean " +
                 std::to_string(sum / static_cast<double>(state.iterations())));
}
BENCHMARK(ArcLookup)->Arg(1000)->Arg(100000)->Arg(900000);

void CurveRebuild(benchmark::State& state) {
  CCurve curve(static_cast<double>(state.range(0)));
  for (int i = 0; i < kPoints; ++i) curve.AddPoint(RingPoint(i), 1.0, 1.0);
  for (auto _ : state) {
    curve.SetClosed(true);
    benchmark::DoNotOptimize(curve.Length());
  }
  state.SetLabel(std::to_string(curve.SampleCount()) + " samples");
}
BENCHMARK(CurveRebuild)->Arg(1000)->Arg(900000)->Unit(benchmark::kMillisecond);

}  // namespace
