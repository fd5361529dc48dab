#include "app/session/LineFollowing.h"

#include <gtest/gtest.h>

#include <atomic>
#include <random>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/RunRigs.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "support/TempFolder.h"
#include "support/WithoutTakes.h"
#include "unidevice/Property.h"
#include "util/CMesh_Box.h"

namespace orv::tests {
namespace {

using app::FollowResult;

class LineFollowing : public testing::Test {
 protected:
  /// A car on a plane, driven for 14 s: pedal and wheel held for a while each, at rest before.
  void Drive(unsigned seed) {
    session.Clear();
    auto& scene = session.GetScene();
    scene.SetRange(0.0, 14.0);
    car = session.GetCore().CreateToolFromFactory("4WheelerExt", "Car");
    ASSERT_TRUE(car);
    auto& ground = scene.AddNode("Ground");
    ground.SetMesh(util::CMesh_Box(900.0, 1.0, 900.0, {0.0, -0.5, 0.0}));
    scene.Reparent(*scene.Find("Car_GravityDirectionMesh"), &ground, 0.0);
    std::mt19937 random(seed);
    for (const char* input : {"Gas Pedal (Forw/Backw)", "Steering Wheel (Right/Left)"}) {
      const bool isGas = input[0] == 'G';
      util::AVar_Linear<double> track;
      track.set(0.5, 0.0);
      for (double t = 1.0; t < 12.0; t += 2.0) {
        const double value = static_cast<double>(random() % 2001) / 1000.0 - 1.0;
        // Mostly forwards, at times backwards or not at all.
        track.set(t, !isGas ? value : t < 2.0 || value > -0.4 ? 1.0 : value > -0.6 ? 0.0 : -1.0);
        track.set(t + 1.5, track.samples.back().value);
      }
      track.set(13.0, 0.0);
      auto& inputs = car->GetProperties();
      for (int i = 0; i < inputs.count(); ++i)
        if (inputs.property(i)->name == input) car->SetTrack(i, track);
    }
    ASSERT_TRUE(app::Resimulate(session.GetCore(), {0.0, 14.0}, monitor).began);
  }
  std::string Saved() {
    EXPECT_EQ(saveWithoutTakes(session, folder.path + "/car.glb"), "");
    return folder.Read("car.glb");
  }

  TempFolder folder;
  app::SceneSession session;
  app::Monitor monitor;
  rws::core::Instance* car = nullptr;
};

TEST_F(LineFollowing, ADriveForwardsBackwardsAndRoundIsFollowedAndUndoneAsOneStep) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    Drive(seed);
    const std::string before = Saved();
    const FollowResult copy = FollowPath(session, {"Car", "", "Second"}, monitor);
    ASSERT_EQ(copy.problem.filled(), "") << seed;
    EXPECT_EQ(copy.driver, "Second");
    EXPECT_GT(copy.off.length, 5.0) << seed;
    EXPECT_LT(copy.off.mean, 0.1) << seed;
    EXPECT_LT(copy.off.largest, 0.3) << seed << " at " << copy.off.largestTime;
    EXPECT_FALSE(copy.off.left);
    ASSERT_TRUE(session.GetAdaptor().HostUndo());
    EXPECT_TRUE(Saved() == before) << seed;

    const FollowResult own = FollowPath(session, {"Car", "", "", true}, monitor);
    EXPECT_EQ(own.off.mean, copy.off.mean) << "a copy drives as the rig itself";
    ASSERT_TRUE(session.GetAdaptor().HostUndo());
    EXPECT_TRUE(Saved() == before) << seed;
    const std::atomic<bool> stop = true;
    const app::Monitor cancelled({}, &stop);
    EXPECT_TRUE(FollowPath(session, {"Car", "Truck", ""}, cancelled).cancelled);
    EXPECT_TRUE(Saved() == before) << seed;
  }
}

}  // namespace
}  // namespace orv::tests
