#include <gtest/gtest.h>

#include <cmath>

#include "plugins/release/all/AllRigs.h"
#include "support/FakeInterface.h"
#include "util/QTransform.h"

namespace orv::rws::addon {
namespace {

using tests::FakeWorld;
using tests::Matrix;
using tests::NewWorld;
using Vector = util::Vector3<double>;
using Quat = util::Quat<double>;

void ExpectNear(const Vector& a, const Vector& b, const std::string& what) {
  EXPECT_LT((a - b).length(), 1e-12) << what << ": " << a.x << " " << a.y << " " << a.z;
}

/// One frame with these inputs held.
Matrix Pose(FakeWorld& world, const std::map<std::string, double>& inputs,
            const std::string& node = "ActuatorMesh") {
  for (auto& [name, control] : world.core.controls)
    control->current = inputs.count(name) ? inputs.at(name) : 0.0;
  world.Take(0, 1);
  return world.Node(node).World(0.04);
}

TEST(LinkRigs, PositiveInputsMeanForwardRightUpAndTurnsToTheRightAndUp) {
  NewWorld world("DirectInputLink");
  const double c = std::sqrt(0.5);  // half an input is an eighth of a turn by default
  const Vector sight{0, 0, -1};
  const std::tuple<const char*, Vector, Vector> rows[] = {
      {"Forw/Backw Transl", {}, {0, 0, -0.5}}, {"Right/Left Transl", {}, {0.5, 0, 0}},
      {"Up/Down Transl", {}, {0, 0.5, 0}},     {"Yaw (Right/Left)", sight, {c, 0, -c}},
      {"Pitch (Up/Down)", sight, {0, c, -c}},  {"Roll (Right/Left)", {1, 0, 0}, {c, -c, 0}}};
  for (const auto& [input, from, to] : rows)
    ExpectNear(Pose(world, {{input, 0.5}}).transformPoint(from), to, input);
  // Pitch turns about the right axis that the yaw has turned; roll leaves the line of sight alone.
  const Matrix all = Pose(
      world, {{"Yaw (Right/Left)", 1.0}, {"Pitch (Up/Down)", 0.5}, {"Roll (Right/Left)", 0.7}});
  ExpectNear(all.transformVector(sight), {c, c, 0}, "yaw, then pitch");
  // The camera rides on the actuator.
  EXPECT_EQ(world.Node("Camera").World(0.04), world.Node("ActuatorMesh").World(0.04));
}

TEST(LinkRigs, AMovedTurnedAndScaledCageCarriesTheMovement) {
  NewWorld world("DirectInputLink");
  world.Node("ActuatorMesh").rest.setRowLengths({3.0, 3.0, 3.0});
  const std::map<std::string, double> inputs{
      {"Forw/Backw Transl", 0.5}, {"Yaw (Right/Left)", 0.3}, {"Roll (Right/Left)", -0.2}};
  const Matrix plain = Pose(world, inputs);
  EXPECT_NEAR(plain.rowLengths().x, 3.0, 1e-12) << "the actuator's own scale stays";

  Matrix cage =
      util::QTransform<double>{{10.0, 0.0, 1.0}, Quat::fromRotationVector({0.3, -1.0, 0.4})}
          .toMatrix();
  cage.setRowLengths({2.0, 2.0, 2.0});
  world.Node("RelativeCageMesh").rest = cage;
  const Matrix after = world.Node("ActuatorMesh").World(0.04), want = cage * plain;
  for (const Matrix& pose : {after, Pose(world, inputs)})  // moved after a take and before one
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(pose[i], want[i], 1e-12) << i;
}

TEST(LinkRigs, TheOneChannelRigsActOnTheChosenAxisAlone) {
  for (int axis = 0; axis < 3; ++axis) {
    Vector unit;
    unit[axis] = 1.0;
    NewWorld positioner("1DPositioner");
    *positioner.core.Find("Axis").choice = axis;
    ExpectNear(Pose(positioner, {{"Position", -0.5}}).translation(), unit * -0.5, "way");

    NewWorld rotator("1DRotator");
    *rotator.core.Find("Axis").choice = axis;
    const Matrix turned = Pose(rotator, {{"Rotation", 1.0}});
    ExpectNear(turned.axisRow(axis), unit, "the axis stays");
    Vector next, last;
    next[(axis + 1) % 3] = last[(axis + 2) % 3] = 1.0;
    ExpectNear(turned.transformVector(next), last, "a quarter turn, right-handed");

    NewWorld scaler("1DScaler");
    *scaler.core.Find("Axis").choice = axis + 1;
    ExpectNear(Pose(scaler, {{"Scale", 0.5}}, "DummyMesh").rowLengths(),
               Vector{1, 1, 1} + unit * 0.5, "one axis");
  }
  NewWorld world("1DScaler");  // does not reach zero nor build up over takes
  for (int take = 0; take < 3; ++take)
    ExpectNear(Pose(world, {{"Scale", 1.0}}, "DummyMesh").rowLengths(), {2, 2, 2}, "all axes");
  *world.core.Find("Scale Maximum").number = 5.0;
  const Matrix least = Pose(world, {{"Scale", -1.0}}, "DummyMesh");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(least[5 * i], 0.001);
}

}  // namespace
}  // namespace orv::rws::addon
