#include <gtest/gtest.h>

#include <algorithm>

#include "adaptor/maya/probes/Probe.h"

namespace orv::tests {
namespace {

using namespace rws::adaptor::maya;

TEST(Probes, HoldInTheStandIn) {
  for (const ProbeOutcome& outcome : RunProbes())
    EXPECT_NE(outcome.state, ProbeState::kRefuted)
        << outcome.probe->id << ": " << outcome.probe->belief << ": " << outcome.detail;
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
