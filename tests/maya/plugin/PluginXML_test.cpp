#include "adaptor/maya/scene/PluginXML.h"

#include <gtest/gtest.h>

#include "adaptor/common/SceneRigs.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessSession.h"
#include "adaptor/maya/scene/StateBuilder.h"
#include "adaptor/maya/scene/StorageTable.h"
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "core/interface/CCameraPlugin.h"
#include "plugins/release/all/AllRigs.h"
#include "support/WidgetApplication.h"

namespace orv::tests {
namespace {

using namespace rws::adaptor;
using namespace rws::adaptor::maya;

/// Records as scene files carry them: of each kind, with tracks, in groups, one of them unchecked.
std::vector<RigRecord> RealRecords(std::string& rows) {
  headless::HeadlessSession session(rws::addon::AllRigs());
  auto& core = session.GetCore();
  for (rws::CCameraPlugin* kind : rws::addon::AllRigs())
    EXPECT_NE(core.CreateTool(kind->GetId()), "");
  session.GetAdaptor().SetTimeRange(0.0, 0.4);
  EXPECT_EQ(core.BeginResimulation(0.0, 0.4), 0);
  while (core.StepResimulation()) continue;
  core.EndResimulation();
  std::string problem;
  rws::core::InstanceReference* const group = core.CreateGroup("A \"group\"", problem);
  core.MoveInto(core.Find(core.List(false).front()->GetInstanceName()), group);
  core.SetChecked(core.Find(core.List(false).back()->GetInstanceName()), false);
  std::vector<RigRecord> records;
  SceneRigs rigs(core, session.GetAdaptor(),
                 [](const std::string& text) { ADD_FAILURE() << text; });
  EXPECT_TRUE(rigs.Store(records, rows, problem)) << problem;
  return records;
}

TEST(PluginXML, RebuildsTheRecordThatScenesCarryToTheByte) {
  std::string rows;
  for (const RigRecord& record : RealRecords(rows)) {
    const StorageValues values = StoreRecord(record);
    EXPECT_EQ(values.Text(kPluginName), record.kind);
    EXPECT_EQ(values.Texts(kNodeHandles).size(), values.Texts(kNodeNames).size());
    const RigRecord back = ReadRecord(values);
    EXPECT_EQ(back.problem, "");
    EXPECT_EQ(back.record, record.record) << record.name;
    // The attributes hold all of it: nothing of the nodes or the data stands in the XML besides.
    EXPECT_EQ(values.Text(kInputValues).find("handle="), std::string::npos);
  }
  SceneState state;
  std::string problem;
  ASSERT_TRUE(ReadState(BuildState({{"b", "a \"x\""}, rows}), state, problem)) << problem;
  EXPECT_EQ(state.rows, rows);
  EXPECT_EQ(state.order, (std::vector<std::string>{"b", "a \"x\""}));
  EXPECT_FALSE(ReadState("<state", state, problem));
}

TEST(PluginXML, ReadsWhatTheTablesTellWithoutValues) {
  StorageValues values;
  values.SetText(kPluginName, "Kind");
  values.SetText(kCameraName, "Rig");
  std::string problem;
  const auto bare = BuildPluginXML(values, problem);
  EXPECT_EQ(bare.attribute("version"), "2.5");
  EXPECT_EQ(bare.attribute("type") + "/" + bare.attribute("name"), "Kind/Rig");
  EXPECT_EQ(bare.child("savedata").text(), "");
  values.SetNumber(kUserDataSize, 2);
  values.SetText(kUserData, "AQIDBA==");
  values.SetText(kProfileName, "Pad");
  values.SetText(kProfileCustom, "PHByb2ZpbGUvPnRhaWw=");  // <profile/>tail
  values.SetNumber(kProfileSize, 10);
  values.SetTexts(kNodeHandles, {"Rig/A", "Rig/B"});
  values.SetTexts(kNodeNames, {"A", "B"});
  values.SetTexts(kParentHandles, {"", "A"});
  const auto tag = BuildPluginXML(values, problem);
  EXPECT_EQ(problem, "");
  EXPECT_EQ(tag.child("savedata").attribute("size"), "2");
  EXPECT_EQ(tag.child("inputprofile").attribute("file"), "Pad");
  EXPECT_TRUE(tag.child("inputprofile").child("profile").isTag("profile"));
  EXPECT_EQ(tag.child("nodeinfo").child("node", 1).attribute("parent"), "A");
}

TEST(PluginXML, KeepsADamagedRecordAsItIs) {
  StorageValues values;
  values.SetText(kPluginName, "Kind");
  values.SetText(kCameraName, "Rig");
  values.SetText(kInputValues, "<inputvalues");
  values.SetTexts(kNodeHandles, {"Rig/A", ""});
  values.SetNumber(kUserDataSize, 5);
  RigRecord record = ReadRecord(values);
  EXPECT_NE(record.problem, "");
  RenameRecord(record, "Other");
  const StorageValues back = StoreRecord(record);
  EXPECT_EQ(back.ToRaw(), values.ToRaw());
}

TEST(PluginXML, RenamesARigWithTheHandlesOfItsNodesAlone) {
  RigRecord record{"Kind",
                   "Rig",
                   "<RWT_Plugin version=\"2.5\" type=\"Kind\" name=\"Rig\"><nodeinfo>"
                   "<node name=\"A\" handle=\"Rig/A\"/><node name=\"B\" handle=\"Rig_2/B\"/>"
                   "</nodeinfo></RWT_Plugin>",
                   "",
                   "",
                   ""};
  RenameRecord(record, "New");
  const StorageValues values = StoreRecord(record);
  EXPECT_EQ(values.Text(kCameraName), "New");
  EXPECT_EQ(values.Texts(kNodeHandles), (std::vector<std::string>{"New/A", "Rig_2/B"}));
}

}  // namespace
}  // namespace orv::tests
