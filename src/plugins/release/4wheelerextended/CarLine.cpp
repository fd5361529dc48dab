// Where the target of an autonomous car has to stand for the car to drive along a line.
#include <algorithm>
#include <cmath>

#include "core/interface/LineToFollow.h"
#include "plugins/release/4wheelerextended/4wheelerextended_CCarCamObject.h"
#include "util/ResponseFilters.h"

namespace orv::rws::addon {

using Transform = util::QTransform<double>;
using Vector = CCarCam::Vector;

namespace {

constexpr double kStandingStill = 1e-3;  ///< speed (body scales a second) of a car that waits
constexpr double kMostAside = 0.8;       ///< sine of the largest angle to the target
constexpr double kSharpStrength = 2.0;

/// Part of the way that a filter goes in a frame.
double PartOf(double response, double dt) {
  double part = 0.0;
  util::lowPass(part, 1.0, response, 0.0, dt);
  return part;
}

/// How a line moves over a frame.
struct LineMotion {
  double gas = 0.0;  ///< speed (body scales a second), negative backwards
  double yaw = 0.0;  ///< turn to the left (rad)
};

LineMotion MotionOf(const Transform& from, const Transform& to, double scale, double dt) {
  Vector way = from.rotation.conjugate().rotate(to.position - from.position);
  way.y = 0.0;
  const util::Quat<double> turn = to.rotation * from.rotation.conjugate();
  return {(way.z > 0.0 ? -1.0 : 1.0) * way.length() / dt / scale, 2.0 * std::atan2(turn.y, turn.w)};
}

}  // namespace

// `SteerTowards` read backwards: from the speed and the steering that the line asks of the next
// frame to the place that makes the car ask for them. A car that is off the line sees that place
// farther, nearer or aside, and so comes back.
std::vector<Vector> CCarCam::PlaceTargets(const std::vector<Transform>& line, double dt) const {
  const double scale = geometry.scale, gasMaximum = Maximum(kGasPedal);
  const double gasPart = PartOf(m_settings.dFollowAccRespFact, dt);
  const double steeringPart = PartOf(m_settings.dAutoSteeringValueRespFact, dt);
  const double strength = m_settings.dFollowAccelerationMult * 3.5;
  const double radius = m_settings.dIgnoreSphereRadius * scale;
  std::vector<Vector> targets;
  double gas = line.size() > 1 ? MotionOf(line[0], line[1], scale, dt).gas : 0.0, steering = 0.0;
  Vector place{0.0, 0.0, -0.5 * radius};  // against the front; within the sphere the car waits
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (i + 1 < line.size()) {
      const LineMotion next = MotionOf(line[i], line[i + 1], scale, dt);
      const double ahead = util::sign(next.gas);
      double wanted = ahead * std::max(0.0, ahead * (gas + (next.gas - gas) / gasPart));
      if (wanted < 0.0) wanted /= std::max(m_settings.dReverseMaxVelMult, 1e-3);
      gas = std::clamp(next.gas, -gasMaximum, gasMaximum);
      const bool stands = std::abs(next.gas) < kStandingStill;
      // The turn radius' own rule: tan(steering) over the wheel base is the turn over the way.
      const double turned =
          stands
              ? 0.0
              : std::atan((geometry.HalfBase() - GetPivotZ()) * next.yaw / (next.gas * scale * dt));
      const double goal = steering + (turned - steering) / steeringPart;
      steering = turned;
      const double reduction =
          std::abs(gas) * m_settings.dSpeedDependentTurnRadiusReductionFactor * 0.5 + 1.0;
      const double most = m_settings.channels[kSteeringWheel].maximum;
      const double aside =
          most > 0.0 ? std::clamp(ahead * goal * reduction / most, -kMostAside, kMostAside) : 0.0;
      const double along = std::sqrt(1.0 - aside * aside);
      const double distance = radius + std::abs(wanted) * scale / (strength * along);
      place = stands ? Vector(0.0, 0.0, -0.5 * radius)
                     : Vector(aside * distance, 0.0, -ahead * along * distance);
    }
    const Vector front{0.0, 0.0, geometry.HalfBase()};
    targets.push_back(line[i].position + line[i].rotation.rotate(front + place));
  }
  return targets;
}

std::intptr_t CCarCamObject::FollowLine(LineToFollow& asked) {
  asked.lineNode = m_bodyBase.GetName();
  asked.targetNode = m_target.GetName();
  asked.inputs.clear();
  for (const CarChannel channel :
       {kGasPedal, kSteeringWheel, kBooster, kAbsBrake, kSkidding, kSkidBrake, kBurnout})
    if (m_inputs[channel]) asked.inputs.push_back(m_inputs[channel]->name);
  asked.sharp = {{"Autonomous mode follow strength", kSharpStrength},
                 {"Follow Strength Response Factor", 1.0},
                 {"Auto-Steering Response Factor", 1.0}};
  asked.mode = {{"Autonomous Mode", 1.0}};
  if (asked.line.empty()) return 1;
  if (IsFresh())
    ReadGeometry(asked.start);
  else
    cCarCam.geometry = m_memory.geometry;
  asked.size = cCarCam.geometry.scale;
  const double dt = m_pInterface->GetFrameDuration();
  if (asked.line.size() > 1) {
    const double gas = MotionOf(asked.line[0], asked.line[1], asked.size, dt).gas;
    asked.mode.emplace_back("Initital Velocity (% of max)",
                            std::max(0.0, 100.0 * gas / m_settings.channels[kGasPedal].maximum));
  }
  asked.targets = cCarCam.PlaceTargets(asked.line, dt);
  return 1;
}

}  // namespace orv::rws::addon
