// A belt of 60 steps round 4 wheels through the whole engine, beside Bullet's own chain of as many
// plates. Both run in turns within one row over the ground of 100,352 triangles; counters are
// medians of the runs, those that end in _min minima. The label holds a hash of the poses, so that
// a speed-up that changes the answer shows.
#include "BulletBelt.h"
#include "Figures.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessSession.h"
#include "adaptor/headless/Scene.h"
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "plugins/release/all/AllRigs.h"
#include "unidevice/Property.h"

namespace orv::bench {
namespace {

namespace hl = rws::adaptor::headless;

constexpr int kSettling = 25, kFrames = 100;
constexpr double kBeltSpeed = 5.0 * 0.53;  ///< at full input (m/s)

/// A vehicle that is led along -Z over the ground, as fast as its belt runs.
class BeltScene {
 public:
  explicit BeltScene(bool onGround) : session(rws::addon::AllRigs()) {
    auto& scene = session.GetScene();
    scene.SetFrameRate(1.0 / kFrame);
    scene.SetRange(0.0, (kSettling + kFrames) * kFrame);
    hl::SceneNode& ground = scene.AddNode("Ground");
    static const util::CMesh terrain = RollingTerrain(kQuads100k);
    ground.SetMesh(terrain);
    hl::SceneNode& hull = scene.AddNode("Hull");
    Lead(hull, onGround ? 0.0 : 3.0);
    m_belt = session.GetCore().CreateToolFromFactory("CrawlerTracks", "Belt");
    for (const char* button :
         {"Add Wheel", "Add Wheel", "Add Wheel", "Calculate Number of Steps", "Create Track"})
      for (auto* element : m_belt->GetConfig().FindAll(button))
        session.GetCore().PressButton(*m_belt, element->GetId());
    // The Frame stands in the hull as it stood in the world.
    hl::SceneNode& frame = *scene.Find("Belt_Frame");
    scene.Move(frame, &hull);
    if (onGround) scene.Reparent(*scene.Find("Belt_GravityDirection"), &ground, 0.0);
    for (int i = 0; i < m_belt->GetProperties().count(); ++i) {
      if (m_belt->GetProperties().property(i)->name != "Forward/Backward") continue;
      util::AVar_Linear<double> forward;
      forward.set(kFrame, 1.0);
      m_belt->SetTrack(i, forward);
    }
    session.GetAdaptor().ClearUndoHistory();
  }

  /// Milliseconds a frame of a resimulation, behind its first frames.
  double Run() {
    auto& core = session.GetCore();
    core.BeginResimulation(0.0, (kSettling + kFrames) * kFrame);
    for (int i = 0; i < kSettling; ++i) core.StepResimulation();
    const double time = 1e3 * Seconds([&] {
                          while (core.StepResimulation()) {
                          }
                        });
    core.EndResimulation();
    return time / kFrames;
  }
  std::string Check() {
    Hash hash;
    int steps = 0;
    for (hl::SceneNode* node : session.GetScene().GetNodes()) {
      steps += node->GetName().rfind("Belt_step", 0) == 0;
      for (const int frame : {1, kSettling, kSettling + kFrames})
        hash.Add(node->WorldMatrix(frame * kFrame).data(), 16);
    }
    return std::to_string(steps) + " steps, poses " + std::to_string(hash.value);
  }

  hl::HeadlessSession session;

 private:
  /// Keys that keep the wheels' line `above` the ground (m).
  static void Lead(hl::SceneNode& hull, double above) {
    constexpr double kRear = 0.0, kFront = -3.75;
    hl::Channel way(hl::ChannelPath::kTranslation), turn(hl::ChannelPath::kRotation);
    std::vector<double> times, ways, turns;
    for (int i = 0; i <= kSettling + kFrames; ++i) {
      const double z = -kBeltSpeed * i * kFrame;
      const double rear = GroundHeight(0, z + kRear), front = GroundHeight(0, z + kFront);
      const double pitch = std::atan2(front - rear, kRear - kFront);
      times.push_back(i * kFrame);
      for (const double v : {0.0, rear + above, z}) ways.push_back(v);
      for (const double v : {std::sin(pitch / 2), 0.0, 0.0, std::cos(pitch / 2)})
        turns.push_back(v);
    }
    way.SetKeys(times, ways);
    turn.SetKeys(times, turns);
    hull.SetChannel(way);
    hull.SetChannel(turn);
  }

  rws::core::Instance* m_belt = nullptr;
};

void BesideBullet(benchmark::State& state) {
  BulletGround ground(RollingTerrain(kQuads100k));
  Runs bullet, air, ours;
  std::string check;
  for (auto _ : state) {
    BulletBelt peer(ground);
    bool whole = true;
    for (int i = 0; i < kSettling; ++i) whole = peer.Step() && whole;
    bullet.Add(1e3 * Seconds([&] {
                 for (int i = 0; i < kFrames; ++i) whole = peer.Step() && whole;
               }) /
               kFrames);
    if (!whole || peer.Contacts() == 0)
      state.SkipWithError("the peer has lost sub-steps or ground");
    // A process has one core, so one scene after the other.
    {
      BeltScene onGround(true);
      ours.Add(onGround.Run());
      check = onGround.Check();
    }
    air.Add(BeltScene(false).Run());
  }
  bullet.Report(state, "bullet_ms");
  ours.Report(state, "belt_ms");
  air.Report(state, "belt_in_the_air_ms");
  state.counters["belt/bullet"] = ours.Median() / bullet.Median();
  state.SetLabel(check);
}
BENCHMARK(BesideBullet)->Iterations(Turns(9))->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orv::bench
