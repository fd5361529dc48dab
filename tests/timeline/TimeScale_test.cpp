// Frames on a line, bars and the clock of playback.
#include "app/studio/timeline/model/TimeScale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "app/studio/timeline/model/Bars.h"
#include "app/studio/timeline/model/PlayClock.h"

namespace orv::tests {

using namespace app::timeline;

TEST(TimeScale, KeepsTheFrameUnderThePointerAndMarksFramesThatDivide) {
  TimeScale scale;
  scale.SetWidth(1000.0);
  scale.Show(0.0, 250.0);
  EXPECT_GE(scale.ToPixel(0.0), 0.0);
  EXPECT_LE(scale.ToPixel(250.0), 1000.0);
  for (const double factor : {3.0, 0.2, 1e9, 1e-12, 2.0}) {
    const double frame = scale.ToFrame(321.0);
    scale.Zoom(factor, 321.0);
    EXPECT_NEAR(scale.ToFrame(321.0), frame, 1e-6 * std::max(1.0, std::abs(frame)));
    for (const double rate : {23.976, 24.0, 25.0, 60.0, 1.0}) {
      const TimeScale::Steps steps = scale.ChooseSteps(rate, 6.0, 60.0);
      EXPECT_EQ(steps.number % steps.mark, 0) << rate;
      if (scale.GetPixelsPerFrame() > 0.01) {
        EXPECT_GE(steps.number * scale.GetPixelsPerFrame(), 60.0) << rate;
      }
    }
  }
  scale.Show(0.0, 100.0);
  const double before = scale.ToFrame(0.0);
  EXPECT_FALSE(scale.Reveal(50.0));
  EXPECT_EQ(scale.ToFrame(0.0), before);
  EXPECT_TRUE(scale.Reveal(900.0) && !scale.Reveal(900.0));
  EXPECT_EQ(scale.SnapToFrame(scale.ToPixel(903.4)), 903);
  const TimeCode code = TimeCodeOf(-(25 * 3723 + 7), 25.0);
  EXPECT_TRUE(code.negative && code.hours == 1 && code.minutes == 2 && code.seconds == 3 &&
              code.frames == 7);
}

TEST(TimeScale, StacksBarsAndFindsKeysAndHandles) {
  std::vector<Bar> bars{
      {0.0, 0.08, "A", 0}, {1.0, 1.04, "A", 0}, {0.0, 0.08, "B", 0}, {0.04, 1.02, "C", 0}};
  EXPECT_EQ(StackBars(bars, 3), 2);
  ASSERT_EQ(bars.size(), 3u);
  EXPECT_EQ(bars[0].name, "A, B");
  EXPECT_EQ(bars[1].lane, 1);
  EXPECT_EQ(bars[2].lane, 0);
  double found = 0.0;
  const std::vector<double> keys{0.0, 0.4, 0.8};
  EXPECT_TRUE(FindNext(keys, 0.4, true, 1e-5, found) && found == 0.8);
  EXPECT_TRUE(FindNext(keys, 0.4, false, 1e-5, found) && found == 0.0);
  EXPECT_FALSE(FindNext(keys, 0.8, true, 1e-5, found) || FindNext(keys, 0.0, false, 1e-5, found));
  Rows rows{20, 30, 40, 60, 70};
  using Part = Rows::Part;
  EXPECT_EQ(rows.Find(52, 65, 50, 50, 0, 0, 4), Part::kRangeEnd);
  EXPECT_EQ(rows.Find(48, 65, 50, 50, 0, 0, 4), Part::kRangeBegin);
  EXPECT_EQ(rows.Find(70, 65, 50, 90, 0, 0, 4), Part::kRange);
  EXPECT_EQ(rows.Find(70, 50, 50, 90, 60, 80, 4), Part::kSound);
  EXPECT_EQ(rows.Find(70, 10, 50, 90, 60, 80, 4), Part::kTime);
}

TEST(TimeScale, PlaysFramesByTheClock) {
  PlaySettings settings;
  settings.rate = 24.0;
  settings.first = 10;
  settings.last = 19;
  PlayClock clock;
  const auto play = [&](double step, double until) {
    std::vector<int> frames;
    for (double now = 100.0; now <= until; now += step) {
      const PlayClock::Due due = clock.Look(now);
      if (frames.empty() || frames.back() != due.frame) frames.push_back(due.frame);
      if (due.isOver) break;
    }
    return frames;
  };
  clock.Begin(100.0, 12, settings);
  EXPECT_EQ(play(0.001, 101.0), (std::vector<int>{12, 13, 14, 15, 16, 17, 18, 19}));
  EXPECT_NEAR(clock.GetPlace(100.0 + 2.5 / 24.0), 14.5, 1e-9);
  clock.Begin(100.0, 19, settings);  // at its end: from the beginning; three a picture
  EXPECT_EQ(play(3.0 / 24.0, 101.0), (std::vector<int>{10, 13, 16, 19}));
  settings.everyFrame = true;
  clock.Begin(100.0, 500, settings);
  EXPECT_EQ(play(1.0, 150.0).size(), 10u) << "none is dropped";
  settings.everyFrame = false;
  settings.backwards = settings.loop = true;
  clock.Begin(100.0, 11, settings);
  EXPECT_EQ(play(1.0 / 24.0, 100.0 + 4.0 / 24.0 + 1e-4), (std::vector<int>{11, 10, 19, 18, 17}));
  EXPECT_NEAR(clock.GetWait(100.0 + 4.5 / 24.0), 0.5 / 24.0, 1e-6);
}

}  // namespace orv::tests
