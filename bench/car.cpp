// The four-wheeler beside Bullet's raycast vehicle, through the whole engine, and its rays beside
// Bullet's. What is compared runs in turns within one row: counters are medians of the runs, those
// that end in _min minima. Labels hold a hash of the poses, so that a speed-up that changes the
// answer shows.
#include <malloc.h>

#include <BulletCollision/NarrowPhaseCollision/btRaycastCallback.h>

#include <fstream>

#include "BulletCar.h"
#include "Child.h"
#include "Figures.h"
#include "PresentCore.h"
#include "RollingTerrain.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/HeadlessSession.h"
#include "adaptor/headless/Scene.h"
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "core/interface/CSnapshot_Mesh.h"
#include "support/RaceTrack.h"

namespace orv::bench {
namespace {

using rws::adaptor::headless::HeadlessSession;
using rws::adaptor::headless::SceneNode;
using rws::core::Instance;

constexpr int kDriveFrames = 250;
constexpr double kRestHeight = 0.54;   ///< of a new car's body over the ground (m)
constexpr double kFullSteering = 0.7;  ///< turn of the front wheels at a steering of 1 (rad)
constexpr int kProfileRays = 10;       ///< ray multiplier of the profile that cars start with

const char kGas[] = "Gas Pedal (Forw/Backw)";
const char kSteering[] = "Steering Wheel (Right/Left)";

const util::CMesh& Terrain100k() {
  static const util::CMesh mesh = RollingTerrain(kQuads100k);
  return mesh;
}

// --- the rig's own step ---

/// Our car alone with its ground, ready to drive.
class StepWorld {
 public:
  explicit StepWorld(int rays) {
    m_rig.reset(tests::Kind("4WheelerExt").CreateObject({1, "4WheelerExt"}));
    m_rig->m_pInterface = &core;
    m_rig->Define();
    m_rig->Create();
    core.groundMesh = &Terrain100k();
    core.present.at("GravityDirectionMesh").parent = &core.ground;
    core.present.at("CarBodyMesh")
        .local.setTranslation(StartPlace(0, 1) + Vector(0.0, kRestHeight, 0.0));
    *core.Find("Ray Multiplier").choice = rays;
    *core.Find("Use Fast Ray Cast").flag = true;
    core.controls.at(kGas)->current = 1.0;
    core.inputs.at(kSteering)->exponent = 1.0;
    m_rig->Start(0.0);
  }
  ~StepWorld() { m_rig->Stop(); }

  void Step(int frame) {
    core.controls.at(kSteering)->current = FrontWheels((frame - 1) * kFrame) / kFullSteering;
    m_rig->Step(frame * kFrame);
  }
  void AddTo(Hash& hash) const {
    for (const auto& [name, node] : core.present) hash.Add(node.World().data(), 16);
  }

  PresentCore core;

 private:
  std::unique_ptr<rws::CCamera, tests::FakeWorld::End> m_rig;
};

/// Microseconds a frame of one drive.
template <class Car>
double Drive(Car& car) {
  return Seconds([&] {
           for (int frame = 1; frame <= kDriveFrames; ++frame) car.Step(frame);
         }) /
         kDriveFrames * 1e6;
}

/// "poses" and the hash of a drive, with the way that the car makes in it.
std::string Check(int rays) {
  StepWorld world(rays);
  Hash hash;
  for (int frame = 1; frame <= kDriveFrames; ++frame) {
    world.Step(frame);
    world.AddTo(hash);
  }
  const Vector at = world.core.present.at("CarBodyMesh").World().translation();
  const double way = (at - StartPlace(0, 1)).length();
  return std::to_string(rays) + " rays: " + std::to_string(static_cast<int>(way)) + " m, poses " +
         std::to_string(hash.value) + " ";
}

void StepBesideBullet(benchmark::State& state) {
  BulletGround ground(Terrain100k());
  StepWorld keepsTheShape(1);
  Runs bullet, centre, full;
  for (auto _ : state) {
    BulletCar peer(ground);
    bullet.Add(Seconds([&] {
                 for (int i = 0; i < kDriveFrames; ++i) peer.Step(i * kFrame);
               }) /
               kDriveFrames * 1e6);
    if (peer.Touching() == 0) state.SkipWithError("the peer has left the ground");
    StepWorld one(1), all(kProfileRays);
    centre.Add(Drive(one));
    full.Add(Drive(all));
  }
  bullet.Report(state, "bullet_us");
  centre.Report(state, "centre_ray_us");
  full.Report(state, "all_rays_us");
  state.counters["centre_ray/bullet"] = centre.Median() / bullet.Median();
  state.counters["all_rays/bullet"] = full.Median() / bullet.Median();
  state.SetLabel(Check(1) + Check(kProfileRays));
}
BENCHMARK(StepBesideBullet)->Iterations(Turns(31))->Unit(benchmark::kMillisecond);

// --- the whole engine ---

/// A scene with the ground and `cars` cars that have been driven for `frames` frames. A single car
/// goes round in a circle for ever.
class CarScene {
 public:
  /// The terrain as one mesh for fast rays, for rays through the host, or cut up for these.
  enum class Ground { kFast, kOne, kMany };

  CarScene(int cars, int frames, Ground kind = Ground::kFast)
      : session(rws::addon::AllRigs()), m_frames(frames), m_fast(kind == Ground::kFast) {
    auto& scene = session.GetScene();
    scene.SetRange(0.0, frames * kFrame);
    SceneNode& ground =
        kind == Ground::kMany ? tests::AddRaceTrack(scene, Terrain100k()) : scene.AddNode("Ground");
    if (kind != Ground::kMany) ground.SetMesh(Terrain100k());
    for (int i = 0; i < cars; ++i) AddCar(ground, StartPlace(i, cars));
    session.GetAdaptor().ClearUndoHistory();
  }

  /// Wall seconds of a resimulation, and of its frames alone.
  struct Times {
    double whole = 0.0, frames = 0.0;
  };
  Times Run() {
    auto& core = session.GetCore();
    Times times;
    times.whole = Seconds([&] {
      core.BeginResimulation(0.0, m_frames * kFrame);
      times.frames = Seconds([&] {
        while (core.StepResimulation()) {
        }
      });
      core.EndResimulation();
    });
    return times;
  }
  std::uint64_t HashPoses() {
    Hash hash;
    for (SceneNode* node : session.GetScene().GetNodes())
      for (const int frame : {1, m_frames / 2, m_frames})
        hash.Add(node->WorldMatrix(frame * kFrame).data(), 16);
    return hash.value;
  }

  HeadlessSession session;

 private:
  void AddCar(SceneNode& ground, const Vector& place) {
    auto& scene = session.GetScene();
    Instance* const rig = session.GetCore().CreateToolFromFactory("4WheelerExt", {});
    const auto node = [&](const char* name) -> SceneNode& {
      return *scene.Find(rig->GetInstanceName() + "_" + name);
    };
    scene.Reparent(node("GravityDirectionMesh"), &ground, 0.0);
    rws::adaptor::Trs pose = node("CarBodyMesh").GetPose();
    pose.translation = place + Vector(0.0, kRestHeight, 0.0);
    node("CarBodyMesh").SetPose(pose);
    for (const auto& [label, value] : {std::pair{"Ray Multiplier", double{kProfileRays}},
                                       {"Use Fast Ray Cast", m_fast ? 1.0 : 0.0}})
      for (auto* element : rig->GetConfig().FindAll(label)) {
        element->SetNumber(value);
        element->Apply();
      }
    auto& tracks = rig->GetTracks();
    tracks.resize(static_cast<std::size_t>(rig->GetProperties().count()));
    for (std::size_t i = 0; i < tracks.size(); ++i) {
      const std::string& name = rig->GetProperties().entries[i].first;
      rig->GetProperties().property(static_cast<int>(i))->exponent = 1.0;
      for (int frame = 1; frame <= m_frames; ++frame) {
        const double time = frame * kFrame;
        if (name == kGas) tracks[i].set(time, 1.0);
        if (name == kSteering) tracks[i].set(time, (0.1 + FrontWheels(time)) / kFullSteering);
      }
    }
  }

  int m_frames;
  bool m_fast;
};

void ResimulateCar(benchmark::State& state) {
  constexpr int kFrames = 10000;
  CarScene scene(1, kFrames);
  Runs whole, stepping;
  for (auto _ : state) {
    const CarScene::Times times = scene.Run();
    whole.Add(times.whole / kFrames * 1e6);
    stepping.Add(times.frames / kFrames * 1e6);
    scene.session.GetAdaptor().ClearUndoHistory();
  }
  whole.Report(state, "whole_us");
  stepping.Report(state, "frame_us");
  state.counters["frames_per_s"] = 1e6 / whole.Median();
  state.SetLabel("poses " + std::to_string(scene.HashPoses()));
}
BENCHMARK(ResimulateCar)->Iterations(Turns(11))->Unit(benchmark::kMillisecond);

/// Each run in a new scene, since there is one core at a time.
///
/// What keeps frame_ratio from 1.2: all cars are stepped in each frame, since each may follow the
/// one before it, so what one car reads and writes (some 370 lines of 64 bytes: 20 keyed nodes of
/// about six lines each with their holds, 28 lines of new samples and 22 of the car's memory, its
/// own state, its inputs, Bullet's world and the triangles below it) comes back into the caches a
/// hundred times a frame, and 2.3 MB do not fit into a second level of 2 MB.
/// By cachegrind 368 of a car's and frame's accesses miss such a cache, and 50 of a single car's,
/// all but 3 of which are writes of what a take keeps. The last level's misses are these writes
/// too, 44 of a single car that drives for 2000 frames and 48 of each of a hundred; a short take of
/// one car shows fewer, since its memory was in use before.
void HundredCars(benchmark::State& state) {
  constexpr int kCars = 100;
  Runs one, each, oneFrame, eachFrame;
  std::uint64_t poses = 0;
  for (auto _ : state) {
    for (const int cars : {1, kCars}) {
      CarScene scene(cars, kDriveFrames);
      const CarScene::Times times = scene.Run();
      const double toEach = 1e6 / kDriveFrames / cars;
      (cars == 1 ? one : each).Add(times.whole * toEach);
      (cars == 1 ? oneFrame : eachFrame).Add(times.frames * toEach);
      if (cars == kCars) poses = scene.HashPoses();
    }
  }
  one.Report(state, "whole_single_us");
  each.Report(state, "whole_of_100_us");
  oneFrame.Report(state, "frame_single_us");
  eachFrame.Report(state, "frame_of_100_us");
  state.counters["whole_ratio"] = each.Median() / one.Median();
  state.counters["frame_ratio"] = eachFrame.Median() / oneFrame.Median();
  state.SetLabel("poses " + std::to_string(poses));
}
BENCHMARK(HundredCars)->Iterations(Turns(7))->Unit(benchmark::kMillisecond);

/// One car on a track of 544 meshes below one node, beside one mesh of the same triangles: with the
/// capture, and the frames alone.
void ManyMeshesBesideOne(benchmark::State& state) {
  Runs one, many, oneFrame, manyFrame;
  Vector ends[2];
  for (auto _ : state)
    for (const auto ground : {CarScene::Ground::kOne, CarScene::Ground::kMany}) {
      const bool isOne = ground == CarScene::Ground::kOne;
      CarScene scene(1, 4 * kDriveFrames, ground);
      const CarScene::Times times = scene.Run();
      const double toFrame = 1e6 / (4 * kDriveFrames);
      (isOne ? one : many).Add(times.whole * toFrame);
      (isOne ? oneFrame : manyFrame).Add(times.frames * toFrame);
      for (SceneNode* node : scene.session.GetScene().GetNodes())
        if (node->GetName().find("CarBodyMesh") != std::string::npos)
          ends[isOne ? 0 : 1] = node->WorldMatrix(4 * kDriveFrames * kFrame).translation();
    }
  if (!((ends[0] - ends[1]).length() < 1e-3)) state.SkipWithError("the drives differ");
  one.Report(state, "one_us");
  many.Report(state, "many_us");
  state.counters["many/one"] = many.Median() / one.Median();
  state.counters["frames_many/one"] = manyFrame.Median() / oneFrame.Median();
}
BENCHMARK(ManyMeshesBesideOne)->Iterations(9)->Unit(benchmark::kMillisecond);

// --- memory ---

/// A line of the process' own status (MB).
double StatusMegabytes(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    double kilobytes = 0.0;
    if (word == name + ":" && status >> kilobytes) return kilobytes * 1024.0 / 1e6;
  }
  return -1.0;
}

/// Rise of the peak over the open scene while a take of one car runs (MB).
double TakeMemory() {
  CarScene scene(1, 10000);
  malloc_trim(0);
  const double before = StatusMegabytes("VmRSS");
  std::ofstream("/proc/self/clear_refs") << 5;  // the peak begins anew
  scene.Run();
  return StatusMegabytes("VmHWM") - before;
}

void MemoryOfTake(benchmark::State& state) {
  std::optional<double> rise;
  for (auto _ : state)
    if (!(rise = InChild(TakeMemory))) state.SkipWithError("the take failed");
  state.counters["peak_rise_MB"] = rise.value_or(-1.0);
}
BENCHMARK(MemoryOfTake)->Iterations(1)->Unit(benchmark::kMillisecond);

// --- rays ---

struct Closest : btTriangleRaycastCallback {
  using btTriangleRaycastCallback::btTriangleRaycastCallback;
  btScalar reportHit(const btVector3&, btScalar fraction, int, int) override {
    return m_hitFraction = fraction;
  }
};

/// The host's caster as a rig uses it, one snapshot for the four wheels of a frame.
void CastWithHost(rws::adaptor::headless::HeadlessNode& ground, const std::vector<Vector>& origins,
                  double length, std::vector<double>& distances) {
  for (std::size_t i = 0; i < origins.size(); i += 4) {
    rws::CSnapshot_Mesh* const snapshot = ground.GetSnapshotMesh(0.0);
    for (std::size_t k = i; k < i + 4; ++k) {
      rws::RayHit hit;
      distances[k] =
          snapshot->Intersect(origins[k], {0.0, -1.0, 0.0}, length, hit) ? hit.distance : -1.0;
    }
    ground.ReleaseSnapshot(snapshot);
  }
}

void CastWithBullet(BulletGround& ground, const std::vector<Vector>& origins, double length,
                    std::vector<double>& distances) {
  for (std::size_t i = 0; i < origins.size(); ++i) {
    const btVector3 from(origins[i].x, origins[i].y, origins[i].z);
    const btVector3 to = from - btVector3(0.0, length, 0.0);
    Closest closest(from, to);
    ground.shape->performRaycast(&closest, from, to);
    distances[i] = closest.m_hitFraction * length;
  }
}

void HostRaysBesideBullet(benchmark::State& state) {
  constexpr double kLength = 10.0;
  const util::CMesh mesh = RollingTerrain(kQuads1M);
  const std::vector<Vector> origins = PathOrigins(200000);
  BulletGround bullet(mesh);
  HeadlessSession session(rws::addon::AllRigs());
  session.GetScene().AddNode("Ground").SetMesh(mesh);
  auto& ground = *session.GetAdaptor().FindSceneNode("Ground");
  std::vector<double> theirDistances(origins.size()), ourDistances(origins.size());
  CastWithHost(ground, origins, kLength, ourDistances);  // builds the tree
  Runs theirs, ours;
  const double toNs = 1e9 / static_cast<double>(origins.size());
  for (auto _ : state) {
    theirs.Add(toNs * Seconds([&] { CastWithBullet(bullet, origins, kLength, theirDistances); }));
    ours.Add(toNs * Seconds([&] { CastWithHost(ground, origins, kLength, ourDistances); }));
  }
  double farthest = 0.0;
  for (std::size_t i = 0; i < origins.size(); ++i)
    farthest = std::max(farthest, std::abs(ourDistances[i] - theirDistances[i]));
  // Bullet lets a triangle reach a little over its edges.
  if (!(farthest < 1e-5)) state.SkipWithError("the hits differ");
  theirs.Report(state, "bullet_ns");
  ours.Report(state, "host_ns");
  state.counters["host/bullet"] = ours.Median() / theirs.Median();
  Hash hash;
  hash.Add(ourDistances.data(), ourDistances.size());
  state.SetLabel("hits " + std::to_string(hash.value));
}
BENCHMARK(HostRaysBesideBullet)->Iterations(Turns(15))->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orv::bench
