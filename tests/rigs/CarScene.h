// A car on a ground made in code, with scripted pedals.
#pragma once

#include <array>
#include <limits>

#include "core/services/Resources.h"
#include "rigs/HostScene.h"
#include "support/Grounds.h"

namespace orv::tests {

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

/// The profiles that come with the car.
inline std::vector<std::string> CarProfiles() {
  const std::string folder = ":/data/4wheelerextended/configprofiles";
  std::vector<std::string> names;
  for (const std::string& path : rws::core::ListResources(folder, "ocp"))
    names.push_back(path.substr(folder.size() + 1, path.size() - folder.size() - 5));
  return names;
}

/// The car stands at the origin and looks along -Z. Inputs have neither dead zone nor curve, gravel
/// is off and rays are as many as a profile has.
class CarScene : public HostScene {
 public:
  static constexpr double kScale = 2.7;        ///< of a new car's body (m)
  static constexpr double kRestHeight = 0.54;  ///< of its origin over the wheel bottoms (m)
  static constexpr double kRadius = 2.7 * 0.13 * 0.95;  ///< effective (m)
  static constexpr std::array<const char*, 4> kWheels{"WheelMesh_FL", "WheelMesh_FR",
                                                      "WheelMesh_BL", "WheelMesh_BR"};

  explicit CarScene(double fps = 25.0)
      : HostScene("4WheelerExt", "Car", fps, rws::addon::AllRigs()) {
    scene().SetRange(0.0, 10.0);
    for (int i = 0; i < rig->GetProperties().count(); ++i) {
      rig->GetProperties().property(i)->deadzone = 0.0;
      rig->GetProperties().property(i)->exponent = 1.0;
    }
    Edit("Gravel Shake Offset Value", 0);
    Edit("Ray Multiplier", 10);
  }

  // --- what a user does before a take ---

  /// One that a driver drives, on glass and anywhere.
  void Apply(const std::string& profile) {
    EXPECT_EQ(core().LoadProfile("Car", profile), "") << profile;
    Edit("Gravel Shake Offset Value", 0);
    Edit("Autonomous Mode", 0);
    Edit("World Avoidance Sphere (scale relative)", 0);
  }
  Node& AddGround(const util::CMesh& mesh, const std::string& name = "Ground") {
    return AddAbove("GravityDirectionMesh", mesh, name);
  }
  /// Makes a node the ground.
  void Declare(Node& ground) { scene().Reparent(Find("GravityDirectionMesh"), &ground, 0.0); }
  /// Puts the wheel bottoms' middle on `place`, the body `scale` times as large as a new one.
  void Place(const Vector& place, const Quat& rotation = Quat(), double scale = 1.0) {
    Find("CarBodyMesh")
        .SetPose({place + rotation.rotate({0.0, kRestHeight * scale, 0.0}), rotation,
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
      const auto found = inputs.find(static_cast<CarInput>(i));
      Feed(rig->GetProperties().property(i)->name, FrameOf(end),
           found == inputs.end() ? Always(0.0) : found->second);
    }
  }
  void Drive(double seconds, const Inputs& inputs) {
    scene().SetRange(0.0, seconds);
    SetInputs(inputs, seconds);
    Resimulate(0, FrameOf(seconds));
  }

  // --- what came of it ---

  /// Direction of a node's axis.
  Vector Axis(const std::string& node, int axis, int frame) {
    return World(node, frame).axisRow(axis).normalized();
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

  /// By frame of the last takes, which wheels are in the air (bits).
  std::vector<int> air;

 private:
  void Stepped(int frame) override {
    HostScene::Stepped(frame);
    int bits = 0;
    for (std::size_t wheel = 0; wheel < 4; ++wheel)
      bits |= (rig->GetOutputs()[3 + wheel]->read() != 0.0) << wheel;
    air.resize(std::max(air.size(), static_cast<std::size_t>(frame) + 1));
    air[static_cast<std::size_t>(frame)] = bits;
  }

  double m_scale = 1.0;
};

}  // namespace orv::tests
