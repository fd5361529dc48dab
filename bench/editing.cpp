// A recorded input of the demo's drive, 30 s of a car over its terrain, changed by a hand: the time
// from the move to the keys of the new path, with the one before it dropped. The label is a hash of
// the keys after the last move, the same as after a simulation of all.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string>

#include "Figures.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/InputDrag.h"
#include "app/session/anyhost/InputFile.h"
#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/RunRigs.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/services/DataRoot.h"
#include "support/TempFolder.h"
#include "unidevice/Property.h"

namespace orv::bench {
namespace {

using app::InputDrag;
using rws::core::Instance;

constexpr double kLength = 30.0;  ///< s

/// The drive, performed once.
class Drive {
 public:
  Drive() {
    rws::core::DataRoot::Set(m_folder.path);
    m_session = std::make_unique<app::SceneSession>();
    const std::string file = m_folder.path + "/terrain.glb";
    const std::string make = "python3 " ORV_SOURCE "/examples/make_terrain.py " + file;
    if (std::system(make.c_str()) != 0) problem = make + " fails";
    if (problem.empty()) problem = m_session->Open(file);
    if (!problem.empty()) return;
    auto& core = m_session->GetCore();
    auto& scene = m_session->GetScene();
    scene.SetRange(0.0, kLength);
    rig = core.CreateToolFromFactory("4WheelerExt", {});
    const auto node = [&](const char* name) {
      return scene.Find(rig->GetInstanceName() + "_" + name);
    };
    scene.Reparent(*node("GravityDirectionMesh"), scene.Find("Terrain"), 0.0);
    rws::adaptor::Trs pose = node("CarBodyMesh")->GetPose();
    pose.translation = {0.0, 0.54, 0.0};
    node("CarBodyMesh")->SetPose(pose);
    app::InputFile inputs;
    problem = inputs.Load(core, ORV_SOURCE "/examples/drive_hills.csv");
    inputs.PutIntoTracks();
    m_session->GetAdaptor().ClearUndoHistory();
    if (problem.empty() && !app::Resimulate(core, {0.0, kLength}, app::Monitor()).began)
      problem = "the drive can't be simulated";
  }

  /// The steering with a bump from `time` on, higher with each turn.
  InputDrag::Edited Bent(double time, int turn) const {
    const int steering = 1;
    InputDrag::Edited edited{rig->GetIdentity(), steering, rig->GetTracks()[steering]};
    for (int i = 0; i < 10; ++i) edited.track.set(time + 0.02 * i, 0.3 + 0.001 * turn);
    return edited;
  }

  std::string HashOfKeys() const {
    std::uint64_t hash = 14695981039346656037u;
    for (rws::core::CoreNode* each : rig->GetNodes())
      for (int path = 0; path < 3; ++path) {
        const auto* node = m_session->GetScene().Find(each->GetSceneName());
        const auto* keys = node->GetChannel(static_cast<rws::adaptor::headless::ChannelPath>(path));
        if (!keys) continue;
        for (const double value : keys->GetValues()) {
          std::uint64_t bits = 0;
          std::memcpy(&bits, &value, sizeof bits);
          hash = (hash ^ bits) * 1099511628211u;
        }
      }
    char text[32];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
    return text;
  }

  rws::core::CoreImplementation& GetCore() { return m_session->GetCore(); }

  std::string problem;
  Instance* rig = nullptr;

 private:
  tests::TempFolder m_folder;
  std::unique_ptr<app::SceneSession> m_session;
};

void MovesPedal(benchmark::State& state) {
  const double time = static_cast<double>(state.range(0));
  Drive drive;
  if (!drive.problem.empty()) return state.SkipWithError(drive.problem.c_str());
  InputDrag drag(drive.GetCore());
  Runs runs;
  int turn = 0;
  // Each move is made of the tracks of before the drag.
  std::vector<InputDrag::Edited> moves;
  for (int i = 0; i < 50; ++i) moves.push_back(drive.Bent(time, i));
  for (auto _ : state) {
    const double seconds = Seconds([&] {
      drag.Move({moves[static_cast<std::size_t>(turn++) % moves.size()]});
      drag.Go(std::numeric_limits<double>::infinity());
    });
    runs.Add(seconds * 1000.0);
  }
  state.counters["median_ms"] = runs.Median();
  drag.Move({moves.back()});
  drag.Keep();
  const std::string dragged = drive.HashOfKeys();
  app::Resimulate(drive.GetCore(), {0.0, kLength}, app::Monitor());
  if (drive.HashOfKeys() != dragged) state.SkipWithError("another path than that of all frames");
  state.SetLabel(dragged);
}
BENCHMARK(MovesPedal)->Arg(0)->Arg(15)->Arg(28)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orv::bench
