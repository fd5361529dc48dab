#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "adaptor/maya/MayaAdaptorInterface.h"
#include "adaptor/maya/plugin/Commands.h"
#include "adaptor/maya/plugin/PluginSession.h"
#include "adaptor/maya/plugin/SelfTest.h"
#include "adaptor/maya/scene/CStorageNode.h"
#include "adaptor/maya/scene/ModifiedFlag.h"
#include "adaptor/maya/scene/StorageNode.h"
#include "core/CoreImplementation.h"
#include "core/config/ProfileRequests.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "maya/plugin/PluginFixture.h"
#include "support/WidgetApplication.h"

namespace orv::tests {
namespace {

using namespace rws::adaptor::maya;

const char* const kCallbacks[] = {
    "callback 1",  "callback 2",       "callback 5",         "callback 12",           "callback 13",
    "callback 6",  "callback 4",       "callback 15",        "callback 19",           "callback 23",
    "callback 37", "callback 45",      "callback 3",         "callback 18",           "callback 10",
    "callback 11", "added dependNode", "removed dependNode", "condition playingBack", "time"};

class Plugin : public PluginTest {};

int StorageNodes() {
  int referenced = 0;
  return static_cast<int>(FindStorage(StorageNode::kId, false, referenced).size() +
                          FindStorage(CStorageNode::kId, true, referenced).size());
}

TEST_F(Plugin, LoadsAndUnloadsTwiceAndLeavesNothing) {
  const std::string before = Registered();
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(Load()) << Said();
    EXPECT_NE(Registered(), before);
    // More than the queue holds.
    for (int i = 0; i < 30; ++i) {
      EXPECT_NE(Run("OrvelCreateToolCmd -name \"MotionFilterCam\""), "");
      Run("OrvelDeleteToolCmd -name \"MotionFilterCam_01\"");
    }
    EXPECT_GE(mayahost::UndoQueue().size(), 50u);
    ASSERT_TRUE(Unload()) << Said();
    EXPECT_TRUE(mayahost::UndoQueue().empty());
    EXPECT_EQ(Registered(), before);
    EXPECT_EQ(PluginSession::Get(), nullptr);
  }
}

TEST_F(Plugin, ARegistrationThatFailsLeavesNothingAndTellsItsText) {
  const std::string before = Registered();
  std::vector<std::pair<std::string, std::string>> steps;
  // All but two are told by their own names.
  for (const CommandRow& row : AllCommands())
    steps.emplace_back(row.name, "registerCommand " + std::string(row.name) + " failed");
  steps[0].second = "registerCommand StartOrvelRigwrightStudioCmd failed";
  steps[4].second = "registerCommand OrvelReSimulate failed";
  steps.emplace_back("StorageNode", "registerNode StorageNode failed");
  steps.emplace_back("CStorageNode", "registerNode CStorageNode failed");
  steps.emplace_back(SelfTestCommand().name, "registerCommand OrvelSelfTestCmd failed");
  EXPECT_EQ(steps.size(), 17u);
  for (const auto& [name, text] : steps) {
    mayahost::FailRegistration(name);
    EXPECT_FALSE(Load()) << name;
    EXPECT_NE(Said().find(text), std::string::npos) << Said();
    EXPECT_EQ(Registered(), before) << name;
  }
  for (const char* callback : kCallbacks) {
    mayahost::FailRegistration(callback);
    EXPECT_FALSE(Load()) << callback;
    EXPECT_EQ(Registered(), before) << callback;
  }
  ASSERT_TRUE(Load());
  // The host's own registry lost them: each is told, in the order in which they go.
  MObject object = MFnPlugin::findPlugin("OrvelRigwright");
  for (const CommandRow& row : AllCommands()) MFnPlugin(object).deregisterCommand(row.name);
  MFnPlugin(object).deregisterCommand(SelfTestCommand().name);
  MFnPlugin(object).deregisterNode(CStorageNode::kId);
  MFnPlugin(object).deregisterNode(StorageNode::kId);
  Forget();
  Unload();
  const std::string said = Said();
  std::size_t at = 0;
  for (const char* text :
       {"deregisterNode CStorageNode failed", "deregisterNode StorageNode failed",
        "deregisterCommand OrvelIncSlowFactorCmd failed",
        "deregisterCommand OrvelDecSlowFactorCmd failed",
        "deregisterCommand OrvelCreate4WheelerExtCmd failed",
        "deregisterCommand OrvelCloneToolCmd failed", "deregisterCommand OrvelRenameToolCmd failed",
        "deregisterCommand OrvelDeleteToolCmd failed",
        "deregisterCommand OrvelStartAnimationCmd failed",
        "deregisterCommand OrvelStopAnimationCmd failed",
        "deregisterCommand OrvelSelectToolCmd failed"}) {
    at = said.find(text, at);
    ASSERT_NE(at, said.npos) << text << " in " << said;
  }
  for (const CommandRow& row : AllCommands())
    EXPECT_NE(said.find("deregisterCommand " + std::string(row.name) + " failed"), said.npos);
  EXPECT_EQ(Registered(), before);
}

TEST_F(Plugin, HasAShelfWhileItIsLoadedWithWindows) {
  const auto scripts = [] {
    std::vector<std::string> lines;
    for (std::string line : mayahost::Said())
      if (line.rfind("shelf: ", 0) == 0) {
        std::replace(line.begin(), line.end(), '\t', ' ');
        lines.push_back(line.substr(7));
      }
    return lines;
  };
  ASSERT_TRUE(Load());
  ASSERT_EQ(scripts().size(), 1u);
  std::size_t at = 0;
  const std::string icon = folder.path + "/orvelicon.xpm";
  for (const std::string& part :
       {std::string("string $tabName = \"RigwrightStudio\";global string $gShelfTopLevel;"),
        std::string("if(`tabLayout -exists $gShelfTopLevel`){ if( (`shelfLayout -exists $tabName`) "
                    "== 0){ addNewShelfTab $tabName;"),
        std::string("setParent $currentShelf; string $ShowInterfaceIcon = \""), icon,
        std::string("-command OrvelShowUICmd -label \"Start Orvel Rigwright\""),
        std::string("-image1 $ShowInterfaceIcon -style \"iconOnly\";}}")}) {
    at = scripts()[0].find(part, at);
    ASSERT_NE(at, std::string::npos) << part << " in " << scripts()[0];
  }
  std::string picture;
  EXPECT_TRUE(util::readFile(icon, picture));
  Unload();
  ASSERT_EQ(scripts().size(), 2u);
  EXPECT_NE(scripts()[1].find("deleteShelfTab $tabName"), std::string::npos);
  mayahost::SetBatch(true);
  Forget();
  ASSERT_TRUE(Load());
  Unload();
  EXPECT_TRUE(scripts().empty());
}

TEST_F(Plugin, CommandsTellTheirUsage) {
  ASSERT_TRUE(Load());
  const std::pair<const char*, const char*> rows[] = {
      {"OrvelLoadProfileCmd",
       "Missing tool name. Usage: OrvelLoadProfileCmd -name \"nameOfTool\" \"profileFileName\" to "
       "load."},
      {"OrvelLoadProfileCmd -name \"x\"",
       "Missing profile name. Usage: OrvelLoadProfileCmd -name \"nameOfTool\" "
       "\"profileFileName\" to load."},
      {"OrvelSelectToolCmd", "Usage: OrvelSelectToolCmd -name \"nameOfTool\" 1 to select."},
      {"OrvelSelectToolCmd -name \"x\"",
       "Usage: OrvelSelectToolCmd -name \"nameOfTool\" 1 to select."},
      {"OrvelCloneToolCmd", "Usage: OrvelCloneToolCmd -name \"nameOfTool\"."},
      {"OrvelRenameToolCmd -n \"x\"",
       "Usage: OrvelRenameToolCmd -name \"nameOfTool\" \"newName\"."},
      {"OrvelDeleteToolCmd", "Usage: OrvelDeleteToolCmd -name \"nameOfTool\"."},
  };
  for (const auto& [line, text] : rows) {
    Forget();
    EXPECT_FALSE(Try(line)) << line;
    EXPECT_NE(Said().find(text), std::string::npos) << line << ": " << Said();
  }
}

TEST_F(Plugin, CommandsMakeNameCopyAndDeleteRigs) {
  ASSERT_TRUE(Load());
  EXPECT_EQ(Run("OrvelCreateToolCmd -name \"MotionFilterCam\""), "MotionFilterCam_01");
  EXPECT_EQ(Run("OrvelCreate4WheelerExtCmd"), "4WheelerExt_01");
  EXPECT_TRUE(Try("OrvelRenameToolCmd -n \"MotionFilterCam_01\" \"Eye\""));
  const std::string clone = Run("OrvelCloneToolCmd -name \"Eye\"");
  EXPECT_EQ(Rigs(), (std::vector<std::string>{"Eye", clone, "4WheelerExt_01"}));
  Run("OrvelSelectToolCmd -name \"Eye\" 1");
  EXPECT_EQ(Core().GetSelection().size(), 1u);
  Run("OrvelSelectToolCmd -name \"Eye\" 0");
  EXPECT_TRUE(Core().GetSelection().empty());
  EXPECT_TRUE(Try("OrvelLoadProfileCmd -name \"4WheelerExt_01\" \"F1.ocp\""));
  EXPECT_EQ(Core().FindInstance("4WheelerExt_01")->GetCurrentProfile(), "F1");
  // A file that the rig does not have comes among its own.
  const std::string pad = folder.Write("Pad.oip",
                                       "<?xml version=\"1.0\"?>\n<profile name=\"Pad\"><property "
                                       "name=\"Forw/Backw Transl\"><multiplier>2</multiplier>"
                                       "</property></profile>\n");
  Forget();
  EXPECT_TRUE(Try("OrvelLoadProfileCmd -name \"Eye\" \"" + pad + "\""));
  EXPECT_EQ(Said(), "");
  const auto profiles = rws::core::ProfileRequests(Core(), Core().Find("Eye")->GetId(),
                                                   rws::core::ProfileRequests::Kind::kInputs)
                            .List();
  EXPECT_TRUE(std::any_of(profiles.begin(), profiles.end(),
                          [](const auto& entry) { return entry.name == "Pad"; }));
  EXPECT_TRUE(Try("OrvelLoadProfileCmd -name \"Eye\" \"None.ocp\""));
  EXPECT_NE(Said().find("error: "), std::string::npos);
  Run("OrvelDeleteToolCmd -name \"" + clone + "\"");
  EXPECT_EQ(Rigs().size(), 2u);
  Run("undo");
  EXPECT_EQ(Rigs(), (std::vector<std::string>{"Eye", clone, "4WheelerExt_01"}));
  Run("redo");
  EXPECT_EQ(Rigs().size(), 2u);
}

TEST_F(Plugin, SavesTwiceAndOpensTheSameRigs) {
  ASSERT_TRUE(Load());
  Run("OrvelCreate4WheelerExtCmd");
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  std::string problem;
  Core().MoveInto(Core().Find("MotionFilterCam_01"), Core().CreateGroup("Cameras", problem));
  Core().MoveBefore(Core().FindRow("Cameras"), Core().Find("4WheelerExt_01"));
  Core().SetChecked(Core().Find("4WheelerExt_01"), false);
  const std::string rigs = Records();
  Save("a");
  Save("a");
  EXPECT_EQ(StorageNodes(), 0);
  EXPECT_FALSE(ModifiedFlag::IsSet());
  EXPECT_EQ(CountInFile("a", "node StorageNode "), 1);
  EXPECT_EQ(CountInFile("a", "node CStorageNode "), 2);
  Forget();
  MFileIO::newFile(true);
  EXPECT_TRUE(Rigs().empty());
  Open("a");
  EXPECT_EQ(Records(), rigs);
  EXPECT_FALSE(ModifiedFlag::IsSet());
  EXPECT_EQ(StorageNodes(), 0);
  EXPECT_EQ(Said(), "");
}

TEST_F(Plugin, KeepsRigsOfUnknownKinds) {
  ASSERT_TRUE(Load());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  Run("OrvelCreateToolCmd -name \"SteadyCam\"");
  const std::string records = Records();
  Save("a");
  ReplaceInFile("a", "\"MotionFilterCam\"", "\"FromElsewhere\"");
  Open("a");
  EXPECT_EQ(Rigs(), (std::vector<std::string>{"SteadyCam_01"}));
  EXPECT_NE(Said().find("can't be opened"), std::string::npos);
  Save("b");
  EXPECT_EQ(CountInFile("b", "FromElsewhere"), CountInFile("a", "FromElsewhere"));
  // With the kind at hand again all is as it was.
  ReplaceInFile("b", "FromElsewhere", "MotionFilterCam");
  Open("b");
  EXPECT_EQ(Records(), records);
}

TEST_F(Plugin, ImportsTheSameSceneTwice) {
  ASSERT_TRUE(Load());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  Save("a");
  Import("a", "one");
  Import("a", "two");
  ASSERT_EQ(Rigs().size(), 3u);
  const std::vector<std::string> tags = Tags();
  EXPECT_EQ(std::set<std::string>(tags.begin(), tags.end()).size(), tags.size());
  // Each has nodes of its own.
  Core().DeleteTool(Rigs().back());
  Core().DeleteTool(Rigs().back());
  EXPECT_EQ(Rigs(), (std::vector<std::string>{"MotionFilterCam_01"}));
  for (rws::core::CoreNode* node : Core().List(false).front()->GetNodes())
    EXPECT_TRUE(node->IsValid());
}

TEST_F(Plugin, ResimulatesInBatchAndRefusesTakes) {
  mayahost::SetBatch(true);
  ASSERT_TRUE(Load());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  Forget();
  EXPECT_TRUE(Try("OrvelStartAnimationCmd"));
  EXPECT_NE(Said().find("a take needs a user"), std::string::npos);
  EXPECT_FALSE(Core().IsRecording());
  EXPECT_TRUE(Try("OrvelReSimulateCmd"));
  EXPECT_FALSE(Core().IsResimulating());
  bool anyKeyed = false;
  for (rws::core::CoreNode* node : Core().List(false).front()->GetNodes())
    anyKeyed = anyKeyed || node->HasKeys();
  EXPECT_TRUE(anyKeyed);
}

TEST_F(Plugin, WhatWasRefutedIsOffFromTheNextLoadOn) {
  ASSERT_TRUE(Load());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  Save("a");
  const auto loadWithout = [this](int probe) {
    MFileIO::newFile(true);
    EXPECT_FALSE(RunSelfTest({probe}).report.empty());
    Unload();
    Forget();
    EXPECT_TRUE(Load());
    return Said().find("(probe " + std::to_string(probe) + ";") != std::string::npos;
  };
  const auto create = [this] { return Run("OrvelCreateToolCmd -name \"MotionFilterCam\""); };
  EXPECT_TRUE(loadWithout(25));  // tools: none are made, and those of a scene are kept
  EXPECT_EQ(create(), "");
  Open("a");
  EXPECT_TRUE(Rigs().empty());
  Save("b");
  EXPECT_EQ(CountInFile("b", "node CStorageNode "), 1);
  EXPECT_TRUE(loadWithout(5));  // storage
  EXPECT_NE(create(), "");
  Save("b");
  EXPECT_EQ(CountInFile("b", "node CStorageNode "), 0);
  EXPECT_TRUE(loadWithout(8));  // import
  Import("a", "one");
  EXPECT_TRUE(Rigs().empty());
  EXPECT_TRUE(loadWithout(12));  // windows
  Run("OrvelShowUICmd");
  EXPECT_FALSE(Core().IsMainWindowOpen());
  EXPECT_TRUE(loadWithout(14));  // shelf
  EXPECT_EQ(Said().find("shelf: string"), std::string::npos);
  EXPECT_TRUE(loadWithout(9));  // undo: no entries are made
  create();
  EXPECT_EQ(Join(mayahost::UndoQueue()).find("OrvelUndoWrapperII"), std::string::npos);
  EXPECT_TRUE(loadWithout(13));  // hot keys
  EXPECT_TRUE(loadWithout(27));  // nodes
  EXPECT_FALSE(PluginSession::Get()->FollowsNodes());
}

TEST_F(Plugin, OpensTheWindowAndResimulatesThere) {
  ASSERT_TRUE(Load());
  Run("OrvelShowUICmd");
  EXPECT_TRUE(Core().IsMainWindowOpen());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  EXPECT_TRUE(Try("OrvelReSimulateCmd"));
  EXPECT_TRUE(Core().IsResimulating());
  Run("OrvelStopAnimationCmd");
  EXPECT_FALSE(Core().IsResimulating());
  Unload();
  EXPECT_EQ(Join(mayahost::UndoQueue()).find("OrvelUndoWrapperII"), std::string::npos);
}

TEST_F(Plugin, TestsAHostOnceAVersion) {
  ASSERT_TRUE(Load());
  EXPECT_NE(Said().find("has not been tested in this version"), std::string::npos);
  ModifiedFlag::Set(true);
  EXPECT_FALSE(Try("OrvelSelfTestCmd"));
  ModifiedFlag::Set(false);
  EXPECT_EQ(Run("OrvelSelfTestCmd"), GetSelfTestReport());
  Unload();
  Forget();
  ASSERT_TRUE(Load());
  EXPECT_EQ(Said().find("has not been tested"), std::string::npos);
  // Refuted once, off from then on.
  EXPECT_FALSE(RunSelfTest({55}).report.empty());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  Forget();
  EXPECT_TRUE(Try("OrvelStartAnimationCmd"));
  EXPECT_NE(Said().find("probe 55"), std::string::npos);
  EXPECT_NE(Core().WhyNoTake().filled().find("probe 55"), std::string::npos);
  Unload();
  ASSERT_TRUE(Load());
  EXPECT_FALSE(Features::instance().IsOn(Feature::kTakes));
}

}  // namespace
}  // namespace orv::tests
