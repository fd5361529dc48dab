// Poses that a user gives to nodes.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "util/Quat.h"
#include "util/Vector3.h"

namespace orv::rws::adaptor::headless {
class HeadlessNode;
}

namespace orv::app {

/// A pose relative to the parent; what is not given stays.
struct PlacedPose {
  std::optional<util::Vector3<double>> translation;  ///< m
  std::optional<util::Quat<double>> rotation;
  std::optional<util::Vector3<double>> scale;
};

/// About X first, then about Y, then about Z, each about the parent's own axis.
util::Quat<double> RotationFromDegrees(const util::Vector3<double>& degrees);

/// By which `node` stands where `other` is at `time` (s), turned as it is.
PlacedPose PoseOver(rws::adaptor::headless::HeadlessNode& node,
                    rws::adaptor::headless::HeadlessNode& other, double time);

struct PlacingResult {
  std::string error;               ///< why nothing has changed; empty when it has
  std::vector<std::string> keyed;  ///< properties that have keys, and so got one
};

/// Gives the node a pose: its static one, or for a property with keys a key at `time` (s). One undo
/// step.
PlacingResult PlaceNode(rws::adaptor::headless::HeadlessNode& node, const PlacedPose& pose,
                        double time);

}  // namespace orv::app
