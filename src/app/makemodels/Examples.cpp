#include "Examples.h"

#include <cmath>
#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/InputFile.h"
#include "app/session/anyhost/RunRigs.h"
#include "app/session/anyhost/UndoBlock.h"
#include "app/session/models/RiggedModel.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "util/AtomicFile.h"
#include "util/CMesh.h"
#include "util/CMesh_Box.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

namespace headless = rws::adaptor::headless;
using Vector = util::Vector3<double>;

constexpr double kPi = 3.14159265358979323846;

void Require(const std::string& problem) {
  if (!problem.empty()) throw std::runtime_error(problem);
}

void Require(const Problem& problem) {
  if (problem) throw std::runtime_error(problem.what + ": " + problem.why);
}

/// A grid of `cells` by `cells` squares over `size` (m), as high as `height` tells of x and z.
util::CMesh Ground(double size, int cells, const std::function<double(double, double)>& height) {
  util::CMesh mesh;
  const auto corner = [&](int i) { return size * (double(i) / cells - 0.5); };
  for (int row = 0; row <= cells; ++row)
    for (int column = 0; column <= cells; ++column) {
      const double x = corner(column), z = corner(row);
      mesh.vertices.emplace_back(x, height(x, z), z);
    }
  const auto index = [cells](int row, int column) { return row * (cells + 1) + column; };
  for (int row = 0; row < cells; ++row)
    for (int column = 0; column < cells; ++column)
      for (const int i : {index(row, column), index(row + 1, column), index(row + 1, column + 1),
                          index(row, column), index(row + 1, column + 1), index(row, column + 1)})
        mesh.faces.push_back(i);
  return mesh;
}

/// 0 up to `from`, 1 from `to` on.
double Rise(double from, double to, double x) {
  const double t = std::min(1.0, std::max(0.0, (x - from) / (to - from)));
  return t * t * (3.0 - 2.0 * t);
}

void AddModel(SceneSession& session, const std::string& path, const std::string& ground) {
  const AddedModel added = AddRiggedModel(session, path, {{}, ground});
  Require(added.problem);
}

/// By way of its file, whose floats a take must have begun from to be run again bit for bit.
void Perform(SceneSession& session, const std::string& path, double end) {
  Require(session.Save(path));
  Require(session.Open(path));
  const RunResult run = Resimulate(session.GetCore(), {0.0, end}, Monitor());
  Require(run.began && run.frames > 0 ? "" : "a rig of the examples did not run");
  Require(session.Save(path));
}

void MakeDrive(const std::string& folder) {
  constexpr double kEnd = 14.0;
  SceneSession session;
  session.GetScene().SetRange(0.0, kEnd);
  auto& ground = session.GetScene().AddNode("Hills");
  ground.SetMesh(Ground(480.0, 96, [](double x, double z) {
    const double away = Rise(12.0, 40.0, std::hypot(x, z));
    return away * (1.4 * std::sin(0.085 * z + 0.6 * std::sin(0.03 * x)) + 0.9 * std::sin(0.07 * x) +
                   6.0 * Rise(140.0, 240.0, std::hypot(x, z)));
  }));
  AddModel(session, folder + "/Car.prm", "Hills");
  std::string rows = "time,Car:Gas Pedal (Forw/Backw),Car:Steering Wheel (Right/Left)\n";
  for (int i = 0; i <= static_cast<int>(kEnd * 25.0); ++i) {
    const double time = i / 25.0;
    const double gas = Rise(0.4, 1.6, time) * (0.75 - 0.35 * Rise(5.0, 6.0, time)) *
                       (1.0 - Rise(12.5, 13.5, time));
    const double steer = 0.3 * Rise(3.0, 4.0, time) * std::sin(2.0 * kPi * (time - 3.0) / 6.5);
    rows += util::shortText(time) + "," + util::shortText(std::round(gas * 1e3) / 1e3) + "," +
            util::shortText(std::round(steer * 1e3) / 1e3) + "\n";
  }
  std::string error;
  const std::string path = folder + "/drive.csv";
  util::writeFile(path, rows, &error);
  Require(error);
  InputFile inputs;
  Require(inputs.Load(session.GetCore(), path));
  inputs.PutIntoTracks();
  Perform(session, folder + "/drive.glb", kEnd);
}

void MakeShaky(const std::string& folder) {
  constexpr double kEnd = 10.0;
  SceneSession session;
  auto& scene = session.GetScene();
  scene.SetRange(0.0, kEnd);
  auto& carrier = scene.AddNode("Carrier");
  carrier.SetMesh(util::CMesh_Box(0.6, 0.3, 0.6));
  std::vector<double> times, places;
  for (int i = 0; i <= static_cast<int>(kEnd * 25.0); ++i) {
    const double t = i / 25.0;
    times.push_back(t);
    places.insert(places.end(), {1.2 * t + 0.04 * std::sin(23.0 * t) + 0.03 * std::sin(37.0 * t),
                                 1.6 + 0.06 * std::sin(19.0 * t) + 0.02 * std::sin(53.0 * t),
                                 2.0 * std::sin(0.6 * t) + 0.04 * std::sin(29.0 * t)});
  }
  headless::Channel way(headless::ChannelPath::kTranslation);
  if (!way.SetKeys(times, places)) throw std::runtime_error("the carrier's keys");
  carrier.SetChannel(std::move(way));
  auto& core = session.GetCore();
  if (!core.CreateToolFromFactory("MotionFilterCam", "Calm"))
    throw std::runtime_error("there is no MotionFilterCam");
  Require(core.LoadProfile("Calm", "Smooth Filtering"));
  auto& adaptor = session.GetAdaptor();
  {
    UndoBlock block(adaptor, "Ride");
    auto* camera = adaptor.FindSceneNode("Calm_AttachedCam");
    if (!camera || !camera->SetParent(adaptor.FindSceneNode("Carrier")))
      throw std::runtime_error("the camera can't ride");
    block.Keep();
  }
  scene.Find("Calm_AttachedCam")->SetPose({{0.0, 0.25, 0.0}, {}, {1.0, 1.0, 1.0}});
  Perform(session, folder + "/shaky.glb", kEnd);
}

void MakeRange(const std::string& folder) {
  SceneSession session;
  auto& scene = session.GetScene();
  scene.SetRange(0.0, 10.0);
  scene.AddNode("Range").SetMesh(Ground(160.0, 80, [](double x, double z) {
    return 0.12 * Rise(-8.0, -14.0, z) * (1.0 + std::sin(0.5 * z + 0.4 * x));
  }));
  auto& walls = scene.AddNode("Walls");
  for (int i = 0; i < 3; ++i) {
    auto& wall = scene.AddNode("Wall" + std::to_string(i + 1), &walls);
    wall.SetMesh(util::CMesh_Box(6.0, 3.0, 0.4));
    wall.SetPose({{9.0 * (i - 1), 1.5, -42.0 - 4.0 * (i % 2)}, {}, {1.0, 1.0, 1.0}});
  }
  AddModel(session, folder + "/Tank.prm", "Range");
  auto& adaptor = session.GetAdaptor();
  UndoBlock block(adaptor, "Walls");
  auto* hit = adaptor.FindSceneNode("Cannon_collision");
  if (!hit || !adaptor.FindSceneNode("Walls")->SetParent(hit))
    throw std::runtime_error("the cannon meets no walls");
  block.Keep();
  Require(session.Save(folder + "/tank.glb"));
}

}  // namespace

void MakeExamples(const std::string& folder) {
  MakeDrive(folder);
  MakeShaky(folder);
  MakeRange(folder);
}

}  // namespace orv::app
