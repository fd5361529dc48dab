// What every rig must hold on a core of its own, before a host comes in.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "plugins/release/all/AllRigs.h"
#include "support/FakeInterface.h"
#include "support/Templates.h"
#include "util/DataChunk.h"
#include "util/QTransform.h"

namespace orv::rws::addon {
namespace {

using tests::FakeNode;
using tests::FakeWorld;
using Quat = util::Quat<double>;

class RigBasics : public testing::TestWithParam<CCameraPlugin*> {
 protected:
  /// A new rig with all that has state switched on, in a scene that moves.
  static std::unique_ptr<FakeWorld> NewWorld() {
    auto world = std::make_unique<tests::NewWorld>(*GetParam());
    if (IsRail()) LayRail(*world);
    if (IsBelt()) LayTrack(*world);
    FakeNode& moved = world->Node(
        Present(*world, {"AttachedCam", "RelativeCageMesh", "TargetMesh", "ReferenceFrame", "Pivot",
                         "Base", "Mount", "fire trigger", "Frame"}));
    for (int i = 0; i <= 100; ++i)
      moved.keys[i / 25.0] = util::QTransform<double>{{std::sin(i / 25.0 * 5.0), i / 25.0, 0.0},
                                                      Quat::fromRotationVector({0, i * 0.02, 0})}
                                 .toMatrix();
    for (auto& element : world->core.elements) {
      const auto ends = [&](const char* end) { return tests::EndsWith(element.label, end); };
      if (ends(" Response Factor") && element.max == 1.0) *element.number = 0.3;
      if (ends(" Change Limit")) *element.number = 4.0;
      if (ends(" Integrate")) *element.flag = true;
      if (ends("l Keep Trinary State")) *element.flag = true;
    }
    if (GetParam()->GetId() == "Firepower")
      world->core.Set(
          "Spread Angle (degrees)=5; Rate of fire (rounds/s)=7; Bullets/discharge=2; Time Delay=2; "
          "Lifetime (seconds)=0.6; Air Resistance Force=0.2; Pitch Bullet=1; Rotate Bullet=1; "
          "Randomize Rotation Axis=20; Response Factor=0.5; Depth (%)=30");
    if (GetParam()->GetCategory() == "Camera" && world->core.nodes.count("AttachedCam"))
      world->core.Set("Jump Threshold=0.19");  // which some frames exceed
    return world;
  }
  /// The first of these nodes that the rig has.
  static std::string Present(FakeWorld& world, const std::vector<std::string>& names) {
    for (const std::string& name : names)
      if (world.core.nodes.count(name)) return name;
    throw std::runtime_error("none of the nodes that a rig of a known kind has");
  }
  static bool IsRail() { return GetParam()->GetId() == "Spline Speed-Controller"; }
  static bool IsBelt() { return GetParam()->GetId() == "CrawlerTracks"; }
  /// Waypoints, the first of them with a stop, and a curve through them.
  static void LayRail(FakeWorld& world) {
    double x = 0.0;
    for (const std::string name : {"Waypoint01", "Waypoint02", "Waypoint03"}) {
      world.core.Press("Create New Waypoint");
      world.Node(name).rest.setTranslation({x, std::sin(x), 0.0});
      x += 3.0;
    }
    world.core.Set("Time Delay (frames)=5");
    world.core.Press("Time Delay (frames)");
    for (const std::string label : {"Closed Curve", "Loop", "Use Orvel Curve Generation"})
      world.core.Check(label, true);
    world.core.Set("Gravity Strength=3; Banking Factor=0.01");
    world.core.Press("Create Curve");
  }
  /// A belt round two wheels.
  static void LayTrack(FakeWorld& world) {
    world.core.Press("Add Wheel");
    *world.core.Find("Number of Steps").choice = 32;
    world.core.Press("Create Track");
  }
  static void Take(FakeWorld& world, int first, int last) {
    world.Take(first, last, [&](int frame) {
      double phase = 0.0;
      for (auto& [name, control] : world.core.controls)
        control->current = name == "Start" || name == "Forced Stop" ? frame % 17 == 0
                           : name == "Fire"                         ? frame % 17 > 6
                                            : std::sin(frame * 0.37 + phase++);
    });
  }
};

INSTANTIATE_TEST_SUITE_P(RigBasics, RigBasics, testing::ValuesIn(tests::AllKinds()),
                         [](const auto& kind) { return tests::TestName(kind.param->GetId()); });

TEST_P(RigBasics, WhatIsSavedOfTheParametersComesBackFromTheBlobAlone) {
  auto world = NewWorld();
  auto untouched = NewWorld();
  for (auto& element : world->core.elements) {
    const double value = element.min + 0.37 * (element.max - element.min);
    if (element.number) *element.number = value;
    if (element.choice) *element.choice = static_cast<int>(value);
    // Of a ground that a car has not kept there is nothing to keep.
    if (element.flag && element.label != "Store Ground Mesh Data") *element.flag = !*element.flag;
  }
  const auto saved = world->Save();
  const auto opened = untouched->Reopen(saved);
  EXPECT_EQ(opened->restored, 0);
  EXPECT_EQ(opened->Save(), saved);
}

TEST_P(RigBasics, ABlobThatIsOldForeignOrDamagedLeavesTheDefaults) {
  auto world = NewWorld();
  auto fresh = world->Save();
  Take(*world, 0, 3);
  EXPECT_EQ(world->core.openSnapshots, 0);
  const auto taken = world->Save();
  int restored = 0;
  // What the rail is made of lies in its blob alone.
  if (IsRail() || IsBelt()) fresh = world->Reopen({})->Save();
  const auto savedAfter = [&](const std::vector<unsigned char>& blob) {
    const auto opened = world->Reopen(blob);
    restored = opened->restored;
    return opened->Save();
  };
  EXPECT_EQ(savedAfter({}), fresh);
  EXPECT_EQ(restored, 0);
  // Long blobs are tried at places that are not all of one kind.
  const std::size_t stride = taken.size() / 2000 * 2 + 1;
  for (std::size_t size = 1; size < taken.size(); size += 7 * stride) {
    EXPECT_EQ(savedAfter({taken.begin(), taken.begin() + static_cast<long>(size)}), fresh) << size;
    EXPECT_EQ(restored, 1) << size;  // told, so that the scene keeps its record
  }

  util::DataChunk chunk(taken.data(), taken.size());
  const std::string name = chunk.name;
  const std::string plain = name.substr(0, name.find_last_not_of("0123456789") + 1);
  const int version = std::stoi(name.substr(plain.size()));
  const std::string tooOld = plain + (version == 8101 ? "8100" : "99");
  for (const std::string& other :
       {tooOld, "Other" + name.substr(plain.size()), plain, name + "x"}) {
    chunk.name = other;
    EXPECT_EQ(savedAfter(chunk.flatten()), fresh) << other;
    EXPECT_EQ(restored, other == tooOld ? 0 : 1) << other;
  }
  chunk.name = plain + std::to_string(version + 1);  // newer is read
  EXPECT_EQ(savedAfter(chunk.flatten()), taken);
  // No byte of a payload can make a history that is out of order or not finite.
  for (std::size_t at = 60; at < taken.size(); at += stride) {
    auto bent = taken;
    bent[at] = 0xff;
    const auto saved = savedAfter(bent);
    EXPECT_TRUE(saved == savedAfter(saved)) << at;
    EXPECT_EQ(restored, 0) << at;
  }
}

TEST_P(RigBasics, NodesAreBoundOnceAndANeededOneThatIsMissingIsTold) {
  auto world = NewWorld();
  for (auto& [name, node] : world->core.nodes) EXPECT_EQ(node->keyStatesForgotten, 1) << name;
  const std::string needed =
      Present(*world, {"CarBodyMesh", "FollowCam", "RelativeCageMesh", "CarriageNode", "Arm",
                       "Plate", "Camera", "barrel", "driveWheel"});
  auto taken = std::move(world->core.nodes[needed]);
  for (auto& [name, node] : world->core.nodes)
    if (node && node->parent) node->parent = nullptr;
  world->core.nodes.erase(needed);
  EXPECT_EQ(world->Reopen({})->restored, 1);
}

}  // namespace
}  // namespace orv::rws::addon
