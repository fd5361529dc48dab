#include <gtest/gtest.h>

#include <algorithm>

#include "adaptor/maya/probes/Probe.h"
#include "mayahost/Host.h"

namespace orv::tests {
namespace {

using namespace rws::adaptor::maya;

TEST(Probes, HoldInTheStandIn) {
  mayahost::Reset();
  for (const ProbeOutcome& outcome : RunProbes())
    // The plug-in's node types alone can't be asked for without the plug-in.
    EXPECT_EQ(outcome.state, outcome.probe->id == 15 ? ProbeState::kSkipped : ProbeState::kHeld)
        << outcome.probe->id << ": " << outcome.probe->belief << ": " << outcome.detail;
}

TEST(Probes, SeeAHostThatBehavesOtherwise) {
  using mayahost::Wrong;
  for (const Wrong wrong :
       {Wrong::kAxis, Wrong::kTimeUnit, Wrong::kCurveLinear, Wrong::kUndoQueue,
        Wrong::kCallbackOrder, Wrong::kRename, Wrong::kMeshPoints, Wrong::kHandles,
        Wrong::kStringArrays, Wrong::kNamespaces, Wrong::kHotKeys}) {
    mayahost::Reset();
    mayahost::SetBatch(false);
    mayahost::Pretend(wrong);
    const auto outcomes = RunProbes();
    mayahost::Pretend(Wrong::kNone);
    EXPECT_TRUE(std::any_of(outcomes.begin(), outcomes.end(), [](const ProbeOutcome& outcome) {
      return outcome.state == ProbeState::kRefuted;
    })) << static_cast<int>(wrong);
  }
}

TEST(Probes, EachSwitchesItsFeatureOffWithItsMessage) {
  Features& features = Features::instance();
  int last = 0;
  for (const Probe& probe : AllProbes()) {
    EXPECT_GT(probe.id, last);
    last = probe.id;
    features.Reset();
    ApplyRefuted({probe.id});
    EXPECT_EQ(features.Why(probe.feature), RefutedText(probe));
    EXPECT_NE(features.Why(probe.feature).find("probe " + std::to_string(probe.id) + ";"),
              std::string::npos);
    for (std::size_t other = 0; other < kFeatureCount; ++other)
      EXPECT_EQ(features.IsOn(static_cast<Feature>(other)),
                static_cast<Feature>(other) != probe.feature);
  }
  features.Reset();
}

}  // namespace
}  // namespace orv::tests
