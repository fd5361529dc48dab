// What windows ask about parameters and profiles.
#include "core/config/ProfileRequests.h"
#include "support/CoreTest.h"

namespace orv::tests {
namespace {

using namespace rws::core;
using Answer = ProfileResult::Answer;

class Requests : public DataRootTest {
 protected:
  Requests() {
    plugin.folder = "1dpositioner";  // whose shipped profiles are there to be harmed
    Start({&plugin});
    for (int i = 0; i < 2; ++i) core->CreateTool("Probe");
    rig = core->List(false)[0];
  }
  void Set(int element, const std::string& text) {
    std::string problem;
    EXPECT_TRUE(core->EditParameter(*rig, element, text, problem)) << problem;
  }
  double Gain() const { return rig->GetConfig().Find(0)->GetNumber(); }
  bool Differs(int element, ParameterBase base) {
    return core->GetBaseValues(*rig, base).Differs(*rig->GetConfig().Find(element));
  }

  Instance* rig = nullptr;
};

TEST_F(Requests, AResetIsOneStepTowardsTheProfileOrTheFactory) {
  ProfileRequests requests(*core, rig->GetIdentity(), ProfileRequests::Kind::kConfig);
  EXPECT_EQ(core->GetBaseValues(*rig, ParameterBase::kFactory).GetText(0), "1");
  EXPECT_FALSE(core->GetBaseValues(*rig, ParameterBase::kFactory).Holds(3)) << "a button";
  Set(0, "2.5");
  EXPECT_TRUE(requests.SaveAs("Mine", false).Done());
  EXPECT_FALSE(Differs(0, ParameterBase::kProfile));
  EXPECT_TRUE(Differs(0, ParameterBase::kFactory));
  Set(0, "7");
  Set(1, "9");
  Set(2, "1");
  EXPECT_TRUE(Differs(0, ParameterBase::kProfile));
  EXPECT_EQ(core->ResetParameters(*rig, {0}, ParameterBase::kProfile), "");
  EXPECT_EQ(Gain(), 2.5);
  EXPECT_EQ(plugin.log.callbacks.back(), "Gain") << "the rig is told as of an edit";
  const auto& group = *rig->GetConfig().GetElements().front();
  EXPECT_EQ(core->ResetGroup(*rig, group, ParameterBase::kFactory), "");
  EXPECT_EQ(Gain(), 1.0);
  EXPECT_EQ(rig->GetConfig().Find(1)->GetNumber(), 3.0);
  core->Undo();
  EXPECT_EQ(Gain(), 2.5);
  EXPECT_EQ(rig->GetConfig().Find(1)->GetNumber(), 9.0);
  core->Undo();
  EXPECT_EQ(Gain(), 7.0);
  const std::size_t calls = adaptor.events.size();
  EXPECT_EQ(core->ResetParameters(*rig, {0}, ParameterBase::kFactory), "");
  core->Undo();
  EXPECT_EQ(core->ResetParameters(*rig, {2, 1}, ParameterBase::kFactory), "");
  EXPECT_EQ(core->ResetParameters(*rig, {2, 1}, ParameterBase::kFactory), "");
  EXPECT_EQ(adaptor.events.size(), calls + 4) << "the last one had nothing to do";
  EXPECT_NE(core->ResetParameters(*rig, {99}, ParameterBase::kFactory), "");
}

TEST_F(Requests, OnProfilesAnswerInWordsAndHarmNoShippedOne) {
  using Kind = ProfileRequests::Kind;
  for (const Kind kind : {Kind::kConfig, Kind::kInputs}) {
    ProfileRequests requests(*core, rig->GetIdentity(), kind);
    const bool config = kind == Kind::kConfig;
    std::string shipped;
    for (const auto& entry : requests.List())
      if (entry.isFixed && entry.isReadOnly && entry.name != kFactorySettings) shipped = entry.name;
    ASSERT_FALSE(shipped.empty());
    EXPECT_EQ(requests.SaveAs(shipped, true).answer, Answer::kRefused);
    EXPECT_EQ(requests.Rename(shipped, "Other").answer, Answer::kRefused);
    EXPECT_EQ(requests.Delete(shipped, true).answer, Answer::kRefused);
    EXPECT_EQ(requests.SaveAs("a.b", true).answer, Answer::kRefused);

    EXPECT_TRUE(requests.SaveAs("Mine", false).Done());
    EXPECT_EQ(requests.SaveAs("Mine", false).answer, Answer::kAsk);
    EXPECT_EQ(requests.Save(true).Done(), config);
    EXPECT_TRUE(requests.Export("Mine", folder.path + "/out").Done());
    EXPECT_TRUE(requests.Rename("Mine", "Yours").Done());
    EXPECT_EQ(requests.Load("Mine").answer, Answer::kRefused);
    if (config) {
      EXPECT_EQ(rig->GetCurrentProfile(), "Yours");
    }
    EXPECT_TRUE(requests.Import(folder.path + "/out", false).Done());
    EXPECT_EQ(requests.Delete("Mine", false).answer, Answer::kAsk);
    EXPECT_TRUE(requests.Delete("Mine", true).Done());
    EXPECT_TRUE(requests.LoadFactorySettings().Done());
    EXPECT_EQ(requests.SaveStartProfile().message, "Start Profile saved");
    EXPECT_TRUE(requests.Load(shipped).Done());
    core->Undo();
    core->Undo();
    if (config) {
      EXPECT_EQ(rig->GetCurrentProfile(), "Yours") << "each load was one step";
    }
  }
  ProfileRequests gone(*core, rig->GetIdentity(), Kind::kConfig);
  core->DeleteTool(rig->GetInstanceName());
  EXPECT_TRUE(gone.List().empty());
  EXPECT_EQ(gone.Save(true).message, "the rig has gone");
}

}  // namespace
}  // namespace orv::tests
