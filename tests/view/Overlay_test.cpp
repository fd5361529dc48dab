// What is shown over pictures, against the scene.
#include "app/studio/view/overlay/Overlay.h"

#include <QImage>
#include <QPainter>
#include <QPalette>
#include <cmath>
#include <map>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/HeadlessSession.h"
#include "adaptor/headless/Scene.h"
#include "app/studio/view/SceneFrames.h"
#include "app/studio/view/overlay/OverlayView.h"
#include "app/studio/view/packet/ViewCamera.h"
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "plugins/release/all/AllRigs.h"
#include "support/Display.h"

namespace orv::tests {

namespace {

using namespace app::view;
using namespace rws::adaptor::headless;
using util::Matrix;
using util::Vector3;
using Poses = std::map<std::string, std::vector<Matrix<double>>>;

constexpr int kFrames = 40;

/// A car on the plane that drives with a pedal down.
class Overlay : public testing::Test {
 protected:
  Overlay() : session(rws::addon::AllRigs()) {
    scene().SetRange(0.0, 2.0);
    rig = core().CreateToolFromFactory("4WheelerExt", "Car");
    util::AVar_Linear<double> track;
    for (int i = 0; i <= kFrames; ++i) track.set(i * 0.04, i < 3 ? 0.0 : 1.0);
    for (int i = 0; i < rig->GetProperties().count(); ++i)
      if (rig->GetProperties().property(i)->name.rfind("Gas", 0) == 0) rig->SetTrack(i, track);
  }
  rws::core::CoreImplementation& core() { return session.GetCore(); }
  Scene& scene() { return session.GetScene(); }
  HeadlessAdaptor& host() { return session.GetAdaptor(); }

  /// `look` at each frame of the run, while it goes on.
  void Resimulate(const std::function<void(int frame)>& look = {}) {
    ASSERT_EQ(core().BeginResimulation(0.0, kFrames * 0.04), 0);
    if (look) look(0);
    for (int i = 1; core().StepResimulation(); ++i)
      if (look) look(i);
    core().EndResimulation();
  }
  void Edit(const std::string& label, const std::string& value) {
    std::string problem;
    EXPECT_FALSE(rig->GetConfig().FindAll(label).empty()) << label;
    for (auto* element : rig->GetConfig().FindAll(label))
      EXPECT_TRUE(core().EditParameter(*rig, element->GetId(), value, problem)) << problem;
  }
  Poses PosesNow() {
    Poses poses;
    for (SceneNode* node : scene().GetNodes())
      for (int i = 0; i <= kFrames; ++i)
        poses[node->GetName()].push_back(node->WorldMatrix(i * 0.04));
    return poses;
  }
  static void ExpectFilm(const TakeFilm* film, const Poses& kept, int first, int last) {
    ASSERT_TRUE(film);
    ASSERT_FALSE(film->GetActors().empty());
    for (int frame = first; frame <= last; ++frame)
      for (const TakeFilm::Actor& actor : film->GetActors()) {
        ASSERT_TRUE(film->Covers(frame * 0.04)) << frame;
        const auto& pose = kept.at(actor.name)[static_cast<std::size_t>(frame)];
        Matrix<double> filmed;
        if (film->GetPose(actor, frame * 0.04, filmed))
          EXPECT_TRUE(TakeFilm::LookSame(filmed, pose)) << actor.name << " " << frame;
        else
          EXPECT_LT(pose.axisRow(0).length(), 1e-2) << actor.name << " can be seen";
      }
  }

  HeadlessSession session;
  rws::core::Instance* rig = nullptr;
};

}  // namespace

TEST_F(Overlay, TheGhostIsTheTakeThatTheSceneDoesNotShow) {
  app::view::Overlay overlay(core(), host());
  const auto look = [&](int) { overlay.Read(); };
  Resimulate(look);
  overlay.Read();
  EXPECT_FALSE(overlay.GetGhost()) << "there is no other take";
  const Poses first = PosesNow();
  Edit("Gas Pedal (Forw/Backw) Maximum", "1.5");
  // Only some frames are painted.
  Resimulate([&](int frame) {
    if (frame % 7 != 0) return;
    overlay.Read();
    ExpectFilm(overlay.GetGhost(), first, 0, kFrames);
  });
  overlay.Read();
  const Poses second = PosesNow();
  ExpectFilm(overlay.GetGhost(), first, 0, kFrames);
  // One that is thrown away stands beside what is there again.
  EXPECT_TRUE(core().Undo());
  overlay.Read();
  ExpectFilm(overlay.GetGhost(), second, 0, kFrames);
  EXPECT_TRUE(core().Redo());
  overlay.Read();
  ExpectFilm(overlay.GetGhost(), first, 0, kFrames);

  // A program that has filmed nothing yet has the keys.
  app::view::Overlay other(core(), host());
  Edit("Gas Pedal (Forw/Backw) Maximum", "3");
  Resimulate([&](int) { other.Read(); });
  other.Read();
  ExpectFilm(other.GetGhost(), second, 0, kFrames);

  // In the packet it stands where it was, and what has not moved is not doubled.
  SceneFrames frames(host());
  OverlayView view(other, frames);
  FramePacket packet;
  packet.origin = {3.0, 1.0, -2.0};
  for (const int frame : {0, 30}) {
    host().SetCurrentTime(frame * 0.04);
    frames.Read();
    frames.Write(0, packet);
    packet.lines.clear();
    view.Read();
    view.Write(packet, 720);
    if (frame == 0) {
      EXPECT_TRUE(packet.ghosts.empty());
    }
  }
  ASSERT_FALSE(packet.ghosts.empty());
  const auto stands = [&](const std::string& name) {
    const Vector3<double> place = second.at(name)[30].translation() - packet.origin;
    return std::any_of(
        packet.ghostInstances.begin(), packet.ghostInstances.end(), [&](const Instance& one) {
          return (Vector3<double>(one.pose[3], one.pose[7], one.pose[11]) - place).length() < 1e-4;
        });
  };
  EXPECT_TRUE(stands("Car_CarBodyMesh"));
  EXPECT_TRUE(stands("Car_WheelMesh_FL"));
  // Once warm, nothing is allocated for lines and ghosts.
  const void* const ghosts = packet.ghostInstances.data();
  ASSERT_EQ(packet.lines.size(), 1u);
  const void* const strokes = packet.lines[0]->strokes.data();
  packet.lines.clear();
  view.Read();
  view.Write(packet, 720);
  EXPECT_EQ(packet.ghostInstances.data(), ghosts);
  EXPECT_EQ(packet.lines[0]->strokes.data(), strokes);
}

TEST_F(Overlay, AGhostHasTheRoundsThatItFired) {
  rig = core().CreateToolFromFactory("Firepower", "Gun");
  util::AVar_Linear<double> track;
  for (int i = 0; i <= kFrames; ++i) track.set(i * 0.04, i < 3 ? 0.0 : 1.0);
  for (int i = 0; i < rig->GetProperties().count(); ++i)
    if (rig->GetProperties().property(i)->name == "Fire") rig->SetTrack(i, track);
  Edit("Rate of fire (rounds/s)", "5");
  Edit("Muzzle Velocity (m/s)", "40");
  app::view::Overlay overlay(core(), host());
  Resimulate([&](int) { overlay.Read(); });
  overlay.Read();
  EXPECT_FALSE(overlay.GetGhost());
  Resimulate([&](int) { overlay.Read(); });
  overlay.Read();
  EXPECT_FALSE(overlay.GetGhost()) << "the same rounds, made anew";
  const Poses first = PosesNow();
  const auto rounds = [&] {
    std::size_t count = 0;
    for (const TakeFilm::Actor& actor : overlay.GetGhost()->GetActors()) count += actor.isRound;
    return count;
  };
  Edit("Muzzle Velocity (m/s)", "20");
  Edit("Rate of fire (rounds/s)", "2");
  Resimulate([&](int frame) {
    if (frame % 6 != 0) return;
    overlay.Read();
    ExpectFilm(overlay.GetGhost(), first, 0, kFrames);
  });
  overlay.Read();
  const Poses second = PosesNow();
  ExpectFilm(overlay.GetGhost(), first, 0, kFrames);
  EXPECT_GE(rounds(), 7u);
  // More of them than the scene has now, where they were.
  SceneFrames frames(host());
  OverlayView view(overlay, frames);
  FramePacket packet;
  host().SetCurrentTime(36 * 0.04);
  frames.Read();
  frames.Write(0, packet);
  view.Read();
  view.Write(packet, 720);
  for (const auto& [name, poses] : first) {
    if (name.rfind("bullet_", 0) != 0 || poses[36].axisRow(0).length() < 0.5) continue;
    const Vector3<double> place = poses[36].translation();
    EXPECT_TRUE(std::any_of(
        packet.ghostInstances.begin(), packet.ghostInstances.end(),
        [&](const Instance& one) {
          return (Vector3<double>(one.pose[3], one.pose[7], one.pose[11]) - place).length() < 1e-3;
        }))
        << name;
  }
  EXPECT_TRUE(core().Undo());
  overlay.Read();
  ExpectFilm(overlay.GetGhost(), second, 0, kFrames);
  EXPECT_LE(rounds(), 4u);
}

TEST_F(Overlay, PathsArePlacesByFrameAndARunIsTheSameWithAllOfItShown) {
  Resimulate();
  const Poses alone = PosesNow();
  app::view::Overlay overlay(core(), host());
  for (int kind = 0; kind < kOverlayKindCount; ++kind)
    overlay.Show(static_cast<OverlayKind>(kind), true);
  SceneNode& lamp = scene().AddNode("Lamp");
  overlay.Select({&lamp, scene().Find("Car_WheelMesh_BL")});
  std::size_t bars = 0;
  const auto expectPaths = [&](int last) {
    const auto& paths = overlay.GetPaths().GetPaths();
    ASSERT_EQ(paths.size(), 3u) << "of the selection and its rig";
    for (const NodePaths::Path& path : paths) {
      const std::string name = path.node->GetSceneName();
      if (name == "Lamp") {
        EXPECT_TRUE(path.points.empty()) << "it stands";
        continue;
      }
      ASSERT_EQ(path.points.size(), static_cast<std::size_t>(last) + 1) << name;
      for (std::size_t i = 0; i < path.points.size() && i <= kFrames; ++i)
        EXPECT_EQ(path.points[i], alone.at(name)[i].translation()) << name << " " << i;
    }
  };
  Resimulate([&](int frame) {
    overlay.Read();
    expectPaths(frame);
    ASSERT_EQ(overlay.GetMarks().size(), 1u);
    EXPECT_EQ(overlay.GetMarks()[0].rays.size(), 4u);
    for (const auto& performer : overlay.GetPerformers()) bars += performer.inputs.size();
  });
  EXPECT_GT(bars, 0u);
  overlay.Read();
  expectPaths(50);
  EXPECT_TRUE(overlay.GetPerformers().empty());
  for (const auto& [name, poses] : alone)
    for (std::size_t i = 0; i < poses.size(); ++i)
      for (int k = 0; k < 16; ++k)
        ASSERT_EQ(scene().Find(name)->WorldMatrix(static_cast<double>(i) * 0.04)[k], poses[i][k]);
  // What is gone is no longer looked at.
  session.New();
  overlay.Read();
  EXPECT_TRUE(overlay.GetPaths().GetPaths().empty());
  EXPECT_TRUE(overlay.GetMarks().empty());
}

TEST_F(Overlay, NamesStandAtTheirNodesAndNotOnEachOther) {
  for (int i = 0; i < 60; ++i) {
    rws::adaptor::Trs pose;
    pose.translation = {0.3 * i, 0.1 * (i % 7), -5.0};
    scene().AddNode("Node " + std::to_string(i)).SetPose(pose);
  }
  app::view::Overlay overlay(core(), host());
  overlay.Show(kOverlayNames, true);
  std::vector<const SceneNode*> nodes;
  for (SceneNode* node : scene().GetNodes())
    if (node->GetName().rfind("Node", 0) == 0) nodes.push_back(node);
  overlay.Select(nodes);
  overlay.Read();
  SceneFrames frames(host());
  OverlayView view(overlay, frames);
  QImage image(640, 360, QImage::Format_ARGB32_Premultiplied);
  FramePacket packet;
  OrbitEye eye;
  eye.distance = 20.0;
  const double aspect = 640.0 / 360.0;
  SetEye(packet, eye.GetPose(), {}, aspect);
  QPainter painter(&image);
  view.PaintNames(painter, packet, image.rect(), QPalette());
  const auto& places = view.GetNamePlaces();
  ASSERT_GE(places.size(), 5u);
  EXPECT_LT(places.size(), 60u);
  for (std::size_t i = 0; i < places.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) EXPECT_FALSE(places[i].intersects(places[k]));
    // The ray through where the text begins passes its node.
    Vector3<double> origin, direction;
    const QPointF at = places[i].topLeft() + QPointF(-6.0, 0.5 * places[i].height());
    RayThrough(eye.GetPose(), {}, aspect, at.x() / 640.0, 1.0 - at.y() / 360.0, origin, direction);
    direction.normalize();
    double nearest = 1e9;
    for (const SceneNode* node : scene().GetNodes())
      nearest = std::min(nearest,
                         direction.cross(node->WorldMatrix(0.0).translation() - origin).length());
    EXPECT_LT(nearest, 1e-6);
  }
}

}  // namespace orv::tests
