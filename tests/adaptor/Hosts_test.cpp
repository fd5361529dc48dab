// That rigs perform alike on hosts that share no unit, no axis and no angles.
#include "HeadlessFixture.h"
#include "Performance.h"
#include "StageFixture.h"
#include "core/interface/CCameraPlugin.h"
#include "support/QtApplication.h"

namespace orv::tests {
namespace {

TEST(Hosts, EveryRigPerformsAlikeOnBothAndAfterASave) {
  for (rws::CCameraPlugin* tool : rws::addon::AllRigs()) {
    SCOPED_TRACE(tool->GetId());
    Poses expected;
    {
      HeadlessFixture plain;
      expected = Performance(plain, tool->GetId()).Resimulate();
    }
    EXPECT_FALSE(expected.empty());
    StageFixture stage;
    Performance there(stage, tool->GetId());
    ExpectAlike(expected, there.Resimulate(), "the first run");
    for (CoreNode* node : there.Nodes())
      EXPECT_EQ(static_cast<stage::Node*>(node)->keyStatesForgotten, 1) << "bound once";
    there.SaveAndOpen();
    ExpectAlike(expected, there.Resimulate(), "after a save");
  }
}

}  // namespace
}  // namespace orv::tests
