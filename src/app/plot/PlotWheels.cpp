#include "app/plot/PlotWheels.h"

#include <array>
#include <cmath>

#include "app/plot/PlotData.h"
#include "app/plot/PlotSubject.h"
#include "core/instances/Instance.h"
#include "util/Angles.h"

namespace orv::app {

using Matrix = util::Matrix<double>;
using Vector = util::Vector3<double>;

namespace {

constexpr std::size_t kMostWheels = 8;  ///< curves that can be told apart in one panel

struct Wheel {
  const char* node;
  const char* name;
};
/// The front ones first.
constexpr std::array<Wheel, 4> kWheels = {{{"WheelMesh_FL", "front left"},
                                           {"WheelMesh_FR", "front right"},
                                           {"WheelMesh_BL", "back left"},
                                           {"WheelMesh_BR", "back right"}}};

Vector AxisOf(const Matrix& pose, int axis) {
  return Vector(pose[4 * axis], pose[4 * axis + 1], pose[4 * axis + 2]).normalized();
}

std::vector<double> TravelOf(const std::vector<Matrix>& wheel, const std::vector<Matrix>& body) {
  std::vector<double> travel;
  for (std::size_t i = 0; i < wheel.size(); ++i) {
    const double height = (wheel[i].translation() - body[i].translation()).dot(AxisOf(body[i], 1));
    travel.push_back(height);
  }
  const double rest = travel.empty() ? 0.0 : travel.front();
  for (double& value : travel) value -= rest;
  return travel;
}

/// Angle of an axle against the body, which no spin changes.
double SteeringOf(const Vector& axle, const Matrix& body) {
  const double across = axle.dot(AxisOf(body, 0));
  const double along = axle.dot(AxisOf(body, 2));
  return across < 0.0 ? std::atan2(-along, -across) : std::atan2(along, across);
}

}  // namespace

std::size_t AddWheels(PlotData& data, const std::vector<PlotSubject>& subjects) {
  PlotPanel steering{"Steering of the front wheels", "degrees", {}, {}};
  PlotPanel travel{"Suspension travel", "m", {}, {}};
  std::size_t left = 0;
  for (const PlotSubject& subject : subjects) {
    const auto* bodyNode = RigNode(*subject.rig, "CarBodyMesh");
    if (!bodyNode || !RigNode(*subject.rig, kWheels[0].node)) continue;
    if (travel.curves.size() >= kMostWheels) {
      ++left;
      continue;
    }
    const std::string rig = subject.rig->GetInstanceName();
    const std::vector<Matrix> body = PosesOf(*bodyNode, data.times);
    std::vector<double> angle(data.times.size());
    double fronts = 0.0;
    for (std::size_t w = 0; w < kWheels.size(); ++w) {
      const auto* node = RigNode(*subject.rig, kWheels[w].node);
      if (!node) continue;
      const std::vector<Matrix> wheel = PosesOf(*node, data.times);
      travel.Add({(subjects.size() > 1 ? rig + " " : "") + kWheels[w].name, data.times,
                  TravelOf(wheel, body)},
                 static_cast<int>(travel.curves.size()));
      if (w >= 2) continue;
      fronts += 1.0;
      for (std::size_t i = 0; i < wheel.size(); ++i)
        angle[i] += SteeringOf(AxisOf(wheel[i], 0), body[i]) * util::kDegreesPerRadian;
    }
    for (double& value : angle) value /= fronts;
    steering.Add(
        {subjects.size() > 1 ? rig : "mean of left and right", data.times, std::move(angle)},
        static_cast<int>(steering.curves.size()));
  }
  if (travel.curves.empty()) return left;
  data.panels.push_back(std::move(steering));
  data.panels.push_back(std::move(travel));
  return left;
}

}  // namespace orv::app
