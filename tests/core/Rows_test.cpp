// Rows of rigs and groups: order, checks, undo, and what a scene keeps of them.
#include <algorithm>
#include <random>

#include "core/RowActions.h"
#include "support/CoreTest.h"

namespace orv::tests {
namespace {

using rws::core::InstanceReference;
using rws::core::RowLayout;

class Rows : public CoreTest {
 protected:
  Rows() {
    for (int i = 0; i < 4; ++i) core.CreateTool("Probe");
  }
  InstanceReference* Row(const std::string& label) { return core.FindRow(label); }
  /// Names of the rigs that are stepped, or of all, by their last digit.
  std::string Rigs(bool onlyChecked) {
    std::string digits;
    for (rws::core::Instance* rig : core.List(onlyChecked)) digits += rig->GetInstanceName().back();
    return digits;
  }
  auto Blocks() { return std::count(adaptor.events.begin(), adaptor.events.end(), "end"); }
};

TEST_F(Rows, AGroupOrdersAndSetsAsideWhatStandsInIt) {
  std::string problem;
  InstanceReference* const cars = core.CreateGroup("Cars", problem);
  for (const char* name : {"Probe_03", "Probe_01"}) EXPECT_EQ(core.MoveInto(Row(name), cars), "");
  EXPECT_EQ(Rigs(false), "2431");
  EXPECT_EQ(core.MoveBefore(cars, Row("Probe_04")), "");
  EXPECT_EQ(Rigs(false), "2314");
  core.SetChecked(Row("Probe_01"), false);
  EXPECT_EQ(Rigs(true), "234");
  core.SetChecked(cars, false);
  EXPECT_EQ(Rigs(true), "24");
  core.SetChecked(cars, true);
  EXPECT_EQ(Rigs(true), "234") << "what was off in it stays off";

  InstanceReference* const all = core.CreateGroup("All", problem);
  EXPECT_EQ(core.MoveInto(cars, all), "");
  EXPECT_NE(core.MoveInto(all, cars), "") << "a group within itself";
  EXPECT_NE(core.MoveBefore(all, Row("Probe_03")), "");
  for (const char* name : {"Cars", "Probe_02", "a.b", " "}) {
    EXPECT_EQ(core.CreateGroup(name, problem), nullptr) << name;
    EXPECT_NE(core.Rename(all, name), "") << name;
  }
  EXPECT_EQ(core.UniqueName("Cars"), "Cars_01") << "a rig of that name could not be told apart";
  EXPECT_EQ(core.MoveInto(Row("Probe_03"), nullptr), "");
  EXPECT_EQ(Rigs(false), "2413") << "out of all groups";
  EXPECT_EQ(core.MoveBefore(Row("Probe_02"), nullptr), "");
  EXPECT_EQ(Rigs(false), "4132");
  core.DeleteGroup(Row("All"));
  EXPECT_EQ(Row("Cars")->parent, &core.GetRoot());
  EXPECT_EQ(Rigs(false), "4132");
}

TEST_F(Rows, UndoAndRedoGiveEveryTreeBackAndASceneKeepsIt) {
  std::mt19937 random(3);
  for (int run = 0; run < 20; ++run) {
    std::vector<RowLayout> trees;
    for (int i = 0; i < 40; ++i) {
      const RowLayout before = core.GetLayout();
      const auto blocks = Blocks();
      DoWithRows(core, random() % kRowActions, static_cast<unsigned>(random() >> 8));
      ASSERT_LE(Blocks(), blocks + 1);
      if (Blocks() > blocks) trees.push_back(before);
    }
    trees.push_back(core.GetLayout());
    for (std::size_t i = trees.size() - 1; i-- > 0;) {
      ASSERT_TRUE(adaptor.HostUndo());
      ASSERT_EQ(core.GetLayout(), trees[i]);
    }
    for (std::size_t i = 1; i < trees.size(); ++i) {
      ASSERT_TRUE(adaptor.HostRedo());
      ASSERT_EQ(core.GetLayout(), trees[i]);
    }

    util::xml::Tag saved(""), again(""), scene("");
    core.WriteRows(saved);
    core.SaveScene(scene);
    if (saved.children.empty()) continue;
    EXPECT_EQ(scene.children.back()->toText(), saved.children[0]->toText());
    const std::string order = Rigs(false), stepped = Rigs(true);
    core.MoveBefore(Row(core.List(false)[0]->GetInstanceName()), nullptr);
    core.ReadRows(*saved.children[0]);
    core.WriteRows(again);
    EXPECT_EQ(again.children.at(0)->toText(), saved.children[0]->toText());
    EXPECT_EQ(Rigs(false), order);
    EXPECT_EQ(Rigs(true), stepped);
  }
}

TEST_F(Rows, ATreeThatFitsNoLongerLosesNoRig) {
  util::xml::Tag rows("");
  ASSERT_EQ(rows.loadText("<rows><group name='A'><rig name='Probe_02'/><rig name='Gone'/>"
                          "<rig name='Probe_02'/><group name='A'/></group><odd/><group/>"
                          "<rig name='Probe_01'/></rows>"),
            0);
  core.SetReservedNames({"Gone"});  // a rig that could not be opened
  core.ReadRows(rows);
  EXPECT_EQ(Rigs(true), "2134");
  EXPECT_NE(Row("A_2"), nullptr);
  EXPECT_EQ(core.Rename(Row("A"), "B"), "");
  util::xml::Tag saved("");
  core.WriteRows(saved);
  EXPECT_EQ(saved.toText("", "").rfind("<><rows><group name=\"B\" checked=\"1\"><rig name="
                                       "\"Probe_02\"/><group name=\"A_2\" checked=\"1\"/>"
                                       "<rig name=\"Gone\"/></group>",
                                       0),
            0u)
      << saved.toText("", "");
  core.DeleteAllTools();
  EXPECT_TRUE(core.GetRows().empty());
}

}  // namespace
}  // namespace orv::tests
