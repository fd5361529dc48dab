// When a take's pictures come, and how they are counted.
#include "app/studio/PicturePace.h"

#include <gtest/gtest.h>

namespace orv::tests {

TEST(PicturePace, LetsATakeCatchUpButShowsFiveASecond) {
  app::PicturePace pace;
  pace.BeginTake(100);
  EXPECT_TRUE(pace.MayDraw(10.0, false));
  pace.NoteBegin(10.0);
  EXPECT_TRUE(pace.MayDraw(10.01, false));
  EXPECT_FALSE(pace.MayDraw(10.1, true));
  EXPECT_TRUE(pace.MayDraw(10.2, true));
  pace.NotePicture(10.3, 100, {});
  EXPECT_FALSE(pace.MayDraw(10.4, true)) << "it took longer than a fifth of a second";
  EXPECT_TRUE(pace.MayDraw(10.46, true));
  pace.BeginTake(100);

  pace.NotePicture(20.0, 101, {});
  EXPECT_EQ(pace.GetFigures(20.0).latencies, 0);
  pace.NotePicture(20.5, 105, {30.0, 10.0, 20.0});
  pace.NotePicture(20.9, 105, {40.0});  // the eye has moved
  app::PictureFigures figures = pace.GetFigures(21.0);
  EXPECT_EQ(figures.painted, 3);
  EXPECT_EQ(figures.dropped, 3) << "102 to 104";
  EXPECT_EQ(figures.perSecond, 3.0);
  EXPECT_EQ(figures.latencies, 4);
  EXPECT_EQ(figures.medianMs, 30.0);
  EXPECT_EQ(figures.p95Ms, 40.0);
  EXPECT_EQ(pace.GetFigures(21.6).perSecond, 1.0);
  pace.BeginTake(0);
  EXPECT_EQ(pace.GetFigures(22.0).painted, 0);
}

}  // namespace orv::tests
