#include "app/session/takes/RigSettings.h"

#include <gtest/gtest.h>

#include "app/session/SceneSession.h"
#include "app/session/takes/KeptTakes.h"
#include "core/CoreImplementation.h"

namespace orv::tests {
namespace {

TEST(RigSettings, TellThatTheSimulationHasChangedSince) {
  app::SceneSession session;
  auto* const rig = session.GetCore().CreateToolFromFactory("Turntable", "Table");
  ASSERT_TRUE(rig);
  auto& around = session.GetTakes().GetSurroundings();
  app::KeptRig kept = SettingsOf(*rig, around);
  EXPECT_EQ(DifferencesFrom(kept, *rig, around), std::vector<std::string>());
  const std::string now = std::to_string(kept.simulation);
  kept.simulation += 4;
  EXPECT_EQ(DifferencesFrom(kept, *rig, around),
            std::vector<std::string>{"Table: the simulation of Turntable has changed since "
                                     "(version 5, now " +
                                     now + ")"});
  kept.simulation = 0;  // of a file that an older program has written
  EXPECT_EQ(DifferencesFrom(kept, *rig, around), std::vector<std::string>());
}

}  // namespace
}  // namespace orv::tests
