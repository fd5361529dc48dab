#include "rigs/HostScene.h"

namespace orv::tests {
namespace {

using Vector = HostScene::Vector;
using Matrix = HostScene::Matrix;

struct Link : HostScene {
  explicit Link(const std::string& kind) : HostScene(kind, "Rig", 25.0, rws::addon::AllRigs()) {}

  /// One frame with these inputs held.
  Matrix Pose(const std::map<std::string, double>& held, const std::string& node = "ActuatorMesh") {
    auto& inputs = rig->GetProperties();
    for (int i = 0; i < inputs.count(); ++i) {
      const auto found = held.find(inputs.property(i)->name);
      inputs.property(i)->deadzone = 0.0;
      Feed(inputs.property(i)->name, 1,
           [&](double) { return found == held.end() ? 0.0 : found->second; });
    }
    Resimulate(0, 1);
    return World(node, 1);
  }
};

void ExpectNear(const Vector& a, const Vector& b, const std::string& what) {
  EXPECT_LT((a - b).length(), 1e-12) << what << ": " << a.x << " " << a.y << " " << a.z;
}

TEST(LinkRigs, PositiveInputsMeanForwardRightUpAndTurnsToTheRightAndUp) {
  Link world("DirectInputLink");
  const double c = std::sqrt(0.5);  // half an input is an eighth of a turn by default
  const Vector sight{0, 0, -1};
  const std::tuple<const char*, Vector, Vector> rows[] = {
      {"Forw/Backw Transl", {}, {0, 0, -0.5}}, {"Right/Left Transl", {}, {0.5, 0, 0}},
      {"Up/Down Transl", {}, {0, 0.5, 0}},     {"Yaw (Right/Left)", sight, {c, 0, -c}},
      {"Pitch (Up/Down)", sight, {0, c, -c}},  {"Roll (Right/Left)", {1, 0, 0}, {c, -c, 0}}};
  for (const auto& [input, from, to] : rows)
    ExpectNear(world.Pose({{input, 0.5}}).transformPoint(from), to, input);
  // Pitch turns about the right axis that the yaw has turned; roll leaves the line of sight alone.
  const Matrix all =
      world.Pose({{"Yaw (Right/Left)", 1.0}, {"Pitch (Up/Down)", 0.5}, {"Roll (Right/Left)", 0.7}});
  ExpectNear(all.transformVector(sight), {c, c, 0}, "yaw, then pitch");
  // The camera rides on the actuator.
  EXPECT_EQ(world.World("Camera", 1), world.World("ActuatorMesh", 1));
}

TEST(LinkRigs, AMovedTurnedAndScaledCageCarriesTheMovement) {
  Link world("DirectInputLink");
  world.Find("ActuatorMesh").SetPose({{}, {}, {3.0, 3.0, 3.0}});
  const std::map<std::string, double> inputs{
      {"Forw/Backw Transl", 0.5}, {"Yaw (Right/Left)", 0.3}, {"Roll (Right/Left)", -0.2}};
  const Matrix plain = world.Pose(inputs);
  EXPECT_NEAR(plain.rowLengths().x, 3.0, 1e-12) << "the actuator's own scale stays";

  const rws::adaptor::Trs pose{
      {10.0, 0.0, 1.0}, HostScene::Quat::fromRotationVector({0.3, -1.0, 0.4}), {2.0, 2.0, 2.0}};
  world.Find("RelativeCageMesh").SetPose(pose);
  const Matrix after = world.World("ActuatorMesh", 1), want = Compose(pose) * plain;
  for (const Matrix& is : {after, world.Pose(inputs)})  // moved after a take and before one
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(is[i], want[i], 1e-12) << i;
}

TEST(LinkRigs, TheOneChannelRigsActOnTheChosenAxisAlone) {
  for (int axis = 0; axis < 3; ++axis) {
    Vector unit;
    unit[axis] = 1.0;
    const auto pose = [](const char* kind, int choice, const char* input, double value,
                         const char* node) {
      Link rig(kind);
      rig.Edit("Axis", choice);
      return rig.Pose({{input, value}}, node);
    };
    ExpectNear(pose("1DPositioner", axis, "Position", -0.5, "ActuatorMesh").translation(),
               unit * -0.5, "way");
    const Matrix turned = pose("1DRotator", axis, "Rotation", 1.0, "ActuatorMesh");
    ExpectNear(turned.axisRow(axis), unit, "the axis stays");
    Vector next, last;
    next[(axis + 1) % 3] = last[(axis + 2) % 3] = 1.0;
    ExpectNear(turned.transformVector(next), last, "a quarter turn, right-handed");
    ExpectNear(pose("1DScaler", axis + 1, "Scale", 0.5, "DummyMesh").rowLengths(),
               Vector{1, 1, 1} + unit * 0.5, "one axis");
  }
  Link world("1DScaler");  // does not reach zero nor build up over takes
  for (int take = 0; take < 3; ++take)
    ExpectNear(world.Pose({{"Scale", 1.0}}, "DummyMesh").rowLengths(), {2, 2, 2}, "all axes");
  world.Edit("Scale Maximum", 5.0);
  const Matrix least = world.Pose({{"Scale", -1.0}}, "DummyMesh");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(least[5 * i], 0.001);
}

}  // namespace
}  // namespace orv::tests
