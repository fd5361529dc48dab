// A scene whose numbers can be worked out by hand.
#pragma once

#include <cmath>

#include "adaptor/headless/Scene.h"
#include "util/CMesh_Box.h"

namespace orv::tests {

/// A load on a carrier that is turned about Y by a quarter, twice as large and somewhere else.
inline void FillScene(rws::adaptor::headless::Scene& scene) {
  using rws::adaptor::Trs;
  using rws::adaptor::headless::SceneNode;
  SceneNode& carrier = scene.AddNode("Carrier");
  Trs pose;
  pose.translation = {3.0, 1.0, -2.0};
  pose.rotation = {0.0, std::sqrt(0.5), 0.0, std::sqrt(0.5)};
  pose.scale = {2.0, 2.0, 2.0};
  carrier.SetPose(pose);
  SceneNode& load = scene.AddNode("Load", &carrier);
  load.SetMesh(util::CMesh_Box(1.0, 1.0, 1.0));
  pose.translation = {0.25, 0.5, 0.75};
  pose.rotation = util::Quat<double>(0.1, 0.2, 0.3, 0.9).normalized();
  pose.scale = {1.0, 0.5, 0.75};
  load.SetPose(pose);
}

}  // namespace orv::tests
