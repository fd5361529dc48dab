// Random events, and that the program has come through.
#include "studio/StudioRun.h"

namespace orv::tests {

namespace {

class Monkey : public StudioRun, public testing::WithParamInterface<int> {};

}  // namespace

TEST_P(Monkey, LeavesAProgramThatTakesSavesAndOpens) {
  const auto answers = Script("new\nmonkey 1250 seed=" + std::to_string(GetParam()) +
                              " log=events.txt\nsave end.glb\nopen end.glb\nstate\n");
  ASSERT_EQ(answers.size(), 5u) << folder.Read("events.txt");
  const Json& report = answers[1];
  EXPECT_EQ(report["events"], 1250);
  EXPECT_GT(report["takes"], 3) << report;
  EXPECT_GT(report["windows"].size(), 3u) << report;
  EXPECT_GT(report["boxes"], 3) << report;
  EXPECT_EQ(answers[4]["run"], "idle");
  EXPECT_EQ(answers[4]["dirty"], false);
}

INSTANTIATE_TEST_SUITE_P(Seeds, Monkey, testing::Range(1, 5));

}  // namespace orv::tests
