// What every rig must hold on a core of its own, before a host comes in.
#include <gtest/gtest.h>

#include "plugins/release/all/AllRigs.h"
#include "support/FakeInterface.h"
#include "support/Templates.h"

namespace orv::rws::addon {
namespace {

using tests::FakeWorld;

class RigBasics : public testing::TestWithParam<CCameraPlugin*> {
 protected:
  /// A new rig with what else has parameters: a rail's waypoints, a belt.
  static std::unique_ptr<FakeWorld> NewWorld() {
    auto world = std::make_unique<tests::NewWorld>(*GetParam());
    if (GetParam()->GetId() == "Spline Speed-Controller")
      for (int i = 0; i < 2; ++i) world->core.Press("Create New Waypoint");
    if (GetParam()->GetId() == "CrawlerTracks") {
      world->core.Press("Add Wheel");
      *world->core.Find("Number of Steps").choice = 32;
      world->core.Press("Create Track");
    }
    return world;
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

}  // namespace
}  // namespace orv::rws::addon
