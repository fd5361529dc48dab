// Template tools on the headless host: what a pose has no part in.
#include "core/services/DataRoot.h"
#include "rigs/RigSuite.h"
#include "support/TempFolder.h"

namespace orv::tests {
namespace {

constexpr char kZoom[] = R"(<template version="1" id="Zoom" name="Zoom" category="Camera">
  <parameters><spinner name="rate" label="Rate" value="10" min="-90" max="90"/></parameters>
  <nodes><camera name="Cam" fieldofview="30"/></nodes>
  <outputs>
    <output node="Cam" channel="field of view"><add><before/>
      <mul><parameter>rate</parameter><parameter>frame duration</parameter></mul></add></output>
    <output node="Cam" channel="focus distance"><constant>-3</constant></output>
    <output node="Cam" channel="translate x">
      <inv><greater><parameter>time</parameter><constant>0.39</constant></greater></inv></output>
  </outputs></template>)";

TEST(TemplateHost, LensesAreRecordedRepeatedAndUndoneAndRefusedPosesTold) {
  const TempFolder folder;
  folder.Write("data/templates/zoom.xml", kZoom);
  rws::core::DataRoot::Set(folder.path);
  {
    RigScene world("Zoom", 25.0);
    const auto lens = [&] {
      std::vector<double> values;
      auto& node = world.session.GetAdaptor().NodeFor(world.Find("Cam"));
      for (int i = 0; i <= 20; ++i) {
        auto* snapshot = node.GetSnapshotLens(world.Frame(i));
        values.push_back(snapshot->GetFieldOfView());
        values.push_back(snapshot->GetFocusDistance());
        node.ReleaseSnapshot(snapshot);
      }
      return values;
    };
    const auto fresh = lens();
    world.Take(0, 20);
    const auto taken = lens();
    EXPECT_EQ(taken[0], 30.0);
    EXPECT_NEAR(taken[40], 30.0 + 20 * 0.4, 1e-9);
    EXPECT_EQ(taken[41], 0.0) << "kept within what a lens can be";
    EXPECT_NE(world.session.TakeWarnings().at(0).find("node Rig_Cam at 0 s"), std::string::npos);
    EXPECT_EQ(world.PosesOf(20, 20)["Cam"].at(0).translation().x, 1.0);
    world.Resimulate(0, 20);
    EXPECT_EQ(lens(), taken);
    world.Resimulate(12, 20);
    EXPECT_EQ(lens(), taken);
    for (int run = 0; run < 3; ++run) ASSERT_TRUE(world.session.GetAdaptor().HostUndo());
    EXPECT_EQ(lens(), fresh);
  }
  rws::core::DataRoot::Set("");
}

}  // namespace
}  // namespace orv::tests
