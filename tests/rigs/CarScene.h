// A car on a ground made in code, with scripted pedals.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessSession.h"
#include "adaptor/headless/Scene.h"
#include "core/ConfigElement.h"
#include "core/CoreImplementation.h"
#include "core/Instance.h"
#include "core/Resources.h"
#include "core/UserInterface.h"
#include "plugins/release/all/AllRigs.h"
#include "support/QtApplication.h"
#include "unidevice/Property.h"
#include "util/NumberText.h"

namespace orv::tests {

/// Height of a ground (m) over a place (m).
using Height = std::function<double(double x, double z)>;
/// A control by time (s).
using Control = std::function<double(double t)>;

enum CarInput { kGas, kSteer, kBoost, kAbs, kSkid, kSkidBrake, kGravel, kBurnout, kForce };
/// Tracks of the inputs that a drive uses; the others stay at 0.
using Inputs = std::map<CarInput, Control>;

inline Control Always(double value) {
  return [value](double) { return value; };
}
/// Pressed soon after a take's start, so that the take begins at rest: a pedal that is down in its
/// first frame is taken for the speed at which it begins.
inline Control PressedSoon(double value) {
  return [value](double t) { return t > 0.1 ? value : 0.0; };
}
inline Control Between(double from, double to, double value = 1.0) {
  return [=](double t) { return t >= from && t < to ? value : 0.0; };
}

/// `count` + 1 numbers from one to the other.
inline std::vector<double> Rows(double from, double to, int count) {
  std::vector<double> rows;
  for (int i = 0; i <= count; ++i) rows.push_back(from + (to - from) * i / count);
  return rows;
}

/// The profiles that come with the car.
inline std::vector<std::string> CarProfiles() {
  const std::string folder = ":/data/4wheelerextended/configprofiles";
  std::vector<std::string> names;
  for (const std::string& path : rws::core::ListResources(folder, "ocp"))
    names.push_back(path.substr(folder.size() + 1, path.size() - folder.size() - 5));
  return names;
}

inline double Flat(double, double) {
  return 0.0;
}
/// Gentle hills, some 1.5 m high.
inline double Hills(double x, double z) {
  return 0.9 * std::sin(0.037 * x + 0.3) * std::cos(0.029 * z) +
         0.6 * std::sin(0.081 * x - 0.053 * z);
}
/// A ramp that ends 1.2 m up, 68 m ahead.
inline double Ramp(double, double z) {
  const double d = -z - 60.0;
  return d < 0.0 || d > 8.1 ? 0.0 : 1.2 * std::pow(std::min(d / 8.0, 1.0), 2);
}
inline Height Slope(double degreesAhead, double degreesToTheRight = 0.0) {
  const double ahead = std::tan(degreesAhead * M_PI / 180.0);
  const double right = std::tan(degreesToTheRight * M_PI / 180.0);
  return [=](double x, double z) { return -z * ahead + x * right; };
}

/// A grid over the columns `xs` and the rows `zs`, both rising, seen from above.
inline util::CMesh GridMesh(const Height& height, const std::vector<double>& xs,
                            const std::vector<double>& zs, double scale = 1.0) {
  util::CMesh mesh;
  for (const double z : zs)
    for (const double x : xs) mesh.vertices.push_back({x * scale, height(x, z) * scale, z * scale});
  const int n = static_cast<int>(xs.size()), rows = static_cast<int>(zs.size());
  for (int j = 0; j + 1 < rows; ++j) {
    for (int i = 0; i + 1 < n; ++i) {
      const int a = j * n + i;
      for (const int index : {a, a + n, a + 1, a + 1, a + n, a + n + 1})
        mesh.faces.push_back(index);
    }
  }
  return mesh;
}

/// The car stands at the origin and looks along -Z. Inputs have neither dead zone nor curve, gravel
/// is off and rays are as many as a profile has.
class CarScene : rws::core::UserInterface {
 public:
  using Matrix = util::Matrix<double>;
  using Vector = util::Vector3<double>;
  using Quat = util::Quat<double>;
  using Node = rws::adaptor::headless::SceneNode;
  static constexpr double kScale = 2.7;        ///< of a new car's body (m)
  static constexpr double kRestHeight = 0.54;  ///< of its origin over the wheel bottoms (m)
  static constexpr double kRadius = 2.7 * 0.13 * 0.95;  ///< effective (m)
  static constexpr std::array<const char*, 4> kWheels{"WheelMesh_FL", "WheelMesh_FR",
                                                      "WheelMesh_BL", "WheelMesh_BR"};

  explicit CarScene(double fps = 25.0) : session(rws::addon::AllRigs()) {
    core().runEventQueue = [] {};
    core().SetUserInterface(this);
    scene().setFrameRate(fps);
    scene().setRange(0.0, 10.0);
    rig = core().CreateToolFromFactory("4WheelerExt", "Car");
    if (!rig) throw std::runtime_error("no car");
    for (int i = 0; i < rig->GetProperties().count(); ++i) {
      rig->GetProperties().property(i)->deadzone = 0.0;
      rig->GetProperties().property(i)->exponent = 1.0;
    }
    Edit("Gravel Shake Offset Value", 0);
    Edit("Ray Multiplier", 10);
  }
  ~CarScene() override {
    core().SetUserInterface(nullptr);
    std::remove(m_path.c_str());
  }

  rws::core::CoreImplementation& core() { return session.GetCore(); }
  rws::adaptor::headless::Scene& scene() { return session.GetScene(); }
  double Frame(int i) { return i * core().GetFrameDuration(); }
  int FrameOf(double t) { return core().FrameIndex(t + 1e-6); }

  // --- what a user does before a take ---

  void Edit(const std::string& label, double value) {
    const auto elements = rig->GetConfig().findAll(label);
    EXPECT_EQ(elements.size(), 1u) << label;
    std::string problem;
    for (auto* element : elements)
      EXPECT_TRUE(core().EditParameter(*rig, element->id(), util::exactText(value), problem) &&
                  problem.empty())
          << problem;
  }
  /// One that a driver drives, on glass and anywhere.
  void Apply(const std::string& profile) {
    EXPECT_EQ(core().LoadProfile("Car", profile), "") << profile;
    Edit("Gravel Shake Offset Value", 0);
    Edit("Autonomous Mode", 0);
    Edit("World Avoidance Sphere (scale relative)", 0);
  }
  double Setting(const std::string& label) { return rig->GetConfig().findAll(label)[0]->number(); }
  Node& Find(const std::string& node) {
    Node* const found = scene().find("Car_" + node);
    if (!found) throw std::runtime_error("no node " + node);
    return *found;
  }
  Node& AddGround(const util::CMesh& mesh, const std::string& name = "Ground") {
    Node& ground = scene().addNode(name);
    ground.setMesh(mesh);
    Declare(ground);
    return ground;
  }
  /// Makes a node the ground.
  void Declare(Node& ground) { scene().reparent(Find("GravityDirectionMesh"), &ground, 0.0); }
  /// Puts the wheel bottoms' middle on `place`, the body `scale` times as large as a new one.
  void Place(const Vector& place, const Quat& rotation = Quat(), double scale = 1.0) {
    Find("CarBodyMesh")
        .setPose({place + rotation.rotate({0.0, kRestHeight * scale, 0.0}), rotation,
                  Vector(kScale, kScale, kScale) * scale});
    m_scale = scale;
  }
  /// Stands on the slope's plane at the origin.
  void PlaceOn(const Height& slope, double scale = 1.0) {
    const Vector normal = Vector(-slope(1, 0), 1.0, -slope(0, 1)).normalized();
    const Vector axis = Vector(0, 1, 0).cross(normal);
    const Quat turn = Quat(axis.x, axis.y, axis.z, 1.0 + normal.y).normalized();
    Place({0, slope(0, 0) * scale, 0}, turn, scale);
  }

  // --- takes ---

  void SetInputs(const Inputs& inputs, double end) {
    for (int i = 0; i < rig->GetProperties().count() && i <= kForce; ++i) {
      util::AVar_Linear<double> track;
      const auto found = inputs.find(static_cast<CarInput>(i));
      const Control control = found == inputs.end() ? Always(0.0) : found->second;
      for (int k = 0; k <= FrameOf(end); ++k) track.set(Frame(k), control(Frame(k)));
      rig->SetTrack(i, track);
    }
  }
  /// Frames `first` to `last`; `air` then holds, for each, which wheels are in the air (bits).
  void Resimulate(int first, int last) {
    ASSERT_EQ(core().BeginResimulation(Frame(first), Frame(last)), 0);
    air.resize(static_cast<std::size_t>(last) + 1);
    for (int i = first + 1; core().StepResimulation(); ++i) {
      if (onFrame) onFrame(i);
      int bits = 0;
      for (std::size_t wheel = 0; wheel < 4; ++wheel)
        bits |= (rig->GetOutputs()[3 + wheel]->read() != 0.0) << wheel;
      air.at(static_cast<std::size_t>(i)) = bits;
    }
    core().EndResimulation();
  }
  void Drive(double seconds, const Inputs& inputs) {
    scene().setRange(0.0, seconds);
    SetInputs(inputs, seconds);
    Resimulate(0, FrameOf(seconds));
  }
  void Reopen() {
    std::string error;
    ASSERT_TRUE(session.Save(m_path, error)) << error;
    ASSERT_TRUE(session.Open(m_path, error)) << error;
    rig = core().FindInstance("Car");
    ASSERT_TRUE(rig);
  }

  // --- what came of it ---

  Matrix World(const std::string& node, int frame) { return Find(node).worldMatrix(Frame(frame)); }
  Vector At(const std::string& node, int frame) { return World(node, frame).translation(); }
  /// Direction of a node's axis.
  Vector Axis(const std::string& node, int axis, int frame) {
    return World(node, frame).axisRow(axis).normalized();
  }
  /// All poses of all nodes of the car.
  std::map<std::string, std::vector<Matrix>> Poses(int first, int last) {
    std::map<std::string, std::vector<Matrix>> poses;
    for (auto* node : scene().nodes())
      if (node->name().rfind("Car_", 0) == 0)
        for (int i = first; i <= last; ++i)
          poses[node->name()].push_back(node->worldMatrix(Frame(i)));
    return poses;
  }
  double Radius() const { return kRadius * m_scale; }
  /// Room between a wheel's middle disc and the ground (m), negative where it has entered it. For
  /// moderate slopes.
  double Clearance(std::size_t wheel, int frame, const Height& ground) {
    const Vector centre = At(kWheels[wheel], frame);
    const std::string relocator = "WheelRelocatorMesh" + std::string(kWheels[wheel]).substr(9);
    const Vector ahead = Axis(relocator, 2, frame), up = Axis(relocator, 1, frame);
    double nearest = std::numeric_limits<double>::max();
    for (int k = -20; k <= 20; ++k) {
      const double s = Radius() * k / 20.0;
      double t = 0.0;  // down to the ground
      for (int i = 0; i < 20; ++i) {
        const Vector p = (centre + ahead * s - up * t) / m_scale;
        t += (p.y - ground(p.x, p.z)) * m_scale * up.y;
      }
      nearest = std::min(nearest, std::hypot(t, s) * (t < 0.0 ? -1.0 : 1.0));
    }
    return nearest - Radius();
  }
  int MessageBox(const std::string& title, const std::string& text, unsigned) override {
    messages.push_back(title + ": " + text);
    return 1;
  }

  rws::adaptor::headless::HeadlessSession session;
  rws::core::Instance* rig = nullptr;
  std::vector<std::string> messages;  ///< "title: text" of each box
  std::vector<int> air;
  std::function<void(int frame)> onFrame;

 private:
  double m_scale = 1.0;
  const std::string m_path = testing::TempDir() + "car_" + std::to_string(getpid()) + ".glb";
};

}  // namespace orv::tests
