// Fitting: a four-wheeler takes the size and place of a user's car, and carries it from then on.
#pragma once

#include <array>
#include <vector>

#include "app/session/anyhost/Problem.h"
#include "plugins/release/4wheelerextended/CarFrame.h"

namespace orv::rws::core {
class CoreNode;
class Instance;
}  // namespace orv::rws::core

namespace orv::app {

/// The kind of rig that can be fitted.
inline constexpr const char* kFittedKind = "4WheelerExt";

/// The user's nodes: the body and, as the driver sees them, the wheels front left, front right,
/// back left and back right.
struct CarModel {
  rws::core::CoreNode* body = nullptr;
  std::array<rws::core::CoreNode*, 4> wheels{};
};

/// What was measured and done.
struct CarFit {
  Problem problem;           ///< why there is no fit; the scene is as it was then
  std::vector<Problem> odd;  ///< what the user should look at, also where there is a problem
  rws::addon::CarFrame frame;
  rws::addon::FourWheels wheels;
  std::array<double, 4> leans{};  ///< of the wheels' axes against the car's (degrees)
  /// Between a wheel and the rig's; null where none is needed.
  std::array<rws::core::CoreNode*, 4> hubs{};
};

/// Why this rig can't be fitted to any car.
Problem CheckFittedRig(rws::core::Instance& rig);

/// Measures the model at the host's time, scales and places the rig over it and hangs the model's
/// nodes under the rig's, where they stay in their place. The rig's own meshes go: they would be
/// seen through the model. One undo step.
CarFit FitCar(rws::core::Instance& rig, const CarModel& model);

}  // namespace orv::app
