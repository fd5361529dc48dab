// What the core may expect of any host: a suite that every adaptor is run through. A test program
// includes this once, derives an AdaptorFixture and adds one line:
//   INSTANTIATE_TEST_SUITE_P(MyHost, AdaptorContract, testing::Values(&MakeMyFixture));
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "AdaptorFixture.h"
#include "core/interface/CCameraPlugin.h"
#include "core/interface/CSnapshot.h"
#include "core/interface/CSnapshot_Helper.h"
#include "core/interface/CSnapshot_Lens.h"
#include "core/interface/CSnapshot_Mesh.h"
#include "core/interface/CSnapshot_Shape.h"
#include "core/interface/CUndo.h"
#include "util/CMesh.h"
#include "util/ReturnValue.h"
#include "util/xml/Tag.h"

namespace orv::tests {

using util::Vector3;

/// Owners count by their identity alone: nobody may call one.
inline CInterface* Owner(int i) {
  alignas(16) static std::array<char, 64> identities;
  return reinterpret_cast<CInterface*>(&identities[static_cast<std::size_t>(16 * i)]);
}

/// A step that tells of its life in a list of words.
class LoggedStep : public rws::CUndo {
 public:
  LoggedStep(std::vector<std::string>& log, std::string name,
             rws::AdaptorInterface* pushesTo = nullptr)
      : m_log(log), m_name(std::move(name)), m_pushesTo(pushesTo) {}
  ~LoggedStep() override { m_log.push_back(m_name + " gone"); }
  void Undo(bool keep) override {
    m_log.push_back(m_name + (keep ? " undone" : " rolled back"));
    if (m_pushesTo && m_pushesTo->PushUndo(new LoggedStep(m_log, "late")))
      m_log.push_back("late kept");
  }
  void Redo() override { m_log.push_back(m_name + " redone"); }

 private:
  std::vector<std::string>& m_log;
  std::string m_name;
  rws::AdaptorInterface* m_pushesTo;
};

inline Matrix<double> Pose(double x, double y, double z, double degreesY = 0.0, double scale = 1) {
  Matrix<double> m = Matrix<double>::rotationAxisAngle(degreesY, 0.0, 1.0, 0.0);
  m.setRowLengths({scale, scale, scale});
  m.setTranslation({x, y, z});
  return m;
}

class AdaptorContract : public testing::TestWithParam<std::unique_ptr<AdaptorFixture> (*)()> {
 protected:
  AdaptorContract() : fixture(GetParam()()), adaptor(fixture->Adaptor()) {}

  CoreNode* NewMesh(int owner, const std::string& name, CNode* parent = nullptr) {
    return adaptor.CreateMeshNode({Owner(owner), name, "Rig_" + name}, parent, nullptr, 0);
  }
  NodeList NodesOf(int owner) {
    NodeList list;
    util::ReturnValue<NodeList> result(list);
    adaptor.GetNodesOfOwner(Owner(owner), result);
    return list;
  }
  NodeList Unclaimed() {
    NodeList list;
    util::ReturnValue<NodeList> result(list);
    adaptor.GetUnclaimedNodes(result);
    return list;
  }
  template <class Use>
  static void At(CoreNode* node, double time, Use use) {
    rws::CSnapshot* const snapshot = node->GetSnapshot(time);
    ASSERT_NE(snapshot, nullptr);
    EXPECT_EQ(snapshot->GetTime(), time);
    use(*snapshot);
    node->ReleaseSnapshot(snapshot);
  }
  static Matrix<double> World(CoreNode* node, double time) {
    Matrix<double> m;
    At(node, time, [&](auto& snapshot) { snapshot.GetMatrix(m.data()); });
    return m;
  }
  static Matrix<double> Local(CoreNode* node, double time) {
    Matrix<double> m;
    At(node, time, [&](auto& snapshot) { snapshot.GetLocalMatrix(m.data()); });
    return m;
  }
  static void Place(CoreNode* node, double time, const Matrix<double>& m) {
    At(node, time, [&](auto& snapshot) { snapshot.SetMatrix(m.data()); });
  }
  static void Key(CoreNode* node, double time, const Matrix<double>& m) {
    At(node, time, [&](auto& snapshot) { snapshot.SetKey(m.data()); });
  }
  static void ExpectNear(const Matrix<double>& a, const Matrix<double>& b, const char* what = "") {
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(a[i], b[i], 1e-6) << what << ", element " << i;
  }
  double Frame(int index) { return index * adaptor.GetFrameDuration(); }
  /// A take of owner 0 from the frame `first` on; `perform` is called while it runs.
  template <class Perform>
  void Record(int first, Perform perform) {
    adaptor.BeginUndoBlock("Record");
    std::vector<CInterface*> instances = {Owner(0)};
    util::ReturnValue<std::vector<CInterface*>> result(instances);
    adaptor.BeginRecording(Frame(first), result);
    ASSERT_EQ(instances.size(), 1u);
    for (CoreNode* each : NodesOf(0)) each->StartTake(Frame(first));
    perform();
    adaptor.EndRecording();
    adaptor.EndUndoBlock();
  }
  /// One that keys `node` at frames first + 1 to last, at (frame, 2, 0).
  void Take(CoreNode* node, int first, int last) {
    Record(first, [&] {
      for (int i = first + 1; i <= last; ++i) Key(node, Frame(i), Pose(i, 2, 0, 3.0 * i));
    });
  }

  std::unique_ptr<AdaptorFixture> fixture;
  rws::AdaptorInterface& adaptor;
};

TEST_P(AdaptorContract, NamesItselfAndToleratesEveryReservedOperation) {
  EXPECT_EQ(adaptor.GetInterfaceVersion(), 0x5AA5);
  EXPECT_EQ(adaptor.GetInterfaceVersion(), rws::kInterfaceVersion);
  EXPECT_FALSE(adaptor.GetAdaptorName().empty());
  EXPECT_FALSE(adaptor.GetDataFolder().empty());
  EXPECT_FALSE(adaptor.GetHostName().empty());
  EXPECT_FALSE(adaptor.GetHostVersion().empty());
  EXPECT_TRUE(adaptor.IsHostReady());
  const std::size_t known = Unclaimed().size();
  adaptor.Reserved26();
  adaptor.Reserved33();
  adaptor.Reserved34();
  adaptor.Reserved40();
  adaptor.RefreshViews();
  adaptor.FilterCurves();
  EXPECT_EQ(adaptor.CreateOtherNode({Owner(0), "Other", "Other"}, nullptr), nullptr);
  EXPECT_EQ(fixture->UserNode("Other"), nullptr);
  EXPECT_EQ(adaptor.FindNode(Owner(0), "Other"), nullptr);
  util::xml::Tag settings("settings");
  adaptor.GetSettings(settings);
  EXPECT_EQ(Unclaimed().size(), known);
  EXPECT_TRUE(fixture->UndoEntries().empty());
  EXPECT_TRUE(fixture->Messages().empty());
  adaptor.ShowMessage("Title", "Text \"quoted\"");
  ASSERT_EQ(fixture->Messages().size(), 1u);
  EXPECT_EQ(fixture->Messages()[0],
            std::make_pair(std::string("Title"), std::string("Text \"quoted\"")));
}

TEST_P(AdaptorContract, KeepsTimeRangeAndFrameRate) {
  EXPECT_EQ(adaptor.GetFrameRate(), fixture->Rates().front());
  for (const double fps : fixture->Rates()) {
    fixture->SetFrameRate(fps);
    EXPECT_EQ(adaptor.GetFrameRate(), fps);
    EXPECT_EQ(adaptor.GetFrameDuration(), 1.0 / fps);
  }
  double start = -1.0, end = -1.0;
  adaptor.GetTimeRange(start, end);
  EXPECT_NEAR(start, 0.0, 1e-9);
  EXPECT_NEAR(end, 4.0, 1e-9);
  adaptor.SetCurrentTime(1.5);
  adaptor.BeginUndoBlock("Range");
  adaptor.SetTimeRange(1.0, 8.0);
  adaptor.SetTimeRange(8.0, 1.0);
  adaptor.EndUndoBlock();
  const auto expect = [&](double from, double to, double now) {
    adaptor.GetTimeRange(start, end);
    EXPECT_NEAR(start, from, 1e-9);
    EXPECT_NEAR(end, to, 1e-9);
    EXPECT_NEAR(adaptor.GetCurrentTime(), now, 1e-9);
  };
  expect(1.0, 8.0, 1.5);  // no range ends before it starts
  adaptor.SetCurrentTime(3.0);
  EXPECT_TRUE(adaptor.HostUndo());
  expect(0.0, 4.0, 1.5);  // the whole slider
  EXPECT_TRUE(adaptor.HostRedo());
  expect(1.0, 8.0, 3.0);
}

TEST_P(AdaptorContract, KnowsItsNodesByOwnerAndExactName) {
  CoreNode* const body = NewMesh(0, "Body");
  ASSERT_NE(body, nullptr);
  CoreNode* const lens = adaptor.CreateCameraNode({Owner(0), "Lens", "Rig_Lens"}, body, 35.0, 0.2);
  ASSERT_NE(lens, nullptr);
  CoreNode* const other = NewMesh(1, "Body");
  EXPECT_EQ(adaptor.FindNode(Owner(0), "Body"), body);
  EXPECT_EQ(adaptor.FindNode(Owner(1), "Body"), other);
  EXPECT_EQ(adaptor.FindNode(Owner(1), "Lens"), nullptr);
  EXPECT_EQ(adaptor.FindNode(Owner(0), "body"), nullptr);
  EXPECT_EQ(adaptor.FindNode(Owner(0), "Bod"), nullptr);
  EXPECT_EQ(NodesOf(0), (NodeList{body, lens}));
  EXPECT_EQ(NodesOf(1), NodeList{other});
  EXPECT_EQ(body->GetOwner(), Owner(0));
  EXPECT_TRUE(body->IsClaimed());
  EXPECT_NE(body->GetId(), lens->GetId());
  EXPECT_EQ(body->GetSceneName(), "Rig_Body");
  EXPECT_NE(other->GetSceneName(), "Rig_Body");  // unique in the scene
  EXPECT_EQ(other->GetName(), "Body");

  EXPECT_EQ(body->GetParent(), nullptr);
  CNode* const parent = lens->GetParent();
  EXPECT_TRUE(body->IsSame(parent));
  EXPECT_FALSE(body->IsSame(lens));
  EXPECT_FALSE(body->IsSame(nullptr));
  parent->Release();
  ASSERT_EQ(body->GetChildCount(), 1);
  EXPECT_TRUE(lens->IsSame(body->GetChild(0)));
  EXPECT_EQ(body->GetChild(1), nullptr);
  EXPECT_EQ(body->GetChild(-1), nullptr);

  CoreNode* const mover = fixture->UserNode("Mover");
  ASSERT_NE(mover, nullptr);
  EXPECT_EQ(mover->GetOwner(), nullptr);
  EXPECT_FALSE(mover->IsClaimed());
  for (CoreNode* each : Unclaimed()) EXPECT_FALSE(each->IsClaimed());
  ASSERT_EQ(mover->GetChildCount(), 1);
  EXPECT_TRUE(fixture->UserNode("Hook")->IsSame(mover->GetChild(0)));
}

TEST_P(AdaptorContract, AnswersTheExtensionsThatRigsUse) {
  CoreNode* const node = NewMesh(0, "Body");
  for (const int code : {10, 11, 17, 18, 31, 32, 61, 62, 63})
    EXPECT_TRUE(node->HasExtension(code)) << code;
  EXPECT_FALSE(node->HasExtension(99));
  EXPECT_EQ(node->Extension(99, nullptr, nullptr), 0);
  EXPECT_NE(node->Extension(17, nullptr, nullptr), 0);
  EXPECT_NE(node->Extension(18, nullptr, nullptr), 0);
  std::string name = "Rig_Shell";
  EXPECT_NE(node->Extension(32, &name, nullptr), 0);
  EXPECT_EQ(node->GetSceneName(), "Rig_Shell");
  CNode* const hook = fixture->UserNode("Hook");
  EXPECT_NE(node->Extension(31, hook, nullptr), 0);
  EXPECT_TRUE(fixture->UserNode("Hook")->IsSame(node->GetParent()));
}

TEST_P(AdaptorContract, NestsUndoBlocksIntoOneEntryOfTheOutermostName) {
  std::vector<std::string> log;
  EXPECT_FALSE(adaptor.IsUndoBlockOpen());
  EXPECT_FALSE(adaptor.PushUndo(new LoggedStep(log, "stray")));
  EXPECT_EQ(log, std::vector<std::string>{"stray gone"});
  log.clear();

  adaptor.BeginUndoBlock("Outer");
  EXPECT_TRUE(adaptor.IsUndoBlockOpen());
  EXPECT_TRUE(adaptor.PushUndo(new LoggedStep(log, "a", &adaptor)));
  adaptor.BeginUndoBlock("Inner");
  EXPECT_TRUE(adaptor.PushUndo(new LoggedStep(log, "b")));
  EXPECT_TRUE(adaptor.EndUndoBlock());
  EXPECT_TRUE(fixture->UndoEntries().empty());
  EXPECT_FALSE(adaptor.HostUndo()) << "a block is open";
  EXPECT_TRUE(adaptor.PushUndo(new LoggedStep(log, "c")));
  EXPECT_TRUE(adaptor.EndUndoBlock());
  EXPECT_FALSE(adaptor.IsUndoBlockOpen());
  EXPECT_EQ(fixture->UndoEntries(), std::vector<std::string>{"Outer"});

  adaptor.BeginUndoBlock("Empty");
  adaptor.EndUndoBlock();
  EXPECT_TRUE(adaptor.EndUndoBlock()) << "with nothing open";
  EXPECT_EQ(fixture->UndoEntries().size(), 1u);

  EXPECT_TRUE(adaptor.HostUndo());
  EXPECT_EQ(log, (std::vector<std::string>{"c undone", "b undone", "a undone", "late gone"}));
  EXPECT_FALSE(adaptor.HostUndo());
  log.clear();
  EXPECT_TRUE(adaptor.HostRedo());
  EXPECT_EQ(log, (std::vector<std::string>{"a redone", "b redone", "c redone"}));
  EXPECT_FALSE(adaptor.HostRedo());
  log.clear();
  adaptor.ClearUndoHistory();
  EXPECT_EQ(log, (std::vector<std::string>{"a gone", "b gone", "c gone"}));
  EXPECT_FALSE(adaptor.HostUndo());
}

TEST_P(AdaptorContract, RollsBackACancelledBlockAndCutsTheRedoTail) {
  std::vector<std::string> log;
  const auto push = [&](const char* name) {
    adaptor.BeginUndoBlock(name);
    adaptor.PushUndo(new LoggedStep(log, name));
  };
  push("one");
  adaptor.EndUndoBlock();
  adaptor.BeginUndoBlock("nothing");
  EXPECT_TRUE(adaptor.CancelUndoBlock());
  EXPECT_TRUE(log.empty()) << "an empty block took an earlier one back";

  push("two");
  push("inner");
  EXPECT_TRUE(adaptor.CancelUndoBlock());
  EXPECT_TRUE(log.empty()) << "only the outermost rolls back";
  EXPECT_TRUE(adaptor.EndUndoBlock());
  EXPECT_EQ(log, (std::vector<std::string>{"inner undone", "two undone"}));
  EXPECT_EQ(fixture->UndoEntries(), std::vector<std::string>{"one"});
  EXPECT_FALSE(adaptor.HostRedo()) << "what was cancelled came back";

  push("three");
  adaptor.EndUndoBlock();
  adaptor.HostUndo();
  adaptor.HostUndo();
  log.clear();
  push("four");
  adaptor.EndUndoBlock();
  EXPECT_FALSE(adaptor.HostRedo());
  EXPECT_EQ(fixture->UndoEntries(), std::vector<std::string>{"four"});
  EXPECT_TRUE(log.empty()) << "cut steps live until the history is cleared";
  adaptor.ClearUndoHistory();
  EXPECT_EQ(log.size(), 5u);
}

TEST_P(AdaptorContract, UndoesCreationAndDeletionWithWhatHangsBelow) {
  adaptor.BeginUndoBlock("Create");
  CoreNode* const body = NewMesh(0, "Body");
  CoreNode* const wheel = NewMesh(0, "Wheel", body);
  Place(body, 0.0, Pose(1, 2, 3, 30.0));
  adaptor.EndUndoBlock();
  const Matrix<double> placed = World(wheel, 0.0);

  body->deleteMe();
  EXPECT_TRUE(body->IsValid()) << "deleted with no block open";
  adaptor.BeginUndoBlock("Delete");
  fixture->UserNode("Ground")->deleteMe();
  EXPECT_NE(fixture->UserNode("Ground"), nullptr) << "a user's own node was deleted";
  body->deleteMe();
  wheel->deleteMe();
  adaptor.EndUndoBlock();
  EXPECT_FALSE(body->IsValid());
  EXPECT_FALSE(wheel->IsValid());
  EXPECT_EQ(body->GetSnapshot(0.0), nullptr);
  EXPECT_TRUE(NodesOf(0).empty());
  EXPECT_EQ(fixture->UserNode("Rig_Body"), nullptr);
  EXPECT_EQ(fixture->UserNode("Rig_Wheel"), nullptr);

  adaptor.HostUndo();
  EXPECT_EQ(NodesOf(0), (NodeList{body, wheel}));
  EXPECT_TRUE(wheel->IsValid());
  EXPECT_TRUE(body->IsSame(wheel->GetParent()));
  EXPECT_EQ(body->GetSceneName(), "Rig_Body");
  EXPECT_EQ(wheel->GetSceneName(), "Rig_Wheel");
  ExpectNear(World(wheel, 0.0), placed);
  adaptor.HostUndo();
  EXPECT_FALSE(body->IsValid());
  EXPECT_TRUE(NodesOf(0).empty());
  adaptor.HostRedo();
  ExpectNear(World(wheel, 0.0), placed);
  adaptor.HostRedo();
  EXPECT_TRUE(NodesOf(0).empty());
  EXPECT_FALSE(adaptor.HostRedo());

  CoreNode* const scrap = NewMesh(0, "Scrap");
  adaptor.DiscardNode(scrap);
  EXPECT_FALSE(scrap->IsValid());
  EXPECT_TRUE(NodesOf(0).empty());
  adaptor.ClearUndoHistory();
  EXPECT_FALSE(body->IsValid());
  EXPECT_EQ(body->GetSnapshot(0.0), nullptr);
}

TEST_P(AdaptorContract, NodesOfARigThatIsGoneAreNobodysHoweverTheyComeBack) {
  adaptor.BeginUndoBlock("Create");
  CoreNode* const body = NewMesh(0, "Body");
  CoreNode* const wheel = NewMesh(0, "Wheel");
  adaptor.TagNode(wheel, "Rig/Wheel");
  adaptor.EndUndoBlock();
  adaptor.BeginUndoBlock("Delete");
  wheel->deleteMe();
  adaptor.EndUndoBlock();
  adaptor.ReleaseNodes(Owner(0));
  EXPECT_EQ(adaptor.FindNode(Owner(0), "Body"), nullptr);
  EXPECT_EQ(adaptor.FindNode(nullptr, body->GetSceneName()), body);
  adaptor.HostUndo();
  EXPECT_TRUE(wheel->IsValid());
  EXPECT_TRUE(NodesOf(0).empty());  // of another rig, which lies where that one did
  EXPECT_EQ(adaptor.ClaimTaggedNodes({Owner(1), "Wheel", "Rig_Wheel"}, "Rig/Wheel"), wheel);
  adaptor.HostRedo();
  EXPECT_FALSE(wheel->IsValid());
  adaptor.HostUndo();
  EXPECT_EQ(NodesOf(1), NodeList{wheel});
}

TEST_P(AdaptorContract, MovesRenamesShowsAndSelectsUndoably) {
  CoreNode* const body = NewMesh(0, "Body");
  CoreNode* const mover = fixture->UserNode("Mover");
  Place(body, 1.0, Pose(3, 1, 0, 45.0, 2.0));
  adaptor.SetCurrentTime(1.0);
  const auto before = fixture->UndoEntries();
  EXPECT_TRUE(body->SetParent(nullptr));
  EXPECT_EQ(fixture->UndoEntries(), before) << "a step for no change";
  adaptor.BeginUndoBlock("Parent");
  EXPECT_TRUE(body->SetParent(mover));
  adaptor.EndUndoBlock();
  EXPECT_TRUE(mover->IsSame(body->GetParent()));
  ExpectNear(World(body, 1.0), Pose(3, 1, 0, 45.0, 2.0));
  ExpectNear(World(body, 2.0), Pose(4, 1, 0, 45.0, 2.0), "it moves with its parent");
  EXPECT_FALSE(mover->SetParent(body)) << "under its own child";
  EXPECT_FALSE(mover->SetParent(mover));
  adaptor.HostUndo();
  EXPECT_EQ(body->GetParent(), nullptr);
  ExpectNear(World(body, 2.0), Pose(3, 1, 0, 45.0, 2.0));
  adaptor.HostRedo();
  ExpectNear(World(body, 2.0), Pose(4, 1, 0, 45.0, 2.0));

  adaptor.BeginUndoBlock("Attributes");
  EXPECT_TRUE(body->Rename("Rig_Shell"));
  EXPECT_FALSE(body->Rename("Ground")) << "a name that is taken";
  EXPECT_TRUE(body->Rename("Rig_Skin"));
  EXPECT_TRUE(body->IsVisible());
  body->Hide();
  body->Hide();
  EXPECT_FALSE(body->IsVisible());
  adaptor.EndUndoBlock();
  EXPECT_EQ(body->GetSceneName(), "Rig_Skin");
  EXPECT_EQ(body->GetName(), "Body");
  adaptor.HostUndo();
  EXPECT_EQ(body->GetSceneName(), "Rig_Body");
  EXPECT_TRUE(body->IsVisible());
  adaptor.HostRedo();
  EXPECT_EQ(body->GetSceneName(), "Rig_Skin");
  EXPECT_FALSE(body->IsVisible());
  body->Show();
  EXPECT_TRUE(body->IsVisible());

  const std::size_t entries = fixture->UndoEntries().size();
  body->Select();
  EXPECT_EQ(fixture->UndoEntries().size(), entries + 1);
  EXPECT_TRUE(adaptor.HostUndo());
}

TEST_P(AdaptorContract, FindsTaggedNodesAfterReopeningAndGathersTheRest) {
  CoreNode* const body = NewMesh(0, "Body", fixture->UserNode("Hook"));
  ASSERT_TRUE(adaptor.TagNode(body, "Car_01/Body"));
  ASSERT_TRUE(adaptor.TagNode(NewMesh(0, "Lost"), "Car_01/Lost"));
  adaptor.BeginUndoBlock("Tag");
  adaptor.TagNode(body, "Other");
  adaptor.EndUndoBlock();
  EXPECT_EQ(body->GetTag(), "Other");
  adaptor.HostUndo();
  EXPECT_EQ(body->GetTag(), "Car_01/Body");
  EXPECT_FALSE(adaptor.TagNode(nullptr, "x"));
  Place(body, 0.0, Pose(1, 2, 3, 20.0));

  fixture->Reopen();
  EXPECT_TRUE(NodesOf(0).empty());
  EXPECT_FALSE(adaptor.HostUndo()) << "the history survived the scene";
  EXPECT_EQ(adaptor.ClaimTaggedNodes({Owner(2), "Body", ""}, "car_01/Body"), nullptr);
  EXPECT_EQ(adaptor.ClaimTaggedNodes({Owner(2), "Body", ""}, "Car_01/Bod"), nullptr);
  EXPECT_EQ(adaptor.ClaimTaggedNodes({Owner(2), "Body", ""}, ""), nullptr);
  CoreNode* const claimed = adaptor.ClaimTaggedNodes({Owner(2), "Body", ""}, "Car_01/Body");
  ASSERT_NE(claimed, nullptr);
  EXPECT_TRUE(claimed->IsClaimed());
  EXPECT_EQ(claimed->GetSceneName(), "Rig_Body");
  EXPECT_EQ(adaptor.FindNode(Owner(2), "Body"), claimed);
  EXPECT_TRUE(fixture->UserNode("Hook")->IsSame(claimed->GetParent()));
  ExpectNear(World(claimed, 0.0), Pose(1, 2, 3, 20.0));

  fixture->Messages().clear();
  adaptor.GatherNodes();
  ASSERT_EQ(fixture->Messages().size(), 1u);
  EXPECT_EQ(fixture->Messages()[0].first, "Gather error");
  EXPECT_EQ(fixture->Messages()[0].second,
            "Some nodes were found belonging to Orvel Rigwright, but they were never claimed. \n "
            "The following nodes were left out:\n\nRig_Lost\n");
  EXPECT_EQ(fixture->UserNode("Rig_Lost")->GetTag(), "");
  EXPECT_EQ(claimed->GetTag(), "Car_01/Body");
  adaptor.GatherNodes();
  EXPECT_EQ(fixture->Messages().size(), 1u) << "a message for a clean scene";
}

TEST_P(AdaptorContract, ImportsASceneFileBehindAPrefix) {
  NodeList roots;
  util::ReturnValue<NodeList> result(roots);
  EXPECT_NE(adaptor.ImportNodes("/nowhere/at/all.glb", "in_", result), "");
  EXPECT_TRUE(roots.empty());
  adaptor.BeginUndoBlock("Import");
  EXPECT_EQ(adaptor.ImportNodes(fixture->ImportFile(), "in_", result), "");
  adaptor.EndUndoBlock();
  ASSERT_EQ(roots.size(), 1u);
  EXPECT_EQ(roots[0]->GetSceneName(), "in_Crate");
  EXPECT_EQ(roots[0]->GetOwner(), nullptr);
  ExpectNear(World(roots[0], 0.0), Pose(0, 0, 2));
  ASSERT_EQ(roots[0]->GetChildCount(), 1);
  EXPECT_TRUE(fixture->UserNode("in_Lid")->IsSame(roots[0]->GetChild(0)));
  adaptor.HostUndo();
  EXPECT_EQ(fixture->UserNode("in_Crate"), nullptr);
  EXPECT_EQ(fixture->UserNode("in_Lid"), nullptr);
}

TEST_P(AdaptorContract, WritesPosesOutsideATake) {
  CoreNode* const mover = fixture->UserNode("Mover");
  CoreNode* const hook = fixture->UserNode("Hook");
  ExpectNear(World(mover, 3.0), Pose(3, 0, 0));
  ExpectNear(World(hook, 3.0), Pose(3, 1, 0));
  ExpectNear(Local(hook, 3.0), Pose(0, 1, 0));

  CoreNode* const body = NewMesh(0, "Body", mover);
  adaptor.BeginUndoBlock("Place");
  Place(body, 1.0, Pose(5, 5, 5, 60.0, 1.5));
  adaptor.EndUndoBlock();
  ExpectNear(World(body, 1.0), Pose(5, 5, 5, 60.0, 1.5));
  ExpectNear(World(body, 2.0), Pose(6, 5, 5, 60.0, 1.5));
  adaptor.BeginUndoBlock("Key");
  Key(body, 1.0, Pose(0, 0, 0));
  Key(body, 3.0, Pose(0, 2, 0));
  adaptor.EndUndoBlock();
  ExpectNear(World(body, 1.0), Pose(0, 0, 0));
  ExpectNear(World(body, 2.0), Pose(0, 1, 0));
  ExpectNear(World(body, 3.0), Pose(0, 2, 0));
  Place(body, 2.0, Pose(0, 7, 0));
  ExpectNear(World(body, 2.0), Pose(0, 1, 0), "a placed node follows its keys");
  ExpectNear(World(body, 3.0), Pose(0, 2, 0));
  adaptor.HostUndo();
  ExpectNear(World(body, 2.0), Pose(6, 5, 5, 60.0, 1.5));
  adaptor.HostUndo();
  ExpectNear(World(body, 1.0), World(mover, 1.0));

  Matrix<double> broken = Pose(1, 1, 1);
  broken[13] = std::nan("");
  Key(body, 1.0, broken);
  ExpectNear(World(body, 1.0), World(mover, 1.0), "a pose that is no number");
}

TEST_P(AdaptorContract, ShowsPosesInTheUnitAndAxesOfTheHost) {
  const double metre = fixture->Metre();
  // Of a vector in rig space.
  const auto inHost = [&](const Vector3<double>& v) {
    return (fixture->IsZUp() ? Vector3<double>(v.x, -v.z, v.y) : v) * metre;
  };
  const auto expectInHost = [&](CoreNode* node, double time) {
    const Matrix<double> rig = World(node, time);
    const Matrix<double> host = fixture->HostWorld(node, time);
    for (int i = 0; i < 4; ++i) {
      const auto row = [i](const Matrix<double>& m) {
        return i < 3 ? m.axisRow(i) : m.translation();
      };
      EXPECT_LT((row(host) - inHost(row(rig))).length(), 1e-9 * metre) << "row " << i;
    }
  };
  CoreNode* const body = NewMesh(0, "Body");
  CoreNode* const wheel = NewMesh(0, "Wheel", body);
  CoreNode* const trailer = NewMesh(0, "Trailer", fixture->UserNode("Mover"));
  Matrix<double> mirrored = Pose(1, 2, 3, 250.0, 1.5);
  mirrored.setAxisRow(0, mirrored.axisRow(0) * -0.5);
  Record(0, [&] {
    for (int i = 1; i <= 12; ++i) {
      Key(body, Frame(i), Pose(0, i, 0, 50.0 * i, 2.0));
      Key(wheel, Frame(i), Pose(i, i + 1, 2, -40.0 * i));
      Key(trailer, Frame(i), mirrored);
    }
  });
  ExpectNear(World(trailer, Frame(7)), mirrored);
  for (int i = 1; i <= 12; ++i)
    for (CoreNode* node : {body, wheel, trailer, fixture->UserNode("Mover")})
      expectInHost(node, Frame(i));
  EXPECT_LT((fixture->HostWorld(body, Frame(3)).translation() - inHost({0, 3, 0})).length(),
            1e-9 * metre);
  // A child's pose in its parent is the same in every host.
  ExpectNear(fixture->HostWorld(body, Frame(3)) * Local(wheel, Frame(3)),
             fixture->HostWorld(wheel, Frame(3)));
}

TEST_P(AdaptorContract, BuffersATakeAndTurnsItIntoKeysInOneEntry) {
  CoreNode* const body = NewMesh(0, "Body");
  CoreNode* const idle = NewMesh(1, "Idle");
  CoreNode* const hook = fixture->UserNode("Hook");
  Place(body, 0.0, Pose(0, 2, 0));
  adaptor.SetCurrentTime(0.0);
  hook->SetParent(body);
  const auto pose = [](int i) { return i == 5 ? Pose(5, 3, 0) : Pose(i, 2, 0, 3.0 * i); };
  for (const double fps : fixture->Rates()) {
    fixture->SetFrameRate(fps);
    Record(0, [&] {
      ExpectNear(World(body, 0.0), Pose(0, 2, 0), "the start as it stood");
      for (int i = 1; i <= 10; ++i) {
        Key(body, Frame(i), Pose(i, 2, 0, 3.0 * i));
        if (i == 5) Place(body, Frame(i), Pose(i, 3, 0));
        Place(idle, Frame(i), Pose(i, 0, 0));
        ExpectNear(World(body, Frame(i)), pose(i));
        EXPECT_NEAR(World(hook, Frame(i))[13], i == 5 ? 2.0 : 1.0, 1e-6) << "a user's node below";
        ExpectNear(World(body, 0.0), Pose(0, 2, 0), "the start once written");
      }
    });
    EXPECT_EQ(fixture->UndoEntries().back(), "Record");
    for (int i = 0; i <= 10; ++i) ExpectNear(World(body, Frame(i)), pose(i), "as keys");
    ExpectNear(World(body, Frame(100)), Pose(10, 2, 0, 30.0));
    ExpectNear(World(idle, Frame(3)), Pose(10, 0, 0), "a rig outside the take is placed at once");
    adaptor.HostUndo();
    for (int i = 0; i <= 12; ++i) ExpectNear(World(body, Frame(i)), Pose(0, 2, 0), "undone");
    adaptor.HostRedo();
    ExpectNear(World(body, Frame(7)), Pose(7, 2, 0, 21.0), "redone");
    adaptor.HostUndo();
  }
}

TEST_P(AdaptorContract, RetakesFromTheMiddleAndTouchesNothingElse) {
  CoreNode* const body = NewMesh(0, "Body");
  CoreNode* const resting = NewMesh(0, "Resting");
  Key(resting, Frame(1), Pose(1, 0, 0));
  Key(resting, Frame(9), Pose(9, 0, 0));
  CoreNode* const mover = fixture->UserNode("Mover");
  Take(body, 0, 20);
  Key(body, Frame(8), Pose(8, 9, 0));  // an edit before the retake stays
  Take(body, 10, 12);
  ExpectNear(World(body, Frame(8)), Pose(8, 9, 0));
  for (const int i : {1, 9, 10, 11, 12}) ExpectNear(World(body, Frame(i)), Pose(i, 2, 0, 3.0 * i));
  ExpectNear(World(body, Frame(20)), Pose(12, 2, 0, 36.0), "keys behind a shorter retake");
  ExpectNear(World(resting, Frame(5)), Pose(5, 0, 0), "a node that the take did not write");
  ExpectNear(World(mover, Frame(25)), Pose(Frame(25), 0, 0));
  adaptor.HostUndo();
  ExpectNear(World(body, Frame(20)), Pose(20, 2, 0, 60.0));
  ExpectNear(World(body, Frame(8)), Pose(8, 9, 0));
  adaptor.HostUndo();
  ExpectNear(World(body, Frame(3)), Pose(0, 0, 0));
  Take(body, 4, 4);
  ExpectNear(World(body, Frame(5)), Pose(0, 0, 0), "a take of no frame");
}

TEST_P(AdaptorContract, ReadsLensCurveAndMesh) {
  CoreNode* const ground = fixture->UserNode("Ground");
  CoreNode* const eye = fixture->UserNode("Eye");
  CoreNode* const path = fixture->UserNode("Path");
  EXPECT_EQ(ground->GetSnapshotLens(0.0), nullptr);
  EXPECT_EQ(ground->GetSnapshotShape(0.0), nullptr);
  EXPECT_EQ(eye->GetSnapshotMesh(0.0), nullptr);
  EXPECT_EQ(eye->GetSnapshotShape(0.0), nullptr);
  EXPECT_EQ(path->GetSnapshotLens(0.0), nullptr);
  adaptor.ReleaseSnapshot(nullptr);
  ground->ReleaseSnapshot(nullptr);

  rws::CSnapshot_Lens* const lens = eye->GetSnapshotLens(1.0);
  ASSERT_NE(lens, nullptr);
  EXPECT_NEAR(lens->GetFieldOfView(), 40.0, 1e-4);
  adaptor.BeginUndoBlock("Lens");
  lens->SetFieldOfView(55.0);
  lens->SetFocusDistance(7.0);
  adaptor.EndUndoBlock();
  EXPECT_NEAR(lens->GetFieldOfView(), 55.0, 1e-6);
  EXPECT_NEAR(lens->GetFocusDistance(), 7.0, 1e-6);
  adaptor.HostUndo();
  EXPECT_NEAR(lens->GetFieldOfView(), 40.0, 1e-4);
  Matrix<double> projection = Pose(1, 2, 3);
  lens->GetProjection(projection.data());
  ExpectNear(projection, Matrix<double>());
  EXPECT_EQ(lens->GetTime(), 1.0);
  eye->ReleaseSnapshot(lens);

  Place(path, 0.0, Pose(0, 1, 0, 0.0, 2.0));
  rws::CSnapshot_Shape* const shape = path->GetSnapshotShape(0.0);
  ASSERT_NE(shape, nullptr);
  EXPECT_EQ(shape->GetCount(), 1);
  EXPECT_EQ(shape->GetDegree(), 1);
  EXPECT_NEAR(shape->GetLength(), 14.0, 1e-6);
  const auto near = [](const Vector3<double>& a, const Vector3<double>& b) {
    return (a - b).length() < 1e-6;
  };
  EXPECT_TRUE(near(shape->GetPoint(-1.0), {0, 1, 0}));
  EXPECT_TRUE(near(shape->GetPoint(3.0 / 14.0), {3, 1, 0}));
  EXPECT_TRUE(near(shape->GetPoint(10.0 / 14.0), {6, 1, 4}));
  EXPECT_TRUE(near(shape->GetPoint(2.0), {6, 1, 8}));
  EXPECT_TRUE(near(shape->GetTangent(0.2), {1, 0, 0}));
  EXPECT_TRUE(near(shape->GetTangent(1.0), {0, 0, 1}));
  EXPECT_NEAR(shape->GetClosest({2, -3, -4}), 2.0 / 14.0, 1e-6);
  EXPECT_NEAR(shape->GetClosest({9, 1, 5}), 11.0 / 14.0, 1e-6);
  EXPECT_NEAR(shape->CSnapshot_Shape::GetClosest({9, 1, 5}), 11.0 / 14.0, 1e-6) << "any curve's";
  path->ReleaseSnapshot(shape);
  // The way of a rig, which knows no more than CNode and CInterface.
  const double now = 0.0;
  const auto acquire = [&](CNode* node) {
    return reinterpret_cast<rws::CSnapshot_Shape*>(
        node->Extension(rws::kAcquireCurve, const_cast<double*>(&now), nullptr));
  };
  EXPECT_EQ(acquire(ground), nullptr);
  rws::CSnapshot_Shape* const acquired = acquire(path);
  ASSERT_NE(acquired, nullptr);
  EXPECT_NEAR(acquired->GetLength(), 14.0, 1e-6);
  adaptor.ReleaseSnapshot(acquired);

  rws::CSnapshot_Mesh* mesh = ground->GetSnapshotMesh(0.0);
  ASSERT_NE(mesh, nullptr);
  mesh->Triangulate();
  EXPECT_EQ(mesh->GetMesh().faces.size(), 6u);
  EXPECT_EQ(mesh->GetMesh().faces.size(), 6u) << "the second read";
  rws::RayHit hit;
  EXPECT_TRUE(mesh->Intersect({1, 3, 2}, {0, -2, 0}, 3.0, hit));
  EXPECT_NEAR(hit.distance, 3.0, 1e-6);
  EXPECT_TRUE(near(hit.point, {1, 0, 2}));
  EXPECT_TRUE(near(hit.normal, {0, 1, 0}));
  EXPECT_TRUE(mesh->Intersect({1, -3, 2}, {0, 1, 0}, 9.0, hit)) << "from behind";
  EXPECT_FALSE(mesh->Intersect({1, 3, 2}, {0, -1, 0}, 2.9, hit));
  EXPECT_FALSE(mesh->Intersect({1, 3, 2}, {0, 1, 0}, 9.0, hit));
  EXPECT_FALSE(mesh->Intersect({1, 3, 2}, {0, 0, 0}, 9.0, hit));
  ground->ReleaseSnapshot(mesh);

  CoreNode* const body = NewMesh(0, "Body");
  rws::CSnapshot_Helper* const helper = body->GetSnapshotHelper();
  ASSERT_NE(helper, nullptr);
  util::CMesh triangle;
  triangle.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 0, -1}};
  triangle.faces = {0, 1, 2};
  adaptor.BeginUndoBlock("Mesh");
  helper->SetMesh(triangle);
  helper->SetColor(1.0f, 0.5f, 0.0f);
  helper->SetXRay(true);
  helper->SetLocked(true);
  adaptor.EndUndoBlock();
  body->ReleaseSnapshot(helper);
  const auto faces = [&] {
    rws::CSnapshot_Mesh* const read = body->GetSnapshotMesh(0.0);
    const std::size_t count = read ? read->GetMesh().faces.size() : 0;
    body->ReleaseSnapshot(read);
    return count;
  };
  EXPECT_EQ(faces(), 3u);
  Place(body, 0.0, Pose(0, 5, 0, 0.0, 10.0));
  mesh = body->GetSnapshotMesh(0.0);
  EXPECT_TRUE(mesh->Intersect({2, 0, -2}, {0, 1, 0}, 100.0, hit));
  EXPECT_NEAR(hit.distance, 5.0, 1e-6);
  body->ReleaseSnapshot(mesh);
  adaptor.HostUndo();
  EXPECT_EQ(faces(), 0u);
  adaptor.HostRedo();
  EXPECT_EQ(faces(), 3u);
}

TEST_P(AdaptorContract, RecordsTheLensInATake) {
  CoreNode* const camera =
      adaptor.CreateCameraNode({Owner(0), "Lens", "Rig_Lens"}, nullptr, 30.0, 0.1);
  const auto fov = [&](double time, double set = 0.0) {
    rws::CSnapshot_Lens* const lens = camera->GetSnapshotLens(time);
    if (set != 0.0) lens->SetFieldOfView(set);
    const double value = lens->GetFieldOfView();
    camera->ReleaseSnapshot(lens);
    return value;
  };
  const auto take = [&](int first, int last) {
    Record(first, [&] {
      for (int i = first + 1; i <= last; ++i) EXPECT_NEAR(fov(Frame(i), 30.0 + i), 30.0 + i, 1e-6);
    });
  };
  take(0, 9);
  take(1, 4);
  EXPECT_NEAR(fov(Frame(9)), 34.0, 1e-6) << "keys behind a shorter retake";
  for (int i = 0; i <= 4; ++i) EXPECT_NEAR(fov(Frame(i)), 30.0 + i, 1e-6);
  EXPECT_NEAR(fov(Frame(2), 50.0), 50.0, 1e-6);
  EXPECT_NEAR(fov(Frame(4)), 34.0, 1e-6) << "a keyed lens takes a key where it is set";
  adaptor.HostUndo();
  EXPECT_NEAR(fov(Frame(9)), 39.0, 1e-6);
  adaptor.HostUndo();
  for (int i = 0; i <= 9; ++i) EXPECT_NEAR(fov(Frame(i)), 30.0, 1e-6);
}

TEST_P(AdaptorContract, CopiesANodeAndListsTheModelsBelow) {
  CoreNode* const body = NewMesh(0, "Body");
  CoreNode* const wheel = NewMesh(0, "Wheel", body);
  fixture->UserNode("Ground")->SetParent(body);
  NodeList models;
  util::ReturnValue<NodeList> result(models);
  adaptor.GetModelsUnder(body, result);
  EXPECT_TRUE(models.empty() || models == NodeList{fixture->UserNode("Ground")});

  Key(wheel, 0.0, Pose(1, 0, 0));
  Key(wheel, 2.0, Pose(3, 0, 0));
  adaptor.BeginUndoBlock("Clone");
  CoreNode* const copy = adaptor.DuplicateNode(wheel, {Owner(1), "Wheel", "Copy_Wheel"}, nullptr);
  adaptor.EndUndoBlock();
  if (!copy) GTEST_SKIP() << "this host copies no nodes";
  EXPECT_EQ(copy->GetSceneName(), "Copy_Wheel");
  EXPECT_EQ(copy->GetTag(), "");
  EXPECT_EQ(adaptor.FindNode(Owner(1), "Wheel"), copy);
  ExpectNear(World(copy, 1.0), Pose(2, 0, 0));
  adaptor.HostUndo();
  EXPECT_FALSE(copy->IsValid());
}

TEST_P(AdaptorContract, CarriesAModelByAHubInPlaceOfARigsOwnMesh) {
  EXPECT_TRUE(fixture->UserNode("Mover")->HasKeys());
  EXPECT_FALSE(fixture->UserNode("Hook")->HasKeys()) << "keys above are not its own";
  CoreNode* const ground = fixture->UserNode("Ground");
  Matrix<double> uneven = Pose(1, 2, 3, 30.0);
  uneven.setRowLengths({2.0, 0.5, 0.5});
  Place(ground, 0.0, uneven);
  const auto hasMesh = [&] {
    rws::CSnapshot_Mesh* const mesh = ground->GetSnapshotMesh(0.0);
    ground->ReleaseSnapshot(mesh);
    return mesh != nullptr;
  };
  adaptor.BeginUndoBlock("Fit");
  CoreNode* const hub = adaptor.CreateHub("Ground_Hub", ground);
  ASSERT_TRUE(hub);
  EXPECT_TRUE(adaptor.TakeMeshAway(ground));
  adaptor.EndUndoBlock();
  ExpectNear(World(hub, 0.0), Pose(1, 2, 3, 30.0));
  EXPECT_EQ(hub->GetSceneName(), "Ground_Hub");
  EXPECT_EQ(hub->GetTag(), "");
  EXPECT_TRUE(ground->IsVisible());
  EXPECT_FALSE(hasMesh());
  adaptor.HostUndo();
  EXPECT_FALSE(hub->IsValid());
  EXPECT_TRUE(hasMesh());
}

}  // namespace orv::tests
