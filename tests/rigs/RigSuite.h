// One rig on the real core and the headless host, in the words of its user.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/HeadlessSession.h"
#include "adaptor/headless/Scene.h"
#include "core/ConfigElement.h"
#include "core/CoreImplementation.h"
#include "core/Instance.h"
#include "plugins/release/all/AllRigs.h"
#include "plugins/release/templatetool/templatetool_CTemplateObject.h"
#include "support/QtApplication.h"
#include "unidevice/Control.h"
#include "unidevice/Property.h"
#include "util/CMesh_Box.h"

namespace orv::tests {

/// A scene with an animated object, a rig on it, and a stick for each of the rig's inputs.
class RigScene {
 public:
  using Matrix = util::Matrix<double>;
  using Poses = std::map<std::string, std::vector<Matrix>>;  ///< by node, one a frame

  RigScene(const std::string& kind, double fps,
           const std::vector<rws::CCameraPlugin*>& kinds = rws::addon::AllRigs())
      : session(kinds, rws::addon::MakeTemplatePlugin) {
    session.GetCore().runEventQueue = [] {};
    scene().setFrameRate(fps);
    scene().setRange(0.0, 8.0);
    auto& mover = scene().addNode("Mover");
    namespace hl = rws::adaptor::headless;
    hl::Channel way(hl::ChannelPath::kTranslation), turn(hl::ChannelPath::kRotation);
    std::vector<double> times, ways, turns;
    for (int i = 0; i <= 200; ++i) {
      const double t = i * 0.04, angle = 0.7 * std::sin(t);
      times.push_back(t);
      for (const double v : {std::sin(3 * t), 0.3 * std::cos(17 * t), -t}) ways.push_back(v);
      for (const double v : {0.0, std::sin(angle), 0.0, std::cos(angle)}) turns.push_back(v);
    }
    EXPECT_TRUE(way.setKeys(times, ways) && turn.setKeys(times, turns));
    mover.setChannel(way);
    mover.setChannel(turn);
    rig = session.GetCore().CreateToolFromFactory(kind, "Rig");
    if (!rig) throw std::runtime_error("no rig " + kind);
    for (const char* bound : {"Rig_AttachedCam", "Rig_RelativeCageMesh", "Rig_Pivot", "Rig_Base",
                              "Rig_Mount", "Rig_fire trigger"})
      if (auto* node = scene().find(bound)) scene().reparent(*node, &mover, 0.0);
    BindSticks();
  }
  ~RigScene() { std::remove(m_path.c_str()); }

  rws::core::CoreImplementation& core() { return session.GetCore(); }
  rws::adaptor::headless::Scene& scene() { return session.GetScene(); }
  double Frame(int i) { return i * core().GetFrameDuration(); }

  /// A take over the frames `first` to `last`, the sticks moved per frame; `within` is called once
  /// it runs.
  void Take(int first, int last, const std::function<void()>& within = {}) {
    session.GetAdaptor().SetCurrentTime(Frame(first));
    const auto move = [&](int frame) {
      for (std::size_t i = 0; i < m_sticks.size(); ++i)
        m_sticks[i]->current = std::sin(0.21 * frame + static_cast<double>(i));
    };
    move(first);
    ASSERT_EQ(core().StartRecording(), 0);
    if (within) within();
    unsigned ms = 0;
    while (core().IsRecording() && core().FrameIndex(core().GetFrameTime()) < last) {
      move(core().FrameIndex(core().GetFrameTime()) + 1);
      core().OnTimer(rws::core::RecordManager::kTakeTimer, ms++);
      ASSERT_LT(ms, 100000u);
    }
    core().StopRecording();
  }
  void Resimulate(int first, int last) {
    ASSERT_EQ(core().BeginResimulation(Frame(first), Frame(last)), 0);
    while (core().StepResimulation()) {
    }
    core().EndResimulation();
  }
  /// The file that a save writes.
  std::string Saved() {
    std::string error;
    EXPECT_TRUE(session.Save(m_path, error)) << error;
    std::ifstream in(m_path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  void OpenAgain() {
    Saved();
    std::string error;
    ASSERT_TRUE(session.Open(m_path, error)) << error;
  }
  void Reopen() {
    OpenAgain();
    for (const std::string& warning : session.TakeWarnings()) ADD_FAILURE() << warning;
    MeetAgain();
  }
  /// The rig was built anew.
  void MeetAgain() {
    rig = core().FindInstance("Rig");
    ASSERT_TRUE(rig);
    BindSticks();
  }
  Poses PosesOf(int first, int last, const std::string& prefix = "Rig_") {
    Poses poses;
    for (auto* node : scene().nodes())
      if (node->name().rfind(prefix, 0) == 0)
        for (int i = first; i <= last; ++i)
          poses[node->name().substr(prefix.size())].push_back(node->worldMatrix(Frame(i)));
    return poses;
  }
  void Press(const std::string& label) {
    for (auto* element : rig->GetConfig().findAll(label))
      EXPECT_TRUE(core().PressButton(*rig, element->id()));
  }
  void Place(const std::string& node, const util::Vector3<double>& position) {
    namespace hl = rws::adaptor::headless;
    auto* own = static_cast<hl::HeadlessNode*>(session.GetAdaptor().FindSceneNode(node));
    ASSERT_TRUE(own) << node;
    Matrix pose = own->GetWorldPose(0.0);
    pose.setTranslation(position);
    EXPECT_TRUE(own->SetWorldPose(0.0, pose, false));
  }
  /// Waypoints of the rail, made and placed in this order.
  void PlaceWaypoints(const std::vector<util::Vector3<double>>& points) {
    for (std::size_t i = 0; i < points.size(); ++i) {
      Press("Create New Waypoint");
      Place("Rig_Waypoint" + std::string(i < 9 ? "0" : "") + std::to_string(i + 1), points[i]);
    }
  }
  /// A rail on which all that has a memory happens.
  void LayRail() {
    PlaceWaypoints({{0, 0, 0}, {6, 1, 0}, {8, 0, 5}, {1, 2, 6}});
    Set("Banking Factor=0.01; Closed Curve=1; Gravity Strength=4; Loop=1; "
        "Use Orvel Curve Generation=1");
    Press("Create Curve");
    Set("Look at Target=1; Current Waypoint=1; Time Delay (frames)=7; Current Waypoint=2; "
        "Yaw Mode only=1");
    for (const char* button : {"Start", "Forced Stop"})
      rig->GetProperties().find(button)->deadzone = 0.97;
  }
  /// A gun of which all that has a memory is in use, before a wall that its projectiles meet.
  void LoadGun() {
    auto& wall = scene().addNode("Wall");
    wall.setMesh(util::CMesh_Box(60.0, 60.0, 1.0, {0.0, 0.0, -25.0}));
    scene().reparent(*scene().find("Rig_collision"), &wall, 0.0);
    Set("Muzzle Velocity (m/s)=60; Spread Angle (degrees)=4; Rate of fire (rounds/s)=7; "
        "Bullets/discharge=2; Time Delay=2; Lifetime (seconds)=0.8; Air Resistance Force=0.1; "
        "Pitch Bullet=1; Rotate Bullet=1; Randomize Rotation Axis=20; elasticity (%)=60; "
        "Response Factor=0.5; Depth (%)=30");
    rig->GetProperties().find("Fire")->deadzone = 0.4;
  }
  /// A belt round two wheels, and a ground that it meets.
  void LayTrack() {
    auto& ground = scene().addNode("Ground");
    ground.setMesh(util::CMesh_Box(20.0, 1.0, 20.0, {0.0, -0.5, 0.0}));
    scene().reparent(*scene().find("Rig_GravityDirection"), &ground, 0.0);
    Press("Add Wheel");
    Edit("Number of Steps", "24");
    scene().find("Rig_TemplateStep")->setPose({{0.8, 0.03, 0.0}, {}, {1.0, 1.0, 1.35}});
    Press("Create Track");
  }
  /// An input, held from each time on to the next.
  void Drive(const std::string& input, const std::vector<std::pair<double, double>>& keys) {
    util::AVar_Linear<double> track;
    double before = 0.0;
    for (const auto& [time, value] : keys) {
      if (time > 0.0) track.set(time - 1e-4, before);
      track.set(time, before = value);
    }
    auto& inputs = rig->GetProperties();
    for (int i = 0; i < inputs.count(); ++i)
      if (inputs.property(i)->name == input) rig->SetTrack(i, track);
  }
  /// A user's edits: "LABEL=VALUE; LABEL=VALUE".
  void Set(const std::string& edits) {
    for (std::size_t at = 0, end = 0; end != std::string::npos; at = end + 2) {
      end = edits.find("; ", at);
      const std::string one = edits.substr(at, end - at);
      Edit(one.substr(0, one.find('=')), one.substr(one.find('=') + 1));
    }
  }
  /// A user's edit.
  void Edit(const std::string& label, const std::string& value) {
    std::string problem;
    for (auto* element : rig->GetConfig().findAll(label))
      EXPECT_TRUE(core().EditParameter(*rig, element->id(), value, problem)) << problem;
  }

  rws::adaptor::headless::HeadlessSession session;
  rws::core::Instance* rig = nullptr;

 private:
  void BindSticks() {
    m_sticks.clear();
    auto& inputs = rig->GetProperties();
    for (int i = 0; i < inputs.count(); ++i) {
      unidevice::Property& input = *inputs.property(i);
      if (input.name.rfind("Spinner: ", 0) == 0) continue;
      m_sticks.push_back(
          std::make_unique<unidevice::Control>(unidevice::kInfiniteControl, "Axis", i));
      input.bind(m_sticks.back().get());
    }
  }

  std::vector<std::unique_ptr<unidevice::Control>> m_sticks;
  const std::string m_path = testing::TempDir() + "rigs_" + std::to_string(getpid()) + ".glb";
};

}  // namespace orv::tests
