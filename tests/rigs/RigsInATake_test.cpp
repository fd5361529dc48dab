#include "plugins/release/steadycam/steadycam_CSteadyCamObject.h"
#include "rigs/RigSuite.h"

namespace orv::tests {
namespace {

/// Fails as often as it is told, after it has made or found its nodes.
class FragilePlugin : public rws::addon::CSteadyCamPlugin {
 public:
  struct Rig : rws::addon::CSteadyCamObject {
    Rig(const rws::CreationRecord& record, int& failures)
        : CSteadyCamObject(record), failures(failures) {}
    int Create() override { return CSteadyCamObject::Create() + (failures-- > 0); }
    int Restore() override { return CSteadyCamObject::Restore() + (failures-- > 0); }
    int& failures;
  };
  rws::CCamera* CreateObject(const rws::CreationRecord& record) override {
    return new Rig(record, failures);
  }
  int failures = 0;
};

}  // namespace

TEST(RigsInATake, WhatIsRefusedCostsNeitherTheTakeNorANode) {
  FragilePlugin kind;
  RigScene::Poses expected;
  {
    RigScene undisturbed("SteadyCam", 25.0, {&kind});
    undisturbed.Take(0, 20);
    expected = undisturbed.PosesOf(0, 20);
  }
  RigScene world("SteadyCam", 25.0, {&kind});
  const std::string fresh = world.Saved();
  world.Take(0, 20, [&] {
    const std::size_t nodes = world.scene().GetNodeCount();
    kind.failures = 2;
    std::string problem;
    EXPECT_EQ(world.core().CreateTool("SteadyCam"), "");
    EXPECT_EQ(world.core().CloneTool("Rig", problem), "");
    EXPECT_NE(problem, "");
    EXPECT_EQ(world.scene().GetNodeCount(), nodes);
  });
  EXPECT_EQ(world.PosesOf(0, 20), expected);
  ASSERT_TRUE(world.session.GetAdaptor().HostUndo());
  EXPECT_EQ(world.Saved(), fresh);

  // What a rig found before it could not be opened is not the next one's.
  std::string problem;
  ASSERT_EQ(world.core().CloneTool("Rig", problem), "Rig_01");
  kind.failures = 1;
  world.OpenAgain();
  EXPECT_EQ(world.session.TakeWarnings().size(), 1u);
  const auto rigs = world.core().List(false);
  ASSERT_EQ(rigs.size(), 1u);
  for (auto* node : rigs[0]->GetNodes()) EXPECT_EQ(node->GetSceneName().rfind("Rig_01_", 0), 0u);
}

}  // namespace orv::tests
