// The camera rail on the real core: speeds, stops, ends, aim, undo and bad input.
#include "core/interface/RigMarks.h"
#include "plugins/release/splinespeedcontroller/NodeSpline.h"
#include "rigs/RigSuite.h"
#include "util/AVar_Latest.h"
#include "util/Quat.h"

namespace orv::tests {
namespace {

using Vector = util::Vector3<double>;
using Matrix = util::Matrix<double>;

class Rail : public RigScene {
 public:
  explicit Rail(double fps = 25.0) : RigScene("Spline Speed-Controller", fps) {
    scene().SetRange(0.0, 40.0);
  }

  /// A curve of the scene, which the carriage then runs on.
  hl::SceneNode& Path(const std::vector<Vector>& points, bool closed, const Matrix& pose = {}) {
    hl::SceneNode& node = scene().AddNode("Path");
    rws::adaptor::Curve curve;
    curve.points = points;
    curve.closed = closed;
    node.SetCurve(curve);
    node.SetPose(rws::adaptor::Decompose(pose));
    scene().Reparent(Find("CarriageNode"), &node, 0.0);
    return node;
  }
  /// A straight one along X, with waypoints at these shares of it.
  hl::SceneNode& Straight(double length, const std::vector<double>& percents) {
    hl::SceneNode& path = Path({{0, 0, 0}, {length, 0, 0}}, false);
    WaypointsAt(percents);
    return path;
  }
  /// A circle about Y of the rig's own, 10 m in radius, its waypoints at these angles (degrees).
  void Circle(const std::vector<double>& angles) {
    std::vector<Vector> points;
    for (const double angle : angles)
      points.push_back({10 * std::cos(angle * M_PI / 180), 0, 10 * std::sin(angle * M_PI / 180)});
    OwnCurve(points, true);
  }
  void OwnCurve(const std::vector<Vector>& points, bool closed) {
    PlaceWaypoints(points);
    Set("Use Orvel Curve Generation=1; End Curve Straight=1");
    Edit("Closed Curve", closed ? "1" : "0");
    Press("Create Curve");
  }
  /// Waypoints of a scene's curve at these shares of its length.
  void WaypointsAt(const std::vector<double>& percents) {
    for (const double percent : percents) {
      Edit("Waypoint Creation Position (in Percent)", std::to_string(percent));
      Press("Create New Waypoint");
    }
  }
  void Select(int index, const std::string& edits) {
    Set("Current Waypoint=" + std::to_string(index) + "; " + edits);
  }
  Matrix Carriage(int frame) { return World("CarriageNode", frame); }
  double Speed(int frame) {
    return (Carriage(frame).translation() - Carriage(frame - 1).translation()).length() /
           core().GetFrameDuration();
  }
  /// A history of the carriage, from the rig's save data.
  template <class History = util::AVar_Linear<double>>
  History Saved(const std::string& key) {
    const auto bytes = Stored().getChunk("carriage").getBytes(key);
    History history;
    history.load(bytes.data(), bytes.size());
    return history;
  }
  double Position(int frame) { return Saved("onSplinePosition").value(Frame(frame)); }
  /// First frame at which the carriage is stopped, from `frame` on; -1 without one.
  int StopFrom(int frame, bool wanted = true) {
    const auto stopped = Saved<util::AVar_Latest<bool>>("stopped");
    for (const auto& sample : stopped.samples)
      if (sample.time >= Frame(frame) - 1e-9 && sample.value == wanted)
        return core().FrameIndex(sample.time);
    return -1;
  }
  using RigScene::Saved;
};

TEST(CameraRail, TellsItsTrackItsWaypointsAndHowFastItRuns) {
  for (const bool own : {false, true}) {
    Rail rail;
    if (own)
      rail.Circle({0, 90, 180, 270});
    else
      rail.Straight(100.0, {0, 40, 100});
    rail.Select(0, "Speed=6");
    rail.Select(1, "Time Delay (seconds)=2");
    rail.Resimulate(0, 300);
    const Vector places[2][4] = {{{0, 0, 0}, {40, 0, 0}, {100, 0, 0}, {}},
                                 {{10, 0, 0}, {0, 0, 10}, {-10, 0, 0}, {0, 0, -10}}};
    int told = 0, stood = 0;
    for (int frame = 2; frame <= 300; ++frame) {  // the first one puts it there
      rws::RigMarks marks;
      marks.Begin(rail.Frame(frame));
      ASSERT_EQ(rail.rig->GetRig()->Extension(rws::kTellMarks, &marks, nullptr), 1);
      const Vector way =
          rail.Carriage(frame).translation() - rail.Carriage(frame - 1).translation();
      ASSERT_EQ(marks.speeds.size(), way.length() > 1e-9 ? 1u : 0u) << frame;
      for (const auto& speed : marks.speeds) {
        EXPECT_LT((speed.direction * speed.value * 0.04 - way).length(), 1e-9) << frame;
        EXPECT_LT((speed.point - rail.Carriage(frame).translation()).length(), 1e-9);
      }
      (marks.speeds.empty() ? stood : told) += 1;
      if (frame != 100) continue;
      ASSERT_EQ(marks.waypoints.size(), own ? 4u : 3u);
      for (std::size_t i = 0; i < marks.waypoints.size(); ++i) {
        EXPECT_LT((marks.waypoints[i].point - places[own][i]).length(), 1e-6);
        EXPECT_EQ(marks.waypoints[i].stops, i == 1);
      }
      double length = 0.0;
      for (std::size_t i = 1; i < marks.track.size(); ++i)
        length += (marks.track[i] - marks.track[i - 1]).length();
      EXPECT_NEAR(length, own ? 59.44 : 100.0, own ? 0.01 : 1e-6) << "all but a circle";
    }
    EXPECT_GT(told, 50);
    EXPECT_GT(stood, 45);
  }
}

TEST(CameraRail, ASpeedIsMetInEveryUnitAtAnyScaleOfCarriageAndPath) {
  const std::pair<const char*, double> units[] = {
      {"m/s", 1.0}, {"km/h", 1 / 3.6}, {"mph", 1 / 2.23693629}, {"cm/s", .01}, {"inch/s", .0254}};
  for (const auto& [unit, metres] : units) {
    for (const double scale : {0.5, 1.0, 40.0}) {
      for (const bool own : {false, true}) {
        Rail rail;
        Matrix pose = Matrix::rotationAxisAngle(35, 0, 1, 0);
        pose.setRowLengths({scale, scale, scale});
        const double length = 2000 / scale;
        if (own) {
          rail.Find("ReferenceFrame").SetPose(rws::adaptor::Decompose(pose));
          rail.OwnCurve({pose.transformPoint({0, 0, 0}), pose.transformPoint({length / 3, 0, 0}),
                         pose.transformPoint({length, 0, 0})},
                        false);
        } else {
          rail.Path({{0, 0, 0}, {length / 7, 0, 0}, {length, 0, 0}}, false, pose);
          rail.WaypointsAt({0, 100});
        }
        rail.Find("CarriageNode").SetPose({{}, {}, {3, 3, 3}});
        rail.Edit("Selected Speed Units", unit);
        rail.Select(0, "Speed=12");
        rail.Resimulate(0, 250);
        EXPECT_NEAR(rail.Speed(240) / (12 * metres), 1.0, 1e-3) << unit << scale << own;
        // The way is the integral of the speed, and the carriage keeps its scale.
        double way = 0.0;
        const auto speed = rail.Saved("dCurrentCarriageSpeed_Avar");
        for (int i = 1; i <= 250; ++i) way += speed.value(rail.Frame(i)) * 0.04;
        EXPECT_NEAR((rail.Carriage(250).translation() - rail.Carriage(1).translation()).length() /
                        (way - speed.value(rail.Frame(1)) * 0.04),
                    1.0, 1e-6);
        EXPECT_NEAR(rail.Carriage(250).rowLengths().x, rail.Carriage(0).rowLengths().x, 1e-9);
      }
    }
  }
}

TEST(CameraRail, TheMotionFollowsAnIndependentIntegrator) {
  for (const auto& [limit, softner] : {std::pair{100.0, 0.9}, {40.0, 0.4}, {0.0, 3.0}}) {
    Rail rail;
    rail.Straight(80, {0, 50});
    rail.Select(0, "Speed=9; Maximum Acceleration=" + std::to_string(limit));
    rail.Select(1, "Brake Percent=60; Stop Mode=1; Brake Softner=" + std::to_string(softner));
    rail.Resimulate(0, 400);
    double first = 0, second = 0, u = 0;
    const auto follow = [&](double& value, double target) {
      const double step = std::min(target - value, limit == 0.0 ? 1e9 : limit * 0.04);
      const double aim = value + step;
      for (int i = 0; i < 2; ++i) value += (aim - value) * 0.05;
    };
    const auto positions = rail.Saved("onSplinePosition");
    for (int i = 1; i <= 400; ++i) {
      const double ahead = (0.5 - u) / (0.6 * 0.5);
      const double brake = ahead < 1 ? std::max(0.01, std::pow(ahead, softner)) : 1.0;
      follow(first, 9.0);
      follow(second, first);
      u = std::min(0.5, u + 0.04 * second * brake / 80);
      ASSERT_NEAR(positions.value(rail.Frame(i)), u, 1e-12) << limit << " at " << i;
      if (u == 0.5) break;
    }
    EXPECT_TRUE(softner > 0.5 || u == 0.5) << "this one arrives in time";
  }
}

TEST(CameraRail, AStopLastsAsToldAtEveryRateAndPlace) {
  for (const double fps : {23.976, 24.0, 25.0, 29.97, 30.0, 50.0, 59.94, 60.0}) {
    for (const int first : {0, 7, 100003}) {
      Rail rail(fps);
      rail.scene().SetRange(0.0, 20000.0);
      rail.Path({{0, 0, 0}, {30, 0, 0}, {30, 0, 70}}, false);
      rail.WaypointsAt({0, 17, 100});
      rail.Select(1, "Time Delay (frames)=9");
      rail.Resimulate(first, first + 400);
      const int stop = rail.StopFrom(first);
      ASSERT_GT(stop, first) << fps;
      EXPECT_EQ(rail.StopFrom(stop, false) - stop, 10) << fps << " from " << first;
      for (int i = stop; i <= stop + 10; ++i) ASSERT_EQ(rail.Position(i), 0.17) << fps;
      EXPECT_NEAR(rail.Carriage(stop).translation().x, 17.0, 1e-9);
      EXPECT_EQ(rail.StopFrom(stop + 10, true), -1) << "one stop";
    }
  }
}

TEST(CameraRail, ARetakeFromAnyFrameOfAStopGoesOnAsTheTakeDid) {
  Rail rail;
  rail.OwnCurve({{0, 0, 0}, {10, 0, 0}, {20, 0, 5}, {40, 0, 0}}, false);
  for (const int stop : {1, 3}) rail.Select(stop, "Time Delay (frames)=8");
  rail.Resimulate(0, 300);
  const auto whole = rail.PosesOf(0, 300).at("CarriageNode");
  const int stop = rail.StopFrom(0);
  ASSERT_GT(stop, 0);
  for (int i = stop - 2; i <= stop + 11; ++i) {
    rail.Resimulate(i, 300);
    const auto again = rail.PosesOf(0, 300);
    for (int k = 0; k <= 300; ++k)
      ASSERT_LT((rail.Carriage(k).translation() - whole[k].translation()).length(), 1e-9)
          << "from " << i - stop << " at " << k;
    rail.Resimulate(i, 300);
    EXPECT_TRUE(rail.PosesOf(0, 300) == again) << i;
  }
}

TEST(CameraRail, StopModeWaitsForStartWhichMayBeHeld) {
  Rail rail;
  rail.Straight(100, {0, 20, 40, 60});
  for (int i = 1; i < 4; ++i) rail.Select(i, "Stop Mode=1");
  rail.Drive("Start", {{0, 0}, {10, 1}, {10.6, 0}, {20, 1}, {20.2, 0}});
  rail.Resimulate(0, 900);
  EXPECT_EQ(rail.Position(249), 0.2);
  EXPECT_EQ(rail.StopFrom(200, false), 250);
  EXPECT_EQ(rail.Position(499), 0.4) << "a held press skips no waypoint";
  EXPECT_EQ(rail.Position(900), 0.6);
  // A retake within the wait goes on waiting.
  rail.Resimulate(200, 240);
  EXPECT_EQ(rail.Position(240), 0.2);
}

TEST(CameraRail, ForcedStopSlowsThroughTheFilterAndInputsAddSpeed) {
  Rail rail;
  rail.Straight(1000, {0, 100});
  rail.Drive("Forced Stop", {{0, 0}, {12, 1}});
  rail.Resimulate(0, 600);
  EXPECT_NEAR(rail.Speed(299), 10.0, 0.01);
  EXPECT_GT(rail.Speed(302), 8.0) << "not at once";
  EXPECT_LT(rail.Speed(600), 0.01);
  rail.Drive("Forced Stop", {{0, 0}});
  rail.Drive("Speed", {{0, 0.55}});  // half way behind the dead zone
  const auto speedWith = [&](const std::string& edits) {
    rail.Set(edits);
    rail.Resimulate(0, 400);
    return rail.Speed(400);
  };
  EXPECT_NEAR(speedWith("Forward/Backward Maximum Speed=8; Speed Multiplier=0.5"), 7.0, 0.01);
  EXPECT_NEAR(speedWith("Forward/Backward Maximum Speed=0"), 5.0, 0.01) << "the waypoints' stays";
  EXPECT_NEAR(speedWith("Forward/Backward Maximum Speed=1; Input Mode Only=1"), 0.25, 0.001);
  // Without a waypoint it runs ten times as fast, unless the inputs drive alone.
  for (int i = 0; i < 2; ++i) rail.Press("Remove Current Waypoint");
  EXPECT_NEAR(speedWith("Input Mode Only=0"), 2.5, 0.01);
  EXPECT_NEAR(speedWith("Input Mode Only=1"), 0.25, 0.001);
}

TEST(CameraRail, TheCarriageLoopsBothWaysAndStopsOnItsWayBack) {
  Rail rail;
  rail.Circle({0, 90, 180, 270});
  rail.Edit("Loop", "1");
  rail.Select(1, "Time Delay (frames)=5");
  for (const bool back : {false, true}) {
    rail.Press("Initialize Carriage");
    rail.Drive("Speed", {{0, back ? -1.0 : 0.0}});
    rail.Edit("Forward/Backward Maximum Speed", "18");
    rail.Resimulate(0, 900);
    int laps = 0, stops = 0;
    for (int i = 2; i <= 900; ++i) {
      const double step = rail.Position(i) - rail.Position(i - 1);
      laps += std::abs(step) > 0.5;
      ASSERT_TRUE(std::abs(step) > 0.5 || (back ? step <= 0 : step >= 0)) << i;
    }
    for (int i = rail.StopFrom(0); i >= 0; i = rail.StopFrom(rail.StopFrom(i, false))) {
      EXPECT_NEAR(rail.Position(i), rail.Position(rail.StopFrom(0)), 1e-12);
      ++stops;
      if (rail.StopFrom(i, false) < 0) break;
    }
    EXPECT_GE(laps, 3) << back;
    EXPECT_NEAR(stops, laps, 1) << back;
  }
}

TEST(CameraRail, OverTheSeamSpeedAndAimStayAlsoRightBeforeAStopBehindIt) {
  for (const bool stops : {false, true}) {
    Rail rail;
    rail.OwnCurve({{0, 0, 0}, {4, 0, 0}, {10, 0, 0}}, false);
    rail.Edit("Loop", "1");
    for (int i = 0; i < 3; ++i)  // fast, and it aims at once
      rail.Select(i, "Speed=40; Rotation Response Factor=2; Rotation Max Rate Of Change=0");
    if (stops) rail.Select(0, "Time Delay (frames)=3");
    rail.Press("Initialize Carriage");
    rail.Resimulate(0, 300);
    int landings = 0;
    for (int i = 200; i <= 300; ++i) {
      landings += rail.Position(i) == -1e-05;
      ASSERT_NEAR(rail.Carriage(i).axisRow(2).x, -1.0, 1e-9) << i;
      const double way = rail.Position(i) - rail.Position(i - 1);
      ASSERT_TRUE(stops || std::abs((way < 0.0 ? way + 1.0 : way) * 10.0 - 1.6) < 1e-3) << i;
    }
    EXPECT_EQ(landings > 0, stops);
  }
}

TEST(CameraRail, WithoutLoopTheEndsAreEndsAndTheWayBackWorks) {
  Rail rail;
  rail.Straight(20, {0, 50, 100});
  rail.Drive("Speed", {{0, 0}, {10, -1}});
  rail.Edit("Forward/Backward Maximum Speed", "20");
  rail.Select(1, "Time Delay (frames)=3");
  rail.Resimulate(0, 700);
  EXPECT_EQ(rail.Position(240), 1.0);
  EXPECT_EQ(rail.Saved("speedMem").value(rail.Frame(240)), 0.0);
  const int stop = rail.StopFrom(251);
  ASSERT_GT(stop, 250);
  EXPECT_EQ(rail.Position(stop), 0.5) << "it stops on the way back too";
  EXPECT_EQ(rail.Position(700), 0.0);
}

TEST(CameraRail, ASingleWaypointCountsOnlyWithAStop) {
  for (const bool stops : {false, true}) {
    Rail rail;
    rail.Straight(50, {40});
    if (stops) rail.Select(0, "Time Delay (frames)=4");
    rail.Resimulate(0, 300);
    EXPECT_EQ(rail.StopFrom(0) > 0, stops);
    EXPECT_EQ(rail.Position(300), 1.0);
  }
}

TEST(CameraRail, GravityIsFasterDownhillAndBankingLeansIntoTheCurve) {
  Rail rail;
  std::vector<Vector> points;
  for (int i = 0; i < 12; ++i) {
    const double a = i * M_PI / 6;
    points.push_back({20 * std::cos(a), 4 * std::sin(2 * a), 20 * std::sin(a)});
  }
  rail.OwnCurve(points, true);
  EXPECT_EQ(rail.core().LoadProfile("Rig", "Gravity and Banking"), "");
  rail.Set("Yaw Mode only=0; Use Simplified Parameters=1");
  rail.Select(0, "Yaw Mode only=0; Acceleration Response Factor=0.9");
  rail.Resimulate(0, 600);
  double slopeAndSpeed = 0.0;
  for (int i = 100; i < 600; ++i) {
    const Vector way = rail.Carriage(i).translation() - rail.Carriage(i - 1).translation();
    slopeAndSpeed += way.y / way.length() * (rail.Speed(i) - 10.0);
    if (i % 25 != 0) continue;
    // The curve turns right (towards the centre): the carriage's up leans to the centre.
    const Vector centre = -rail.Carriage(i).translation();
    EXPECT_GT(rail.Carriage(i).axisRow(1).dot(centre.normalized()), 0.05) << i;
  }
  EXPECT_LT(slopeAndSpeed, -100.0) << "uphill slower, downhill faster";
}

TEST(CameraRail, ACarriageThatBrakesLeansByTheSpeedThatIsLeft) {
  Rail rail;
  rail.Circle({0, 30, 60, 90, 120, 150, 180, 210, 240, 270, 300, 330});
  rail.Edit("Banking Factor", "0.002");
  rail.Select(6, "Rotation Response Factor=2; Rotation Max Rate Of Change=0");
  rail.Select(7, "Time Delay (frames)=9; Brake Percent=100; Brake Softner=0.5");
  rail.Resimulate(0, 200);
  const auto leanPerSpeed = [&](int frame) {
    return std::acos(rail.Carriage(frame).axisRow(1).y) / rail.Speed(frame);
  };
  const int stop = rail.StopFrom(0);
  ASSERT_GT(stop, 30);
  EXPECT_LT(rail.Speed(stop - 2), 0.4 * rail.Speed(stop - 20));
  // Between its points the curve is no true circle.
  for (int i = stop - 20; i < stop - 1; ++i)
    EXPECT_NEAR(leanPerSpeed(i) / leanPerSpeed(stop - 21), 1.0, 0.35) << i;
}

TEST(CameraRail, InYawModeAVerticalLoopIsTakenUprightAndTurnsNoFasterThanTold) {
  Rail rail;
  std::vector<Vector> points;
  for (int i = 0; i < 12; ++i)
    points.push_back({0, 10 - 10 * std::cos(i * M_PI / 6), -10 * std::sin(i * M_PI / 6)});
  rail.OwnCurve(points, true);
  rail.Set("Loop=1; Use Simplified Parameters=1");
  rail.Select(0, "Yaw Mode only=1");
  rail.Press("Initialize Carriage");
  rail.Resimulate(0, 500);
  double fastest = 0.0, turned = 0.0;
  for (int i = 1; i <= 500; ++i) {
    const Matrix pose = rail.Carriage(i);
    ASSERT_NEAR(pose.axisRow(1).y, 1.0, 1e-9) << i;
    auto turn = util::Quat<double>::fromMatrix(pose) *
                util::Quat<double>::fromMatrix(rail.Carriage(i - 1)).conjugate();
    const double angle = turn.toRotationVector().length();
    ASSERT_TRUE(std::isfinite(angle));
    fastest = std::max(fastest, angle / 0.04);
    turned += angle;
  }
  EXPECT_LE(fastest, 2.0 + 1e-6);
  EXPECT_GT(turned, 2 * M_PI) << "it does turn round";
}

TEST(CameraRail, TheCarriageLooksAlongATurnedCurveAtTargetsOrKeepsItsAim) {
  Rail rail;
  rail.Path({{0, 0, 0}, {100, 0, 0}}, false, Matrix::rotationAxisAngle(90, 0, 1, 0));
  rail.WaypointsAt({0, 50, 100});
  rail.Resimulate(0, 200);
  EXPECT_LT((rail.Carriage(200).axisRow(2) - Vector(0, 0, 1)).length(), 1e-3) << "along -Z";
  rail.Place("Waypoint01_lookAtTarget", {30, 5, -20});
  rail.Select(0, "Look at Target=1; Speed=0.5");
  rail.Resimulate(0, 300);
  const Vector way = Vector(30, 5, -20) - rail.Carriage(299).translation();
  EXPECT_GT(-rail.Carriage(300).axisRow(2).dot(way.normalized()), 0.9999);
  // Braking, it turns to the target of the waypoint behind the one ahead.
  rail.Place("Waypoint03_lookAtTarget", {-30, 0, -60});
  rail.Edit("Look at Target When Braking", "1");
  rail.Select(1, "Time Delay (frames)=1000; Brake Percent=100");
  rail.Select(0, "Speed=0.5");
  rail.Resimulate(0, 300);
  const Vector back = Vector(-30, 0, -60) - rail.Carriage(299).translation();
  EXPECT_GT(-rail.Carriage(300).axisRow(2).dot(back.normalized()), 0.9999);
  const auto held = util::Quat<double>::fromMatrix(rail.Carriage(100));
  rail.Edit("Gyro Mode only", "1");
  rail.Resimulate(100, 300);
  const auto kept = util::Quat<double>::fromMatrix(rail.Carriage(300));
  EXPECT_NEAR(std::abs(kept.x * held.x + kept.y * held.y + kept.z * held.z + kept.w * held.w), 1.0,
              1e-12);
}

TEST(CameraRail, OnACurveThatMovesATakeRepeatsBitForBitFromAnyTime) {
  for (const double fps : {25.0, 59.94}) {
    Rail rail(fps);
    hl::SceneNode& path = rail.Path({{0, 0, 0}, {6, 1, 0}, {6, 0, 7}, {-1, 2, 5}}, true);
    rail.scene().Reparent(path, rail.scene().Find("Mover"), 0.0);
    rail.WaypointsAt({5, 20, 70});
    rail.Edit("Loop", "1");
    rail.Select(1, "Time Delay (frames)=4");
    rail.Select(2, "Look at Target=1");
    for (const char* button : {"Start", "Forced Stop"})
      rail.rig->GetProperties().find(button)->deadzone = 0.97;
    rail.Take(0, 120);
    const auto taken = rail.PosesOf(0, 130);
    rail.Reopen();
    rail.Resimulate(0, 120);
    EXPECT_TRUE(rail.PosesOf(0, 130) == taken) << fps;
    for (const double start : {1.0, 1.013}) {  // on the grid of frames, and between two of them
      const auto resimulate = [&] {
        ASSERT_EQ(rail.core().BeginResimulation(start, 3.0), 0);
        while (rail.core().StepResimulation()) {
        }
        rail.core().EndResimulation();
      };
      resimulate();
      const auto once = rail.PosesOf(0, 130);
      EXPECT_GT(rail.Speed(50), 0.0);
      resimulate();
      EXPECT_TRUE(rail.PosesOf(0, 130) == once) << fps << " from " << start;
    }
  }
}

TEST(CameraRail, AHostsCurveIsTheSameFromItsNodeAndInTheWorld) {
  Rail rail;
  Matrix pose = Matrix::rotationAxisAngle(50, 0, 0, 1);
  pose.setRowLengths({3, 3, 3});
  pose.setTranslation({7, 8, 9});
  rail.Path({{0, 0, 0}, {2, 0, 0}, {2, 0, 6}}, false, pose);
  rws::addon::NodeSpline spline;
  EXPECT_TRUE(!spline.IsValid() && spline.WorldPosition(0.5) == Vector());
  spline.Bind(*rail.rig, rail.session.GetAdaptor().FindSceneNode("Rig_CarriageNode"));
  EXPECT_TRUE(spline.IsSupported() && spline.IsValid());
  EXPECT_NEAR(spline.WorldLength(), 24.0, 1e-9);
  EXPECT_LT((spline.WorldPosition(0.5) - pose.transformPoint({2, 0, 2})).length(), 1e-9);
  EXPECT_LT((spline.WorldTangent(0.1).normalized() - pose.axisRow(0) / 3.0).length(), 1e-9);
  EXPECT_NEAR(spline.Closest(pose.transformPoint({3, 1, 2})), 0.5, 1e-9);
}

TEST(CameraRail, EveryActionIsUndoneAndRedoneToTheByte) {
  Rail rail;
  auto& adaptor = rail.session.GetAdaptor();
  rail.Path({{0, 0, 0}, {30, 0, 0}, {30, 0, 70}}, false);
  rail.WaypointsAt({0, 20, 60});
  rail.Place("Waypoint02", {31, 1, 20});
  rail.Press("Create Curve");
  rail.Resimulate(0, 50);
  const std::vector<std::pair<std::string, std::string>> actions = {
      {"Create New Waypoint", ""},
      {"Current Waypoint", "1"},
      {"Remove Current Waypoint", ""},
      {"Position on Spline (in Percent)", "90"},
      {"Time Delay (seconds)", "2"},
      {"Speed", "3"},
      {"Tension Out", "-3"},
      {"Closed Curve", "1"},
      {"Make all waypoints equal to Waypoint01", ""},
      {"Snap Waypoints to Spline/Redraw Orvel Curve", ""},
      {"Use Orvel Curve Generation", "1"},
      {"Snap Waypoints to Spline/Redraw Orvel Curve", ""},
      {"Initialize Carriage", ""},
      {"Snap Carriage to closest point on Curve", ""},
      {"Remove Curve", ""},
      {"Create Curve", ""}};
  std::vector<std::string> states{rail.Saved()};
  for (const auto& [label, value] : actions) {
    if (value.empty())
      rail.Press(label);
    else
      rail.Edit(label, value);
    states.push_back(rail.Saved());
  }
  // An action that finds all as it wants it may leave a step that changes nothing.
  for (int round = 0; round < 2; ++round) {
    for (std::size_t i = states.size() - 1; i-- > 0;) {
      for (int step = 0; step < 2 && rail.Saved() != states[i]; ++step) adaptor.HostUndo();
      ASSERT_TRUE(rail.Saved() == states[i]) << "undo of " << actions[i].first;
    }
    for (std::size_t i = 1; i < states.size(); ++i) {
      for (int step = 0; step < 2 && rail.Saved() != states[i]; ++step) adaptor.HostRedo();
      ASSERT_TRUE(rail.Saved() == states[i]) << "redo of " << actions[i - 1].first;
    }
  }
  const auto poses = rail.PosesOf(0, 20);
  const auto data = rail.Stored();
  rail.Reopen();
  EXPECT_TRUE(rail.PosesOf(0, 20) == poses);
  EXPECT_TRUE(rail.Stored() == data);
}

TEST(CameraRail, WhatIsMissingOrImpossibleIsToldAndNothingMoves) {
  Rail rail;
  const auto said = [&](const std::string& text) {
    bool found = false;
    for (const auto& message : rail.Told()) found |= message.find(text) != std::string::npos;
    return found;
  };
  rail.Press("Remove Current Waypoint");
  EXPECT_TRUE(said("No Waypoint created"));
  rail.Edit("Position on Spline (in Percent)", "40");
  EXPECT_TRUE(said("No Waypoint selected."));
  rail.Press("Create Curve");
  EXPECT_TRUE(said("Add more waypoints: The Curve has to have at least two waypoints"));
  rail.Press("Snap Carriage to closest point on Curve");
  EXPECT_TRUE(said("Warning: The CarriageNode needs to be Linked/Parented to a Spline."));
  rail.Place("CarriageNode", {1, 2, 3});
  rail.Resimulate(0, 20);
  EXPECT_TRUE(said("needs to be Linked/Parented to a Spline"));
  EXPECT_EQ(rail.Carriage(20).translation(), Vector(1, 2, 3));

  // Two waypoints in one place, the first pair or a later one, ask for endless samples.
  rail.PlaceWaypoints({{0, 0, 0}, {0, 0, 0}, {9, 0, 0}});
  rail.Press("Create Curve");
  EXPECT_TRUE(said("Waypoint01 and Waypoint02 lie too close"));
  rail.Place("Waypoint02", {9, 0, 0});
  rail.Press("Create Curve");
  EXPECT_TRUE(said("Waypoint02 and Waypoint03 lie too close"));
  rail.Place("Waypoint02", {4, 0, 1});
  rail.Press("Create Curve");
  EXPECT_TRUE(rail.messages.empty());
  rail.Resimulate(0, 20);
  EXPECT_GT(rail.Position(20), 0.0) << "without a spline the rig's own curve serves";
  // During a take the waypoints stay as they are.
  rail.session.GetAdaptor().SetCurrentTime(0.0);
  ASSERT_EQ(rail.core().StartRecording(), 0);
  rail.Press("Remove Current Waypoint");
  rail.Press("Create New Waypoint");
  rail.core().StopRecording();
  EXPECT_TRUE(rail.scene().Find("Rig_Waypoint03") && !rail.scene().Find("Rig_Waypoint04"));
}

TEST(CameraRail, ACurveThatGoesInTheMiddleOfATakeLeavesTheCarriageWhereItIs) {
  for (const bool withCarriage : {false, true}) {
    Rail rail;
    hl::SceneNode& path = rail.Straight(30, {0, 100});
    rail.onFrame = [&](int frame) {
      auto& adaptor = rail.session.GetAdaptor();
      if (frame == 30 && withCarriage) adaptor.DiscardNode(adaptor.FindSceneNode("Path"));
      if (frame == 30 && !withCarriage) path.SetCurve({});
    };
    rail.Resimulate(0, 60);
    if (withCarriage) continue;
    EXPECT_GT(rail.Carriage(30).translation().x, 1.0);
    EXPECT_TRUE(rail.Carriage(60) == rail.Carriage(31));
  }
}

TEST(CameraRail, RemovingTheSelectedWaypointSelectsANeighbourAndFreesItsName) {
  Rail rail;
  rail.PlaceWaypoints({{0, 0, 0}, {5, 0, 0}, {9, 0, 0}});
  rail.Select(1, "Speed=7");
  rail.Press("Remove Current Waypoint");
  EXPECT_EQ(rail.scene().Find("Rig_Waypoint02_lookAtTarget"), nullptr);
  EXPECT_EQ(rail.rig->GetConfig().FindAll("Current Waypoint")[0]->GetValueText(), "Waypoint03");
  EXPECT_EQ(rail.rig->GetConfig().FindAll("Speed")[0]->GetValueText(), "10");
  rail.Press("Create New Waypoint");
  EXPECT_EQ(rail.rig->GetConfig().FindAll("Current Waypoint")[0]->GetValueText(), "Waypoint02");
  for (int i = 0; i < 3; ++i) rail.Press("Remove Current Waypoint");
  EXPECT_EQ(rail.rig->GetConfig().FindAll("Current Waypoint")[0]->GetValueText(), "(none)");
  rail.Edit("Speed", "4");  // what the next one gets
  rail.Press("Create New Waypoint");
  rail.Reopen();
  EXPECT_EQ(rail.rig->GetConfig().FindAll("Speed")[0]->GetValueText(), "4");
}

}  // namespace
}  // namespace orv::tests
