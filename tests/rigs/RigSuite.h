// One rig on the real core and the headless host, in the words of its user.
#pragma once

#include "rigs/HostScene.h"

namespace orv::tests {

/// A scene with an animated object, a rig on it, and a stick for each of the rig's inputs.
class RigScene : public HostScene {
 public:
  explicit RigScene(const std::string& kind, double fps = 25.0,
                    const std::vector<rws::CCameraPlugin*>& kinds = rws::addon::AllRigs())
      : HostScene(kind, "Rig", fps, kinds) {
    scene().SetRange(0.0, 8.0);
    auto& mover = scene().AddNode("Mover");
    Animate(mover, 0.04, 200, [](double t) {
      const double angle = 0.7 * std::sin(t);
      return rws::adaptor::Trs{{std::sin(3 * t), 0.3 * std::cos(17 * t), -t},
                               {0.0, std::sin(angle), 0.0, std::cos(angle)}};
    });
    for (const char* bound : {"Rig_AttachedCam", "Rig_RelativeCageMesh", "Rig_Pivot", "Rig_Base",
                              "Rig_Mount", "Rig_fire trigger"})
      if (auto* node = scene().Find(bound)) scene().Reparent(*node, &mover, 0.0);
    BindSticks();
  }

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
  void MeetAgain() override {
    HostScene::MeetAgain();
    BindSticks();
  }
  void Place(const std::string& node, const util::Vector3<double>& position) {
    auto* own = static_cast<hl::HeadlessNode*>(session.GetAdaptor().FindSceneNode("Rig_" + node));
    ASSERT_TRUE(own) << node;
    Matrix pose = own->GetWorldPose(0.0);
    pose.setTranslation(position);
    EXPECT_TRUE(own->SetWorldPose(0.0, pose, false));
  }
  /// Waypoints of the rail, made and placed in this order.
  void PlaceWaypoints(const std::vector<util::Vector3<double>>& points) {
    for (std::size_t i = 0; i < points.size(); ++i) {
      Press("Create New Waypoint");
      Place("Waypoint" + std::string(i < 9 ? "0" : "") + std::to_string(i + 1), points[i]);
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
    AddAbove("collision", util::CMesh_Box(60.0, 60.0, 1.0, {0.0, 0.0, -25.0}));
    Set("Muzzle Velocity (m/s)=60; Spread Angle (degrees)=4; Rate of fire (rounds/s)=7; "
        "Bullets/discharge=2; Time Delay=2; Lifetime (seconds)=0.8; Air Resistance Force=0.1; "
        "Pitch Bullet=1; Rotate Bullet=1; Randomize Rotation Axis=20; elasticity (%)=60; "
        "Response Factor=0.5; Depth (%)=30");
    rig->GetProperties().find("Fire")->deadzone = 0.4;
  }
  /// A belt round two wheels, and a ground that it meets.
  void LayTrack() {
    AddAbove("GravityDirection", util::CMesh_Box(20.0, 1.0, 20.0, {0.0, -0.5, 0.0}));
    Press("Add Wheel");
    Edit("Number of Steps", "24");
    Find("TemplateStep").SetPose({{0.8, 0.03, 0.0}, {}, {1.0, 1.0, 1.35}});
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
};

}  // namespace orv::tests
