// Dragged nodes against what the command line's `place` makes of them.
#include "app/studio/NodeManipulation.h"

#include "adaptor/headless/HeadlessDocument.h"
#include "adaptor/headless/HeadlessNode.h"
#include "app/session/NodePlacing.h"
#include "app/session/anyhost/RigPlacing.h"
#include "app/studio/HeadlessBrowser.h"
#include "app/studio/view/manipulator/Manipulator.h"
#include "core/instances/Instance.h"
#include "studio/LoadedScene.h"
#include "support/WindowsTest.h"
#include "util/CMesh_Box.h"

namespace orv::tests {

namespace {

namespace view = app::view;
using rws::adaptor::Trs;
using rws::adaptor::headless::ChannelPath;
using rws::adaptor::headless::Scene;
using rws::adaptor::headless::SceneNode;
using Vector = util::Vector3<double>;

void ExpectEqual(const SceneNode& a, const SceneNode& b, double time) {
  const Trs one = a.LocalTrs(time), other = b.LocalTrs(time);
  EXPECT_LT((one.translation - other.translation).length(), 1e-12);
  EXPECT_LT((one.scale - other.scale).length(), 1e-12);
  const auto& p = one.rotation;
  const auto& q = other.rotation;
  EXPECT_NEAR(std::abs(p.x * q.x + p.y * q.y + p.z * q.z + p.w * q.w), 1.0, 1e-12);
  EXPECT_LT((p.rotate({1, 2, 3}) - q.rotate({1, 2, 3})).length(), 1e-12);
}

class NodeManipulation : public WindowsTest {
 protected:
  NodeManipulation() {
    FillScene(session.GetScene());
    browser.GetNodes();  // which numbers them
  }

  void Select(std::initializer_list<const char*> names) {
    std::vector<int> keys;
    for (const char* name : names) keys.push_back(browser.GetKey(*session.GetScene().Find(name)));
    browser.Select(keys);
    hands.SetView({}, 1.0, 1.0);
  }
  std::string Type(view::Tool tool, int axis, const char* text) {
    EXPECT_TRUE(hands.Begin(tool, {}));
    if (axis >= 0) hands.Lock(view::Constraint::Kind::kAxis, axis);
    for (; *text; ++text) hands.Type(*text);
    return hands.Finish();
  }

  app::HeadlessBrowser browser{core, session.GetAdaptor(), [](double) { return std::string(); }};
  view::SceneFrames frames{session.GetAdaptor()};
  app::NodeManipulation nodes{core, session.GetAdaptor(), browser, frames};
  view::Manipulator hands{nodes};
};

}  // namespace

TEST_F(NodeManipulation, EqualsPlaceAndIsOneStepOfUndo) {
  SceneNode& load = *session.GetScene().Find("Load");
  // The same by the command line's way, with numbers worked out by hand: the world's X is the
  // carrier's Z, and half as long there.
  rws::adaptor::headless::HeadlessDocument other;
  FillScene(other.GetScene());
  const auto place = [&](const app::PlacedPose& pose, double time) {
    return app::PlaceNode(*other.GetAdaptor().FindSceneNode("Load"), pose, time);
  };
  const auto steps = [&] { return browser.GetUndoSteps(); };
  const Trs before = load.LocalTrs(0.0);
  Select({"Load"});
  EXPECT_EQ(Type(view::Tool::kMove, 0, "1,5"), "");
  place({before.translation + Vector(0.0, 0.0, 0.75), {}, {}}, 0.0);
  ExpectEqual(load, *other.GetScene().Find("Load"), 0.0);
  EXPECT_EQ(steps().names, std::vector<std::string>{"Move #Load"});
  ASSERT_TRUE(core.Undo());
  EXPECT_EQ(load.LocalTrs(0.0), before);
  // What is let go of leaves even what can be redone.
  hands.SetView({}, 1.0, 1.0);
  ASSERT_TRUE(hands.Begin(view::Tool::kTurn, {}));
  hands.Type('9');
  hands.Cancel();
  EXPECT_EQ(load.LocalTrs(0.0), before);
  EXPECT_EQ(steps().names.size(), 1u);
  ASSERT_TRUE(core.Redo());

  EXPECT_EQ(Type(view::Tool::kTurn, 1, "30"), "");
  EXPECT_EQ(Type(view::Tool::kScale, -1, "1.25"), "");
  place({{}, before.rotation * app::RotationFromDegrees({0, 30, 0}), before.scale * 1.25}, 0.0);
  ExpectEqual(load, *other.GetScene().Find("Load"), 0.0);
  EXPECT_EQ(steps().position, 3u);

  // Only what is moved and has keys gets one.
  for (Scene* scene : {&session.GetScene(), &other.GetScene()}) {
    scene->Find("Load")->ReplaceKeys(ChannelPath::kTranslation, 0, 9, {0, 1}, {0, 0, 0, 1, 1, 1},
                                     0.04);
    scene->Find("Load")->ReplaceKeys(ChannelPath::kScale, 0, 9, {0, 1}, {1, 1, 1, 2, 2, 2}, 0.04);
  }
  session.GetAdaptor().SetCurrentTime(0.52);
  hands.SetView({}, 1.0, 1.0);
  EXPECT_EQ(Type(view::Tool::kMove, 1, "-2"), "");
  EXPECT_NE(nodes.TakeNote().find("0.52"), std::string::npos);
  place({Vector(0.52, -0.48, 0.52), {}, {}}, 0.52);
  for (const double time : {0.0, 0.3, 0.52, 0.7, 1.0})
    ExpectEqual(load, *other.GetScene().Find("Load"), time);
  EXPECT_EQ(load.GetChannel(ChannelPath::kTranslation)->GetKeyCount(), 3u);
  EXPECT_EQ(load.GetChannel(ChannelPath::kScale)->GetKeyCount(), 2u);

  // A take takes the hands away, and what was tried with it.
  ASSERT_TRUE(core.CreateToolFromFactory("SteadyCam", "Cam"));
  hands.SetView({}, 1.0, 1.0);
  ASSERT_TRUE(hands.Begin(view::Tool::kMove, {}));
  core.StartRecording();
  hands.SetView({}, 1.0, 1.0);
  EXPECT_FALSE(hands.IsDragging() || hands.Begin(view::Tool::kMove, {}));
  EXPECT_NE(nodes.DropToGround(), "");
  core.StopRecording();
}

TEST_F(NodeManipulation, MovesManyAndDropsThemOntoWhatLiesBelow) {
  Scene& scene = session.GetScene();
  // A slope: y = 0.5 x, as seen from nodes of any place.
  util::CMesh slope;
  slope.vertices = {{-100, -50, -100}, {100, 50, -100}, {-100, -50, 100}, {100, 50, 100}};
  slope.faces = {0, 2, 1, 1, 2, 3};
  scene.AddNode("Slope").SetMesh(slope);
  const int count = 20;
  for (int i = 0; i < count; ++i) {
    SceneNode& box = scene.AddNode("Box" + std::to_string(i));
    box.SetMesh(util::CMesh_Box(1.0, 2.0, 0.5));
    Trs pose;
    pose.translation = {4.0 * i - 30.0, 80.0 - 7.0 * (i % 3), 1.0 * i};
    pose.rotation = util::Quat<double>(0.1 * i, 0.3, -0.05 * i, 1.0).normalized();
    box.SetPose(pose);
  }
  // Above its parent, which is selected too, it goes with that.
  scene.Move(*scene.Find("Box1"), scene.Find("Box0"));
  std::vector<Vector> before;
  for (int i = 0; i < count; ++i)
    before.push_back(scene.Find("Box" + std::to_string(i))->WorldMatrix(0.0).translation());
  std::vector<int> keys;
  for (int i = 0; i < count; ++i)
    keys.push_back(browser.GetKey(*scene.Find("Box" + std::to_string(i))));
  browser.Select(keys);
  hands.SetView({}, 1.0, 1.0);
  EXPECT_EQ(Type(view::Tool::kMove, 2, "1.5"), "");
  for (int i = 0; i < count; ++i) {
    const Vector now = scene.Find("Box" + std::to_string(i))->WorldMatrix(0.0).translation();
    EXPECT_LT((now - before[static_cast<std::size_t>(i)] - Vector(0, 0, 1.5)).length(), 1e-12);
  }
  EXPECT_EQ(nodes.DropToGround(), "");
  EXPECT_EQ(browser.GetUndoSteps().names.back(), "Drop #Box0 +18");
  for (int i = 2; i < count; ++i) {
    const SceneNode& box = *scene.Find("Box" + std::to_string(i));
    double least = 1e9, height = 0.0;
    for (const auto& vertex : box.GetMesh()->vertices) {
      const Vector point = box.WorldMatrix(0.0).transformPoint(vertex);
      if (point.y < least) least = point.y, height = point.y - 0.5 * point.x;
    }
    EXPECT_NEAR(height, 0.0, 1e-9) << i;
  }
  // A car stands on its wheels.
  const int row = Add("4WheelerExt", "Car");
  auto* rig = core.FindRow(row)->GetInstance();
  auto& body = static_cast<rws::adaptor::headless::HeadlessNode&>(*rig->GetNodes().front());
  browser.Select({browser.GetKey(*body.GetSceneNode())});
  hands.SetView({}, 1.0, 1.0);
  EXPECT_EQ(Type(view::Tool::kMove, 1, "40"), "");
  EXPECT_EQ(nodes.DropToGround(), "");
  const Vector at = body.GetWorldPose(0.0).translation();
  EXPECT_NEAR(at.y, app::StandingPlace(*rig, {at.x, 0.5 * at.x, at.z}, 1.0)->y, 1e-9);
}

}  // namespace orv::tests
