#include "util/FrameGrid.h"

#include <gtest/gtest.h>

namespace orv::util {
namespace {

TEST(FrameGrid, TheFrameBeforeIsTheVeryTimeOfThatFrame) {
  for (const double fps : {23.976, 24.0, 25.0, 29.97, 30.0, 50.0, 59.94, 60.0, 120.0}) {
    const double dt = 1.0 / fps;
    for (int i = -1000; i < 100000; i += 7) {
      ASSERT_EQ(frameBefore(i * dt, dt), (i - 1) * dt) << i << " at " << fps;
      ASSERT_EQ(frameBefore(i * dt + 9e-6, dt), (i - 1) * dt) << i << " at " << fps;
      ASSERT_EQ(frameAfter(i * dt, dt), (i + 1) * dt) << i << " at " << fps;
      ASSERT_EQ(frameBefore((i + 0.4) * dt, dt), i * dt) << "between frames";
      ASSERT_EQ(frameAfter((i + 0.4) * dt, dt), (i + 1) * dt) << "between frames";
    }
  }
}

}  // namespace
}  // namespace orv::util
