// The crawler's belt on the real core: counts, motion, takes, undo and bad input.
#include "rigs/BareRig.h"
#include "rigs/CarScene.h"
#include "rigs/RigSuite.h"

namespace orv::tests {
namespace {

using Vector = util::Vector3<double>;
using Matrix = util::Matrix<double>;

// Of a new rig in units of its Frame: a step, and the belt's line round a wheel.
constexpr double kLength = 0.18, kLine = 0.5 + 0.03;

/// Wheels in a row along -Z, 1.25 apart.
class Crawler : public RigScene {
 public:
  explicit Crawler(int wheels = 4, double fps = 25.0) : RigScene("CrawlerTracks", fps) {
    scene().SetRange(0.0, 40.0);
    for (int i = 1; i < wheels; ++i) Press("Add Wheel");
    Drive([](double) { return 0.0; });
  }

  int Count() {
    Press("Calculate Number of Steps");
    return static_cast<int>(Setting("Number of Steps"));
  }
  Crawler& Create() {
    Count();
    Press("Create Track");
    return *this;
  }
  void Drive(const Control& input) { Feed("Forward/Backward", 1000, input); }
  void Resize(const std::string& node, double scale) {
    auto pose = Find(node).GetPose();
    pose.scale = pose.scale * scale;
    Find(node).SetPose(pose);
  }
  int StepCount() {
    int count = 0;
    while (scene().Find(StepName(count))) ++count;
    return count;
  }
  /// In the Frame's space.
  Matrix Step(int index, int frame) {
    return World("Frame", frame).affineInverse() *
           scene().Find(StepName(index))->WorldMatrix(Frame(frame));
  }
  /// Widest gap of two neighbours' edges within these frames, and farthest way off the plane, in
  /// lengths of a step.
  double WidestGap(int first, int last) {
    const int count = StepCount();
    double widest = count < 2 ? NAN : 0.0;
    for (int frame = first; frame <= last; ++frame) {
      for (int i = 0; i < count; ++i) {
        const Matrix a = Step(i, frame), b = Step((i + 1) % count, frame);
        const Vector edge = a.transformPoint({0, 0, kLength / 2}),
                     next = b.transformPoint({0, 0, -kLength / 2});
        const double gap = std::max((next - edge).length(), std::abs(a.translation().x));
        if (!(gap <= widest)) widest = gap;  // not a number stays
      }
    }
    return widest / kLength;
  }
  /// Mean speed of the belt along itself, forward above 0 (units of the Frame per second).
  double Speed(int first, int last) {
    double sum = 0.0;
    for (int i = 0; i < StepCount(); ++i)
      for (int frame = first; frame < last; ++frame) {
        const Matrix a = Step(i, frame), b = Step(i, frame + 1);
        sum -= (b.translation() - a.translation()).dot((a.axisRow(2) + b.axisRow(2)).normalized());
      }
    return sum / StepCount() / (Frame(last) - Frame(first));
  }
  /// Mean place of the steps.
  Vector Middle(int frame) {
    Vector sum;
    for (int i = 0; i < StepCount(); ++i) sum += Step(i, frame).translation();
    return sum / StepCount();
  }
  /// Of each step, by frame.
  std::vector<std::vector<Vector>> Places(int first, int last) {
    std::vector<std::vector<Vector>> places(static_cast<std::size_t>(last - first + 1));
    for (int i = 0; i < StepCount(); ++i)
      for (int frame = first; frame <= last; ++frame)
        places[static_cast<std::size_t>(frame - first)].push_back(Step(i, frame).translation());
    return places;
  }

 private:
  static std::string StepName(int index) {
    const std::string digits = std::to_string(index + 1);
    return "Rig_step" + std::string(3 - std::min<std::size_t>(digits.size(), 3), '0') + digits;
  }
};

double Farthest(const std::vector<Vector>& a, const std::vector<Vector>& b) {
  double farthest = a.size() == b.size() ? 0.0 : NAN;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (const double off = (a[i] - b[i]).length(); !(off <= farthest)) farthest = off;
  return farthest;
}

/// Forward for 4 s, a stop, and backward from 6 s on, with soft changes.
double ThereAndBack(double t) {
  const auto ramp = [&](double from) { return std::clamp((t - from) / 0.5, 0.0, 1.0); };
  return ramp(0.0) - ramp(4.0) - ramp(6.0) + ramp(10.5);
}

TEST(CrawlerTracks, CountsAndGapsAreThoseOfTheToldLengthsAtAnyScaleOfTheFrame) {
  const auto gapOf = [](Crawler& rig, double steps) {
    rig.Edit("Number of Steps", steps);
    rig.Press("Calculate Gap");
    return rig.Setting("Gap Between Steps");
  };
  const double round = 2 * M_PI * kLine;
  for (const double scale : {1.0, 3.0}) {
    {
      Crawler one(1);
      one.Resize("Frame", scale);
      EXPECT_EQ(one.Count(), std::floor(round / kLength));
      one.Edit("Gap Between Steps", -0.1);
      EXPECT_EQ(one.Count(), std::floor(round / 0.08));
      one.Edit("Gap Between Steps", -0.181);
      EXPECT_EQ(one.Count(), std::floor(round / kLength)) << "no gap at all";
    }
    EXPECT_EQ(Crawler(4).Count(), 60);
    {
      Crawler two(2);
      two.Resize("Frame", scale);
      EXPECT_EQ(two.Count(), std::floor((round + 2.5) / kLength));
      EXPECT_NEAR(gapOf(two, 30), (round + 2.5 - 30 * kLength) / 29, 1e-9) << "one gap less";
      EXPECT_EQ(two.Count(), 29) << "which leaves no room for the thirtieth";
      // Between wheels of different radii the difference is added to the distance.
      two.Resize("bogie01", 0.5);
      const double turn = 2 * std::asin(0.25 / 1.25);
      const double arcs = kLine * (M_PI + turn) + (kLine - 0.25) * (M_PI - turn);
      EXPECT_NEAR(gapOf(two, 2), 2 * std::hypot(1.25, 0.25) + arcs - 2 * kLength, 1e-6);
    }
    Crawler outer(2);
    outer.Resize("Frame", scale);
    outer.Edit("Inner Wheel", "0");
    outer.Press("Add Wheel");
    outer.Find("bogie01").SetPose(rws::adaptor::Trs{{0.0, 0.56, -2.0}, {}, {1.0, 1.0, 1.0}});
    outer.Find("bogie02").SetPose(rws::adaptor::Trs{{0.0, 1.36, -1.0}, {}, {1.0, 1.0, 1.0}});
    const double apart = std::hypot(1.0, 0.8);
    const double tilt = M_PI / 2 - std::acos(2 * kLine / apart) - std::atan2(0.8, 1.0);
    const double told = 2.0 + 2 * std::hypot(apart, 2 * kLine) + 2 * (M_PI + 2 * tilt) * kLine;
    EXPECT_NEAR(gapOf(outer, 2), told - 2 * kLength, 1e-6);
    // No steps have no gap; that of one step, or of too long ones, changes nothing.
    EXPECT_EQ(gapOf(outer, 0), 0.0);
    EXPECT_EQ(gapOf(outer, 1), 0.0);
    auto longer = outer.Find("TemplateStep").GetPose();
    longer.scale.z = 100.0;
    outer.Find("TemplateStep").SetPose(longer);
    EXPECT_EQ(gapOf(outer, 2), 0.0);
    EXPECT_EQ(outer.Told(), Messages{});
  }
}

TEST(CrawlerTracks, ABeltLiesStillAsItWasLaidAtAnySubdivisionAndKeepsUpWithItsWheels) {
  const auto run = [](int wheels, double fps, const std::string& settings, double speed) {
    Crawler rig(wheels, fps);
    if (speed == 0.0)
      rig.AddAbove("GravityDirection", util::CMesh_Box(20.0, 1.0, 20.0, {0.0, -0.5, 0.0}));
    rig.Set(settings);
    rig.Create();
    Crawler::Animate(rig.Find("Frame"), 4.0, 1, [&](double t) {
      return rws::adaptor::Trs{{0.0, 0.0, -t * speed}, {}, {1, 1, 1}};
    });
    const auto laid = rig.Places(0, 0).front();
    const int last = static_cast<int>(0.8 * fps);
    rig.Resimulate(0, last);
    EXPECT_EQ(rig.Told(), Messages{});
    const auto places = rig.Places(0, last);
    EXPECT_LT(Farthest(places[1], laid), 1e-3) << "at first";
    EXPECT_LT(Farthest(places[last], places[last - 1]), 1e-4) << "at rest";
    EXPECT_LT(Farthest(places[last], laid), 0.01) << "on its wheels and the ground";
    EXPECT_NEAR(rig.Middle(last).y, speed == 0.0 ? 0.56 : 0.44, 0.05);
  };
  run(4, 25.0, "SubFrames=0; Gravity=100; Accuracy=4", 0.0);
  run(2, 12.0, "SubFrames=1; Accuracy=4; Flaccidity Reduction=10", 0.0);
  run(4, 25.0, "SubFrames=50; Accuracy=8", 0.0);
  run(4, 25.0, "SubFrames=10; Accuracy=8", 20.0);
  Crawler rig;
  rig.Edit("Gravity", 1000);
  rig.Create().Edit("Accuracy", 1);
  rig.Place("driveWheel", {0, 0, 1000});
  rig.Resimulate(0, 10);
  EXPECT_EQ(rig.Told(),
            Messages{"Warning: The track has left its wheels or gone through the ground. "
                     "Try a Gravity of 100 at most."});
}

TEST(CrawlerTracks, ABeltRoundFourWheelsStaysWholeThereAndBackWithEachOfTheProfiles) {
  for (const auto& [profile, widest, sag] : {std::tuple{"Tank", 0.1, 0.1},
                                             {"Rubber Track", 0.3, 0.26},
                                             {"Snow Cat", 0.3, 0.26},
                                             {"Loose Chain", 0.3, 0.26}}) {
    SCOPED_TRACE(profile);
    Crawler rig;
    EXPECT_EQ(rig.core().LoadProfile("Rig", profile), "");
    rig.Create().Drive(ThereAndBack);
    ASSERT_EQ(rig.StepCount(), 60);
    rig.Resimulate(0, 300);
    EXPECT_LT(rig.WidestGap(0, 300), widest);
    const double full = rig.Setting("Maximum (Input Driven) Rotation Speed") * kLine;
    for (const auto& [first, last, speed] :
         {std::tuple{25, 95, 1.0}, {125, 150, 0.0}, {175, 255, -1.0}, {290, 300, 0.0}})
      EXPECT_NEAR(rig.Speed(first, last) / full, speed, 0.05) << first;
    EXPECT_NEAR(rig.Middle(300).y, 0.56, sag) << "round the wheels";
    EXPECT_EQ(rig.Told(), Messages{});
  }
}

TEST(CrawlerTracks, AReopenedSceneGoesOnWhereTheTakeWasCut) {
  Crawler rig;
  rig.Edit("Accuracy", 7);
  rig.Create().Drive(ThereAndBack);
  rig.Resimulate(0, 120);
  const auto whole = rig.Places(0, 120);
  for (const int cut : {1, 37, 80}) {
    rig.Resimulate(0, cut);
    rig.Reopen();
    rig.Resimulate(cut, 120);
    const auto places = rig.Places(0, 120);
    EXPECT_LT(Farthest(places[cut + 1], whole[cut + 1]), 0.05 * kLength) << cut;
    EXPECT_LT(Farthest(places[120], whole[120]), kLength) << cut;
    EXPECT_LT(rig.WidestGap(cut, 120), 0.1) << cut;
  }
}

TEST(CrawlerTracks, WheelsTurnAsTheBeltTakesThem) {
  Crawler rig(2);
  rig.Resize("bogie01", 0.5);
  rig.Edit("Static Wheel", "1");
  rig.Press("Add Support Wheel");
  rig.Edit("Static Wheel", "0");
  rig.Edit("Inner Wheel", "0");
  rig.Edit("Track Wheel", "0");
  rig.Press("Add Wheel");
  for (int i = 0; i < rig.rig->GetProperties().count(); ++i)
    rig.rig->GetProperties().property(i)->deadzone = 0.0;
  rig.Create().Drive(Always(0.5));
  rig.Resimulate(0, 10);
  const auto turn = [&](const std::string& wheel) {
    const Vector up = rig.World(wheel, 10).axisRow(1);
    return std::atan2(up.z, up.y);
  };
  const double drive = -0.5 * 5.0 * 0.4;  // its top goes to -Z
  EXPECT_NEAR(turn("driveWheel"), drive, 1e-9);
  EXPECT_NEAR(turn("bogie01"), drive * kLine / (kLine - 0.25), 1e-9);
  EXPECT_NEAR(turn("bogie02"), -drive, 1e-9) << "on the outside of the belt";
  EXPECT_EQ(turn("supportBogie01"), 0.0) << "static";
}

TEST(CrawlerTracks, AScaledTurnedOrMovingFrameCarriesTheSameBelt) {
  struct Run {
    std::vector<std::vector<Vector>> places;
    double speed, gap;
  };
  const auto run = [](const Matrix& pose, bool moves) {
    Crawler rig(2);
    rig.Find("Frame").SetPose(rws::adaptor::Decompose(pose));
    rig.Create().Drive(ThereAndBack);
    // As on a vehicle that drives a curve: 6 m/s, a circle in 6 s.
    if (moves)
      Crawler::Animate(rig.Find("Frame"), rig.Frame(1), 100, [](double t) {
        const double angle = t * M_PI / 3, radius = 6.0 / (M_PI / 3);
        return rws::adaptor::Trs{{radius * (std::cos(angle) - 1), 0.0, -radius * std::sin(angle)},
                                 {0.0, std::sin(angle / 2), 0.0, std::cos(angle / 2)}};
      });
    rig.Resimulate(0, 90);
    return Run{rig.Places(0, 90), rig.Speed(25, 90), rig.WidestGap(0, 90)};
  };
  Matrix pose = Matrix::rotationAxisAngle(40.0, 0.6, 0.0, 0.8);
  pose.setRowLengths({3.0, 3.0, 3.0});
  pose.setTranslation({20.0, -3.0, 7.0});
  const Run plain = run({}, false), other = run(pose, false), moving = run({}, true);
  // Two wheels' slack swings as it will; a rounding shows in it.
  for (const auto& [frame, most] : {std::pair{0, 0.01}, {5, 0.05}, {12, 0.05}, {90, 0.3}})
    EXPECT_LT(Farthest(other.places[frame], plain.places[frame]), most * kLength) << frame;
  EXPECT_LT(other.gap, 0.1);
  EXPECT_NEAR(other.speed, plain.speed, 0.01);
  EXPECT_LT(moving.gap, 0.3);
  EXPECT_NEAR(moving.speed, plain.speed, 0.1);
}

TEST(CrawlerTracks, FallingIsTheSameAtAnySubdivisionAndNegativeGravityLifts) {
  for (const double gravity : {40.0, -10.0}) {
    for (const auto& [subFrames, reduction] :
         {std::pair{0.0, 1.0}, {10.0, 1.0}, {4.0, 3.0}, {10.0, 10.0}}) {
      Crawler rig(2);
      rig.Create().Edit("Gravity", gravity);
      rig.Edit("SubFrames", subFrames);
      rig.Edit("Flaccidity Reduction", reduction);
      // With its wheels far off, and the belt on the side of the second, nothing holds it.
      rig.Place("driveWheel", {0, 0, 1000});
      rig.Place("bogie01", {0, 0, 500});
      const double before = rig.Middle(0).y;
      rig.Resimulate(0, 25);
      EXPECT_NEAR((before - rig.Middle(25).y) / (gravity / 2), 1.0, 0.05)
          << subFrames << " " << reduction;
      EXPECT_LT(rig.WidestGap(0, 25), 0.1);
    }
  }
}

TEST(CrawlerTracks, TheGroundIsTheParentOfTheGravityDirectionOrWhatIsBelowItAndItsChildren) {
  for (const auto& [scale, grouped] : {std::pair{1.0, false}, {3.0, false}, {3.0, true}}) {
    Crawler rig(2);
    rig.Resize("Frame", scale);
    auto* const group = grouped ? &rig.scene().AddNode("Group") : nullptr;
    auto& ground = rig.scene().AddNode("Ground", group);
    auto& block = rig.scene().AddNode("Block");
    ground.SetMesh(
        GridMesh([](double x, double) { return x * 0.1; }, Rows(-4, 4, 8), Rows(-4, 4, 8)));
    ground.SetPose(rws::adaptor::Trs{{0.0, -0.5 * scale, 0.0}, {}, {2.0, 2.0, 2.0}});
    block.SetMesh(util::CMesh_Box(8.0 * scale, 1.0 * scale, 2.0 * scale));
    block.SetPose(rws::adaptor::Trs{{0.0, -0.5 * scale, -1.6 * scale}, {}, {1.0, 1.0, 1.0}});
    rig.scene().Reparent(rig.Find("GravityDirection"), grouped ? group : &ground, 0.0);
    rig.scene().Reparent(block, grouped ? group : &rig.Find("GravityDirection"), 0.0);
    rig.Create();
    rig.Place("driveWheel", Vector(0, 0, 1000) * scale);
    rig.Place("bogie01", Vector(0, 0, 500) * scale);
    rig.Resimulate(0, 75);
    int onBlock = 0;
    for (int i = 0; i < rig.StepCount(); ++i) {
      const Vector at = rig.Step(i, 75).translation();
      ASSERT_GT(at.y, -0.5 + at.x * 0.1 - 0.01) << i << " through the ground";
      if (std::abs(at.z + 1.6) > 0.95) continue;
      ASSERT_GT(at.y, 0.0) << i << " through the block";
      ++onBlock;
    }
    EXPECT_GT(onBlock, 0);
  }
}

TEST(CrawlerTracks, KeysLieOnFramesAndWhereToldOnSubFrames) {
  for (const auto& [subFrames, setSubFrames, keys] :
       {std::tuple{0, "0", 10u}, {0, "1", 10u}, {3, "0", 10u}, {3, "1", 40u}}) {
    Crawler rig(2);
    rig.Create().Drive(Always(1.0));
    rig.Edit("SubFrames", subFrames);
    rig.Edit("Set keyframes on SubFrames", setSubFrames);
    rig.Resimulate(0, 10);
    for (const char* name : {"step001", "driveWheel"}) {
      const hl::Channel* way = rig.Find(name).GetChannel(hl::ChannelPath::kRotation);
      ASSERT_TRUE(way);
      const auto& times = way->GetTimes();
      const auto first = std::upper_bound(times.begin(), times.end(), 1e-6);
      ASSERT_EQ(static_cast<unsigned>(times.end() - first), keys) << name << subFrames;
      for (unsigned i = 0; i < keys; ++i) EXPECT_NEAR(first[i], 0.4 * (i + 1) / keys, 1e-9);
    }
  }
}

TEST(CrawlerTracks, EachActionIsOneStepOfUndoAndAUsersNodeOutlivesWhatItHangsOn) {
  Crawler rig(2);
  auto& adaptor = rig.session.GetAdaptor();
  rig.scene().AddNode("Own", &rig.Find("bogie01"));
  rig.Edit("Number of Steps", 8);
  const auto press = [&](const std::string& action) {
    const std::string before = rig.Saved();
    rig.Press(action);
    const std::string after = rig.Saved();
    EXPECT_NE(after, before) << action;
    ASSERT_TRUE(adaptor.HostUndo());
    EXPECT_EQ(rig.Saved(), before) << action;
    ASSERT_TRUE(adaptor.HostRedo());
    EXPECT_EQ(rig.Saved(), after) << action;
  };
  const auto home = [&] { return rig.scene().Find("Own")->GetParent(); };
  for (const char* action :
       {"Add Wheel", "Remove Wheel", "Add Support Wheel", "Remove Support Wheel"})
    press(action);
  press("Remove Wheel");
  EXPECT_EQ(home(), &rig.Find("Frame"));
  EXPECT_NEAR(home()->WorldMatrix(0.0).translation().z, 0.0, 1e-12);
  EXPECT_NEAR(rig.scene().Find("Own")->WorldMatrix(0.0).translation().z, -1.25, 1e-12);
  for (const char* action : {"Add Wheel", "Calculate Number of Steps", "Calculate Gap",
                             "Create Track", "Add Step", "Remove Step"})
    press(action);
  rig.scene().Reparent(*rig.scene().Find("Own"), &rig.Find("step007"), 0.0);
  rig.Edit("Number of Steps", 33);
  rig.answer = rws::kAnswerNo;
  const std::string kept = rig.Saved();
  rig.Press("Create Track");
  EXPECT_EQ(rig.Saved(), kept);
  rig.answer = rws::kAnswerYes;
  press("Create Track");
  EXPECT_EQ(rig.StepCount(), 33);
  EXPECT_EQ(home(), &rig.Find("Frame"));
  const std::string asked =
      "Create new track: Track already created. Do you want to remove current track and create a "
      "new one?";
  EXPECT_EQ(rig.Told(), (Messages{asked, asked}));
  rig.Press("Select All Steps in Track");
  EXPECT_EQ(adaptor.GetSelection().size(), 33u);
  press("Remove Track");
  ASSERT_TRUE(adaptor.HostUndo());
  rig.Resimulate(0, 20);
  EXPECT_LT(rig.WidestGap(0, 20), 0.1) << "the track that is back runs";
  EXPECT_EQ(rig.Told(), Messages{});
}

TEST(CrawlerTracks, WhatIsNotPossibleIsToldInItsWords) {
  const auto no = [](const std::string& text) {
    return Messages{"Operation not possible: " + text};
  };
  Crawler rig(1);
  const auto told = [&](const std::string& action) {
    rig.Press(action);
    return rig.Told();
  };
  EXPECT_EQ(told("Remove Wheel"), no("Cannot remove the driveWheel."));
  EXPECT_EQ(told("Remove Support Wheel"), no("Cannot remove any more Support Wheels."));
  for (const char* action :
       {"Remove Track", "Add Step", "Remove Step", "Select All Steps in Track"})
    EXPECT_EQ(told(action), no("No track attached")) << action;
  EXPECT_EQ(told("Create Track"),
            Messages{"Error: Track could not be created. Number of steps was set to less than 1. "
                     "Increase number of steps to create the track."});
  rig.Press("Add Wheel");
  rig.Find("bogie01").SetPose(rig.Find("driveWheel").GetPose());
  EXPECT_EQ(told("Calculate Number of Steps"),
            Messages{"Warning: bogie01 has the same position as the DriveWheel, moving it out of "
                     "wheel."});
  EXPECT_NEAR(rig.Find("bogie01").WorldMatrix(0).translation().z, -1.1, 1e-9);
  const Messages mirrored{
      "Error: The Frame is mirrored or has a scale of 0. Give it a positive scale, and turn it "
      "instead."};
  rig.Find("Frame").SetPose(rws::adaptor::Trs{{}, {}, {-1, 1, 1}});
  EXPECT_EQ(told("Create Track"), mirrored);
  rig.Find("Frame").SetPose(rws::adaptor::Trs{});
  rig.Press("Create Track");
  rig.Find("Frame").SetPose(rws::adaptor::Trs{{}, {}, {1, 1, -1}});
  rig.Resimulate(0, 1);
  EXPECT_EQ(rig.Told(), mirrored);
  rig.Find("Frame").SetPose(rws::adaptor::Trs{});
  for (const char* action : {"Add Wheel", "Add Support Wheel"})
    EXPECT_EQ(told(action), no("Remove track before adding more wheels."));
  EXPECT_EQ(told("Remove Wheel"),
            no("The track must be removed before any wheels can be removed."));
  EXPECT_EQ(told("Remove Support Wheel"),
            no("The track must be removed before any Support Wheels can be removed."));
  const Messages warning{
      "Warning: Difference in scale between Frame and driveWheel too large. the Frame and the "
      "Drivewheel should have roughly the same scale for best results. This may cause unwanted "
      "behaviour of the tracks."};
  for (const double scale : {0.49, 0.5, 2.0, 2.01}) {
    rig.Find("driveWheel").SetChannel(hl::Channel(hl::ChannelPath::kScale));  // the last take's
    rig.Find("driveWheel").SetPose(rws::adaptor::Trs{{0, 0.56, 0}, {}, Vector(1, 1, 1) * scale});
    rig.Resimulate(0, 1);
    EXPECT_EQ(rig.Told(), scale == 0.5 || scale == 2.0 ? Messages{} : warning) << scale;
  }
}

TEST(CrawlerTracks, EachFailureOfTheHostOrAFileIsToldInItsWords) {
  Crawler world(1);
  BareRig* rig = nullptr;
  const auto told = [&] {
    rig->refused.clear();
    return world.Told();
  };
  for (const std::string node : {"driveWheel", "TemplateStep"}) {
    rig = &Strip(world, "CreateMeshNode " + node);
    EXPECT_EQ(told(), Messages{node == "TemplateStep" ? "Error: Could not create TemplateStep"
                                                      : "Error: Could not create Wheel Node"});
  }
  rig = &Strip(world);
  const auto press = [&](const std::string& button, const std::string& refused = {}) {
    rig->refused = refused;
    world.Press(button);
    return told();
  };
  EXPECT_EQ(press("Add Wheel", "CreateMeshNode"), Messages{"Error: Could not create Wheel Node"});
  press("Add Wheel");
  press("Calculate Number of Steps");
  for (const auto& [refused, text] :
       {std::pair{"CreateMeshNode caterpillar", "Could not create StepActor..."},
        {"CreateMeshNode step003", "Could not create StepActor..."},
        {"IsValid step003", "no StepActor"}}) {
    EXPECT_EQ(press("Create Track", refused), Messages{std::string("Error: ") + text}) << refused;
    EXPECT_EQ(world.StepCount(), 0);
    EXPECT_FALSE(world.scene().Find("Rig_caterpillar"));
  }
  for (const auto& [refused, text] : {std::pair{"DeleteNode step003", "Could'nt delete track."},
                                      {"DeleteNode caterpillar", "Could'nt delete track.."}}) {
    press("Create Track");
    EXPECT_EQ(press("Remove Track", refused), Messages{std::string("Deletion Error: ") + text})
        << refused;
  }
  press("Create Track");
  world.Resimulate(0, 2);
  EXPECT_EQ(told(), Messages{});
  const auto blob = rig->Save();
  util::xml::Tag record("");
  rig->WriteRecord(record);
  rig->refused = "SetUserData";
  rig->ClearUserData();
  EXPECT_EQ(rig->GetRig()->Store(), 1);
  EXPECT_EQ(told(), Messages{"Error: Error when saving. Please try again."});

  auto& manager = static_cast<rws::core::InstanceManager&>(world.core());
  const auto opened = [&](const std::string& list, const std::string& field) {
    util::DataChunk chunk(blob.data(), blob.size());
    for (auto& child : chunk.children) {
      if (child.name != list) continue;
      auto& owner = list == "track" ? child.children.back().children.at(1) : child;
      auto& fields = list == "wheels" ? owner.children.at(1).children : owner.children;
      for (auto& one : fields)
        if (one.name == field) one.payload.push_back('x');
    }
    EXPECT_EQ(BareRig(manager, "CrawlerTracks").Open(record, chunk.flatten()), 1) << field;
    return world.Told();
  };
  const std::string again = "Error: Error when loading, try again.";
  EXPECT_EQ(opened("wheels", "name"), (Messages{"Error: Could not load Wheel", again}));
  for (const char* value : {"stepDescInfo", "stepBodyDescInfo", "linVelocity", "angVelocity"})
    EXPECT_EQ(opened("track", value), (Messages{"Error: Could not load Step", again})) << value;
  EXPECT_EQ(opened("crawlerTracks", "gravity"), Messages{again});
  const std::set<std::string> firmness{"flaccid",           "trackDamping", "transFlaccid",
                                       "trackTransDamping", "twistFlaccid", "trackTwistDamping"};
  // Next to none of these is brought to the least that a user can set.
  for (const double value : {0.0099, 0.0105}) {
    util::DataChunk chunk(blob.data(), blob.size());
    for (auto& child : chunk.children)
      for (auto& field : child.children)
        if (child.name == "crawlerTracks" && firmness.count(field.name))
          std::memcpy(field.payload.data(), &value, sizeof value);
    BareRig other(manager, "CrawlerTracks");
    EXPECT_EQ(other.Open(record, chunk.flatten()), 0);
    const auto saved = other.Save();
    for (const std::string& field : firmness) {
      double kept = 0.0;
      util::DataChunk(saved.data(), saved.size()).getChunk("crawlerTracks").getValue(field, kept);
      EXPECT_EQ(kept, std::max(value, 0.01)) << field;
    }
  }

  for (const auto& [node, text] : {std::pair{"step002", "Error when updating, can't find steps."},
                                   {"bogie01", "Could not create an actor, no wheelNode"}}) {
    auto& adaptor = world.session.GetAdaptor();
    adaptor.DiscardNode(adaptor.FindSceneNode(std::string("Rig_") + node));
    world.Resimulate(0, 2);
    EXPECT_EQ(told(), Messages{std::string("Error: ") + text});
  }
}

}  // namespace
}  // namespace orv::tests
