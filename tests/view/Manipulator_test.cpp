// What hands make of poses, against closed forms.
#include "app/studio/view/manipulator/Manipulator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "util/Angles.h"

namespace orv::tests {

namespace {

using namespace app::view;
using Kind = Constraint::Kind;
using util::Matrix;
using util::Quat;
using Vector = util::Vector3<double>;

Matrix<double> PoseOf(const Vector& at, const Quat<double>& turn, const Vector& scale) {
  Matrix<double> pose = turn.toMatrix();
  for (int i = 0; i < 3; ++i) pose.setAxisRow(i, pose.axisRow(i) * scale[i]);
  pose.setTranslation(at);
  return pose;
}

/// Nodes in memory, and what is asked of them.
class Nodes : public ManipulatedScene {
 public:
  void Read(Selection& out) override { out = selection; }
  void Preview(const Selection&, const std::vector<NewPose>& poses) override { shown = poses; }
  void EndPreview() override { shown.clear(); }
  std::string Commit(Tool, const Selection&, const std::vector<NewPose>& poses) override {
    committed.push_back(poses);
    return {};
  }
  bool Meet(const Selection&, const Ray& ray, Vector& point) override {
    return MeetPlane(ray, {0.0, -2.0, 0.0}, {0.0, 1.0, 0.0}, point);
  }
  bool FindNode(const Selection&, const ViewFrame&, const Pixel&, Matrix<double>& world) override {
    world = other;
    return true;
  }
  double GetDepth(const Selection&) override { return 0.5; }

  Target& Add(const Matrix<double>& parent, const Vector& at, const Quat<double>& turn,
              const Vector& scale) {
    Target target;
    target.id = static_cast<int>(selection.targets.size()) + 1;
    target.parent = parent;
    target.translation = at;
    target.rotation = turn;
    target.scale = scale;
    target.world = parent * PoseOf(at, turn, scale);
    selection.targets.push_back(target);
    selection.active = target;
    return selection.targets.back();
  }
  /// World pose of a target with what has been committed last.
  Matrix<double> After(std::size_t i) const {
    const Target& t = selection.targets[i];
    const NewPose& p = committed.back()[i];
    return t.parent * PoseOf(p.translation.value_or(t.translation), p.rotation.value_or(t.rotation),
                             p.scale.value_or(t.scale));
  }

  Selection selection;
  Matrix<double> other;
  std::vector<NewPose> shown;
  std::vector<std::vector<NewPose>> committed;
};

class Manipulator : public testing::Test {
 protected:
  double Unit() { return std::uniform_real_distribution<double>(-1.0, 1.0)(random); }
  Vector Any(double size = 1.0) { return Vector(Unit(), Unit(), Unit()) * size; }
  Quat<double> AnyTurn() { return Quat<double>(Unit(), Unit(), Unit(), Unit()).normalized(); }
  ViewFrame Look(const Vector& at, double distance) {
    OrbitEye eye;
    eye.target = at;
    eye.distance = distance;
    eye.yaw = 3.0 * Unit();
    eye.pitch = Unit();
    return ViewFrame(eye.GetPose(), Optics(), 1280.0, 720.0);
  }
  /// A node below a turned and evenly scaled parent, the tool at it, and a view of it.
  void Begin(Tool tool, Space space) {
    nodes = {};
    nodes.Add(PoseOf(Any(50.0), AnyTurn(), Vector(1, 1, 1) * (1.5 + Unit())), Any(5.0), AnyTurn(),
              {1.0, 2.0, 0.5});
    options.tool = tool;
    options.space = space;
    hands.SetOptions(options);
    Look();
  }
  void Look() {
    frame = ChooseFrame(nodes.selection, options.space);
    view = Look(frame.origin + Any(), 12.0 + 8.0 * Unit());
    hands.SetView(view, 1.0, 1.0);
  }
  Pixel Shown(const Vector& world) {
    Pixel at;
    EXPECT_TRUE(view.Project(world, at));
    return at;
  }
  static double Off(const Matrix<double>& a, const Matrix<double>& b) {
    double off = 0.0;
    for (int i = 0; i < 16; ++i) off = std::max(off, std::abs(a[i] - b[i]));
    return off;
  }
  void Type(const char* text) {
    for (; *text; ++text) EXPECT_TRUE(hands.Type(*text));
  }

  std::mt19937 random{5};
  Nodes nodes;
  app::view::Manipulator hands{nodes};
  app::view::Manipulator::Options options;
  Frame frame;
  ViewFrame view;
};

}  // namespace

TEST_F(Manipulator, FollowsThePointerAlongAxesAndPlanesOnly) {
  int dragged = 0;
  for (int round = 0; round < 300; ++round) {
    Begin(Tool::kMove, static_cast<Space>(round % 3));
    const int axis = round % 3;
    const bool isPlane = round % 2;
    const Handles handles(Tool::kMove, frame, view, 1.0);
    const Constraint wanted{isPlane ? Kind::kPlane : Kind::kAxis, axis};
    const Vector& u = frame.axes[(axis + 1) % 3];
    const Vector& v = frame.axes[(axis + 2) % 3];
    const Vector grip = isPlane ? (u + v) * (0.44 * handles.GetSize())
                                : frame.axes[axis] * (0.8 * handles.GetSize());
    Constraint found;
    const Pixel at = Shown(frame.origin + grip);
    // Others may lie over it, and those along the sight are not there.
    if (!handles.Hit(at, found) || !(found == wanted)) continue;
    ++dragged;
    EXPECT_TRUE(hands.Press({at}));
    const Vector way = isPlane ? u * Unit() + v * Unit() : frame.axes[axis] * Unit();
    hands.Move({Shown(frame.origin + grip + way)});
    ASSERT_EQ(hands.Finish(), "");
    const NewPose& pose = nodes.committed.back()[0];
    ASSERT_TRUE(pose.translation && !pose.rotation && !pose.scale);
    const Vector came =
        nodes.After(0).translation() - nodes.selection.targets[0].world.translation();
    EXPECT_LT((came - way).length(), 1e-9);
    for (int i = 0; i < 3; ++i)
      if (!wanted.Has(i)) {
        EXPECT_NEAR(came.dot(frame.axes[i]), 0.0, 1e-12);
      }
  }
  EXPECT_GT(dragged, 150);
}

TEST_F(Manipulator, IsOfOneSizeAndHitWithinSixPixels) {
  for (const double distance : {0.01, 3.0, 1e4})
    for (const double scale : {1.0, 2.0}) {
      Frame at;
      at.origin = {1e3, 5.0, -1e3};
      view = Look(at.origin, distance);
      const Handles handles(Tool::kMove, at, view, scale);
      const Vector across = at.origin + view.GetRight() * handles.GetSize();
      EXPECT_NEAR((Shown(across) - Shown(at.origin)).Length(), Handles::kLength * scale, 1e-6);
      for (int axis = 0; axis < 3; ++axis) {
        const Pixel stem = Shown(at.origin + at.axes[axis] * (0.9 * handles.GetSize())),
                    tip = Shown(at.origin + at.axes[axis] * handles.GetSize());
        Pixel beside{tip.y - stem.y, stem.x - tip.x};
        const double length = beside.Length();
        if (handles.GetOpacity({Kind::kAxis, axis}) < 0.5) continue;
        for (const double far : {5.5, 6.5}) {
          Constraint found;
          const double part = far * scale / length;
          const bool isHit = handles.Hit(stem + Pixel{beside.x * part, beside.y * part}, found);
          // Another may lie nearer.
          if (isHit && !(found == Constraint{Kind::kAxis, axis})) continue;
          EXPECT_EQ(isHit, far < 6.0);
        }
      }
      // Along the sight nothing can be aimed at.
      OrbitEye eye;
      eye.yaw = eye.pitch = 0.0;
      const Handles along(Tool::kMove, Frame(), ViewFrame(eye.GetPose(), Optics(), 800, 600),
                          scale);
      EXPECT_EQ(along.GetOpacity({Kind::kAxis, 2}), 0.0);
      EXPECT_EQ(along.GetOpacity({Kind::kPlane, 0}), 0.0);
      EXPECT_EQ(along.GetOpacity({Kind::kAxis, 0}), 1.0);
    }
}

TEST_F(Manipulator, TurnsAsItsRingIsDraggedSeenFromWhereverItIs) {
  int turned = 0, fromTheSide = 0;
  for (int round = 0; round < 300; ++round) {
    Begin(Tool::kTurn, static_cast<Space>(round % 3));
    nodes.Add({}, Any(60.0), AnyTurn(), {1, 1, 1});
    const Target active = nodes.selection.active;
    Look();
    const int axis = round % 3;
    const Vector &u = frame.axes[(axis + 1) % 3], &v = frame.axes[(axis + 2) % 3];
    const double size = Handles(Tool::kTurn, frame, view, 1.0).GetSize();
    const bool isSide = std::abs(frame.axes[axis].dot(view.SightTo(frame.origin))) < 0.25;
    const double from = 3.0 * Unit(), by = isSide ? 0.05 : 3.0 * Unit();
    const auto ring = [&](double angle) {
      return Shown(frame.origin + (u * std::cos(angle) + v * std::sin(angle)) * size);
    };
    // What is nearest to the eye goes as far as the hand, from the side.
    const Vector sight = view.SightTo(frame.origin);
    const double front = std::atan2(-sight.dot(v), -sight.dot(u));
    const double start = isSide ? front : from;
    hands.Begin(Tool::kTurn, {ring(start)});
    hands.Lock(Kind::kAxis, axis);
    for (int i = 1; i <= 20; ++i) hands.Move({ring(start + by * i / 20)});
    ASSERT_EQ(hands.GetAmounts().size(), 1u);
    const double angle = hands.GetAmounts()[0].value * util::kRadiansPerDegree;
    EXPECT_NEAR(angle, by, isSide ? 0.01 : 1e-9);
    ++(isSide ? fromTheSide : turned);
    hands.Finish();
    const Vector &w = frame.axes[axis], p = active.world.translation();
    const Matrix<double> spin =
        Matrix<double>::rotationAxisAngle(angle * util::kDegreesPerRadian, w.x, w.y, w.z);
    for (std::size_t i = 0; i < 2; ++i) {
      Matrix<double> wanted = nodes.selection.targets[i].world;
      wanted.setTranslation(wanted.translation() - p);
      wanted = spin * wanted;
      wanted.setTranslation(wanted.translation() + p);
      EXPECT_LT(Off(nodes.After(i), wanted), 1e-11);
    }
    EXPECT_FALSE(nodes.committed.back()[1].translation) << "the pivot itself gets no key for it";
  }
  EXPECT_GT(turned, 100);
  EXPECT_GT(fromTheSide, 20);
}

TEST_F(Manipulator, TakesNumbersAndKeepsToAxesByKeys) {
  Begin(Tool::kMove, Space::kParent);
  hands.SetUnit(100.0);
  const Target before = nodes.selection.targets[0];
  const double size = before.parent.rowLengths().x;
  hands.Begin(Tool::kMove, {{300, 200}});
  hands.Move({{350, 240}});
  hands.Lock(Kind::kAxis, 0);
  Type("1,,5");
  ASSERT_EQ(nodes.shown.size(), 1u);
  hands.Finish();
  EXPECT_LT(
      (*nodes.committed.back()[0].translation - before.translation - Vector(0.015 / size, 0, 0))
          .length(),
      1e-12);
  hands.Begin(Tool::kMove, {{300, 200}});
  hands.Lock(Kind::kPlane, 1);
  Type("2-");
  hands.NextNumber();
  Type(".5");
  hands.Erase();
  Type("25");
  hands.Finish();
  EXPECT_LT((*nodes.committed.back()[0].translation - before.translation -
             Vector(-0.02 / size, 0, 0.0025 / size))
                .length(),
            1e-12);
  // A key again: the same axis of the other space, and then none.
  hands.Begin(Tool::kScale, {{300, 200}});
  hands.Lock(Kind::kAxis, 1);
  hands.Lock(Kind::kAxis, 1);
  EXPECT_EQ(hands.GetDragSpace(), Space::kWorld);
  hands.Lock(Kind::kAxis, 1);
  EXPECT_EQ(hands.GetConstraint().kind, Kind::kFree);
  Type("0");
  EXPECT_TRUE(hands.IsRefused());
  hands.Finish();
  EXPECT_EQ(nodes.committed.size(), 2u) << "a scale of 0 is not set";
  options.space = Space::kLocal;
  hands.SetOptions(options);
  hands.Begin(Tool::kScale, {{300, 200}});
  hands.Lock(Kind::kAxis, 1);
  Type("-3");
  hands.Finish();
  EXPECT_LT((*nodes.committed.back()[0].scale - Vector(1.0, -6.0, 0.5)).length(), 1e-12);
  // What was let go of, and what another has moved meanwhile, is not set.
  const std::size_t steps = nodes.committed.size();
  hands.Begin(Tool::kTurn, {{300, 200}});
  Type("90");
  EXPECT_FALSE(nodes.shown.empty());
  hands.Cancel();
  EXPECT_TRUE(nodes.shown.empty());
  hands.Begin(Tool::kTurn, {{300, 200}});
  Type("90");
  nodes.selection.targets[0].translation.x += 1.0;
  hands.SetView(view, 1.0, 1.0);
  EXPECT_FALSE(hands.IsDragging());
  nodes.selection.blocked = "a take";
  EXPECT_FALSE(hands.Begin(Tool::kMove, {{300, 200}}));
  EXPECT_EQ(hands.Nudge(1, 0, 0, false), "a take");
  EXPECT_EQ(nodes.committed.size(), steps);
}

TEST_F(Manipulator, SnapsToGridNodesAndGroundAndGoesByArrowKeys) {
  Begin(Tool::kMove, Space::kWorld);
  options.toSteps = true;
  hands.SetOptions(options);
  hands.SetView(view, 0.1, 1.0);
  const Pixel at = Shown(frame.origin);
  hands.Begin(Tool::kMove, {at});
  hands.Move({at + Pixel{60, 30}});
  hands.Finish();
  const Vector place = nodes.After(0).translation();
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(std::remainder(place[i], 0.1), 0.0, 1e-12);
  EXPECT_GT((place - frame.origin).length(), 0.1);
  hands.Begin(Tool::kMove, {at});
  hands.Move({at + Pixel{60, 30}, true});
  hands.Finish();
  EXPECT_GT(std::abs(std::remainder(nodes.After(0).translation().x, 0.1)), 1e-6) << "not with Ctrl";
  hands.Begin(Tool::kTurn, {at + Pixel{50, 0}});
  hands.Move({at + Pixel{0, 50}});
  EXPECT_NEAR(std::remainder(hands.GetAmounts()[0].value, 15.0), 0.0, 1e-9);
  hands.Cancel();

  options.toSteps = false;
  options.toGround = true;
  hands.SetOptions(options);
  hands.Begin(Tool::kMove, {at});
  const Pixel low = Shown(view.RayAt(at).origin +
                          (Vector(frame.origin.x, -2.0, frame.origin.z) - view.RayAt(at).origin));
  hands.Move({low});
  hands.Finish();
  EXPECT_LT((nodes.After(0).translation() - Vector(frame.origin.x, -1.5, frame.origin.z)).length(),
            1e-8);
  options.toNodes = true;
  hands.SetOptions(options);
  nodes.other = PoseOf(Any(9.0), AnyTurn(), {2, 2, 2});
  for (const Tool tool : {Tool::kMove, Tool::kTurn}) {
    hands.Begin(tool, {at});
    hands.Move({at + Pixel{1, 1}});
    hands.Finish();
    const Matrix<double> now = nodes.After(0);
    if (tool == Tool::kMove)
      EXPECT_LT((now.translation() - nodes.other.translation()).length(), 1e-12);
    else
      for (int i = 0; i < 3; ++i)
        EXPECT_LT((now.axisRow(i).normalized() - nodes.other.axisRow(i) * 0.5).length(), 1e-12);
  }
  // A key a step: one axis each, that of the picture which it looks like.
  std::set<int> axes;
  for (const auto& [right, up, nearer] : {std::tuple(1, 0, 0), {0, 1, 0}, {0, 0, 1}}) {
    ASSERT_EQ(hands.Nudge(right, up, nearer, true), "");
    const Vector way = nodes.After(0).translation() - frame.origin;
    const Vector towards = view.GetRight() * right + view.GetUp() * up - view.GetForward() * nearer;
    EXPECT_NEAR(way.length(), 0.01, 1e-12);
    EXPECT_GT(way.dot(towards), 0.0);
    for (int i = 0; i < 3; ++i)
      if (std::abs(way[i]) > 0.005) axes.insert(i);
  }
  EXPECT_EQ(axes.size(), 3u);
}

}  // namespace orv::tests
