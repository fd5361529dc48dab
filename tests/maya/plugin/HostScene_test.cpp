// What the host does to its scene while rigs are in it.
#include <gtest/gtest.h>
#include <maya/MDGMessage.h>
#include <maya/MFnMesh.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MSelectionList.h>

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QTabletEvent>
#include <QWidget>
#include <QWindow>

#include "adaptor/maya/CMayaNode.h"
#include "adaptor/maya/plugin/TakeKeys.h"
#include "adaptor/maya/scene/ModifiedFlag.h"
#include "adaptor/maya/scene/SceneStorage.h"
#include "core/services/Preferences.h"
#include "gui/Texts.h"
#include "maya/plugin/PluginFixture.h"
#include "unidevice/Control.h"
#include "unidevice/ControlChoice.h"
#include "unidevice/DriverManager.h"
#include "util/ReturnValue.h"

namespace orv::tests {
namespace {

using namespace rws::adaptor::maya;

class HostScene : public PluginTest {
 protected:
  static MObject NodeOf(const char* name) {
    MSelectionList found;
    MObject node;
    MGlobal::getSelectionListByName(name, found);
    found.getDependNode(0, node);
    return node;
  }
};

TEST_F(HostScene, ExportsTheRigsAndStaysUnchanged) {
  ASSERT_TRUE(Load());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  const std::string rigs = Records();
  for (const bool modified : {true, false}) {
    ModifiedFlag::Set(modified);
    const std::string before = mayahost::Dump();
    EXPECT_TRUE(MFileIO::exportAll(Path("e").c_str(), "mayaAscii"));
    EXPECT_EQ(ModifiedFlag::IsSet(), modified);
    EXPECT_EQ(mayahost::Dump(), before);
  }
  Open("e");
  EXPECT_EQ(Records(), rigs);
}

TEST_F(HostScene, AfterAFailedOpenThoseRigsGoWhoseNodesDied) {
  ASSERT_TRUE(Load());
  EXPECT_TRUE(util::writeFile(Path("damaged"), "no scene of any kind {"));
  for (const bool withEvents : {true, false}) {
    Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
    Run("OrvelCreateToolCmd -name \"DirectInputLink\"");
    EXPECT_FALSE(MFileIO::open(Path("none").c_str(), "mayaAscii", true));
    EXPECT_EQ(Rigs().size(), 2u) << "before-open drops no rows";
    if (withEvents) QCoreApplication::processEvents();
    Run("OrvelRenameToolCmd -name \"MotionFilterCam_01\" \"Eye\"");
    EXPECT_EQ(Rigs().size(), 2u) << "the scene stays";
    EXPECT_EQ(Rigs().front(), "Eye");
    EXPECT_FALSE(MFileIO::open(Path("damaged").c_str(), "mayaAscii", true));
    EXPECT_EQ(Rigs().size(), 2u);
    if (withEvents)
      QCoreApplication::processEvents();
    else
      Run("OrvelDeleteToolCmd -name \"none\"");
    EXPECT_TRUE(Rigs().empty()) << "the scene is lost";
    EXPECT_TRUE(PluginSession::Get()->FollowsNodes());
  }
}

TEST_F(HostScene, AFailedSaveLeavesNoStorage) {
  ASSERT_TRUE(Load());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  const std::string before = mayahost::Dump();
  for (const bool withEvents : {true, false}) {
    EXPECT_FALSE(MFileIO::saveAs((folder.path + "/none/a.ma").c_str(), "mayaAscii", true));
    if (withEvents)
      QCoreApplication::processEvents();
    else
      Run("OrvelDeleteToolCmd -name \"none\"");
    EXPECT_EQ(mayahost::Dump(), before);
  }
}

struct Watcher {
  int seen = 0, followed = 0;
  static void Came(MObject&, void* self) {
    auto& watcher = *static_cast<Watcher*>(self);
    ++watcher.seen;
    watcher.followed += PluginSession::Get()->FollowsNodes() ? 1 : 0;
  }
};

TEST_F(HostScene, FollowsNoNodesWhileAFileIsRead) {
  ASSERT_TRUE(Load());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  Save("a");
  Watcher watcher;
  const MCallbackId id = MDGMessage::addNodeAddedCallback(Watcher::Came, "transform", &watcher);
  Open("a");
  Import("a", "one");
  EXPECT_TRUE(MFileIO::reference(Path("a").c_str(), false, false, "ref"));
  EXPECT_GT(watcher.seen, 2);
  EXPECT_EQ(watcher.followed, 0);
  Run("createNode transform");
  EXPECT_EQ(watcher.followed, 1);
  MMessage::removeCallback(id);
}

TEST_F(HostScene, LeavesReferencedNodesAlone) {
  Run("createNode transform -n Box");
  MFnMesh().create(3, 1, MPointArray(3), MIntArray(1, 3), MIntArray(3, 0), NodeOf("Box"));
  Save("a");
  MFileIO::newFile(true);
  ASSERT_TRUE(Load());
  EXPECT_TRUE(MFileIO::reference(Path("a").c_str(), false, false, "ref"));
  auto& adaptor = PluginSession::Get()->GetAdaptor();
  rws::core::CoreNode* const box = adaptor.FindSceneNode("ref:Box");
  ASSERT_NE(box, nullptr);
  const std::string before = mayahost::Dump();
  EXPECT_FALSE(adaptor.TagNode(box, "Rig/Box"));
  EXPECT_FALSE(box->Rename("Crate"));
  adaptor.BeginUndoBlock("Delete");
  box->deleteMe();
  adaptor.DiscardNode(box);
  adaptor.EndUndoBlock();
  adaptor.GatherNodes();
  EXPECT_EQ(mayahost::Dump(), before);
  EXPECT_TRUE(mayahost::UndoQueue().empty());
  // What a user may do, works.
  rws::core::CoreNode* const known = adaptor.FindSceneNode("ref:Box");
  known->Hide();
  EXPECT_EQ(Run("getAttr ref:Box.visibility"), "0");
  known->Show();
  Run("createNode transform -n Group");
  Run("parent ref:Box Group");
  EXPECT_EQ(known->GetParent(), adaptor.FindSceneNode("Group"));
  Run("createNode transform -n Own");
  EXPECT_TRUE(adaptor.FindSceneNode("Own")->SetParent(known));
  EXPECT_EQ(adaptor.FindSceneNode("Own")->GetParent(), known);
}

TEST_F(HostScene, OpensTheRigsOfAReferenceThatBecomesPartOfTheScene) {
  ASSERT_TRUE(Load());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  Save("a");
  MFileIO::newFile(true);
  const std::string file = "\"" + Path("a") + "\"";
  Run("file -r -ns ref " + file);
  const std::string referenced = Join(Tags());
  Run("file -ur " + file);
  Run("file -lr " + file);
  EXPECT_TRUE(Rigs().empty());
  EXPECT_EQ(referenced, "") << "tags of its own alone";
  EXPECT_TRUE(Try("file -ir " + file)) << Said();
  EXPECT_EQ(Rigs(), (std::vector<std::string>{"MotionFilterCam_01"}));
  for (rws::core::CoreNode* node : Core().List(false).front()->GetNodes())
    EXPECT_TRUE(node->IsValid());
  EXPECT_FALSE(Core().List(false).front()->GetNodes().empty());
}

TEST_F(HostScene, GathersWithoutABoxInBatch) {
  for (const bool batch : {false, true}) {
    mayahost::SetBatch(false);
    ASSERT_TRUE(Load());
    Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
    Run("createNode transform -n Lost");
    auto& adaptor = PluginSession::Get()->GetAdaptor();
    EXPECT_TRUE(adaptor.TagNode(adaptor.FindSceneNode("Lost"), "Gone_01/Body"));
    const std::size_t tags = Tags().size();
    Save("a");
    MFileIO::newFile(true);
    Unload();
    mayahost::SetBatch(batch);
    ASSERT_TRUE(Load());
    Forget();
    Open("a");
    const std::string said = Said(), words = "they were never claimed";
    EXPECT_NE(said.find((batch ? "warning: " : "box: ") + std::string("Gather error")), said.npos)
        << said;
    EXPECT_NE(said.find(words), said.npos);
    EXPECT_NE(said.find("Lost"), said.npos);
    EXPECT_EQ(Tags().size(), tags - 1);
    MFileIO::newFile(true);
    Unload();
  }
}

TEST_F(HostScene, LeavesReferencedRigsClosedAndTellsOnce) {
  ASSERT_TRUE(Load());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  Save("a");
  MFileIO::newFile(true);
  Forget();
  EXPECT_TRUE(MFileIO::reference(Path("a").c_str(), false, false, "ref"));
  EXPECT_TRUE(MFileIO::reference(Path("a").c_str(), false, false, "again"));
  EXPECT_TRUE(Rigs().empty());
  const std::string said = Said();
  const std::size_t told = said.find("referenced files stay closed");
  ASSERT_NE(told, said.npos) << said;
  EXPECT_EQ(said.find("referenced files stay closed", told + 1), said.npos);
}

TEST_F(HostScene, TakesNoRigsFromAnImportOfItsOwn) {
  ASSERT_TRUE(Load());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  Save("a");
  const std::size_t tags = Tags().size();
  std::vector<rws::core::CoreNode*> nodes;
  util::ReturnValue<std::vector<rws::core::CoreNode*>> result(nodes);
  auto& adaptor = PluginSession::Get()->GetAdaptor();
  EXPECT_EQ(adaptor.ImportNodes(Path("a"), "In_", result), "");
  EXPECT_EQ(Rigs().size(), 1u);
  EXPECT_EQ(Tags().size(), tags);
  EXPECT_FALSE(PluginSession::Get()->GetStorage().IsThere());
}

TEST_F(HostScene, ReadsAMergeByItsNamespacesAndKeepsTheListsOrder) {
  ASSERT_TRUE(Load());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  Run("OrvelCreateToolCmd -name \"SteadyCam\"");
  Core().MoveBefore(Core().Find("SteadyCam_01"), Core().Find("MotionFilterCam_01"));
  Save("a");
  Unload();
  // Two scenes in one file, made where nobody read their storage.
  MFileIO::newFile(true);
  Import("a", "left");
  Import("a", "right");
  Save("merged");
  ASSERT_TRUE(Load());
  Open("merged");
  EXPECT_EQ(Rigs(), (std::vector<std::string>{"SteadyCam_01", "MotionFilterCam_01", "SteadyCam_02",
                                              "MotionFilterCam_02"}));
  for (rws::core::Instance* rig : Core().List(false))
    for (rws::core::CoreNode* node : rig->GetNodes())
      EXPECT_EQ(node->GetTag().rfind(rig->GetInstanceName() + "/", 0), 0u) << node->GetTag();
}

TEST_F(HostScene, BindsTheStartKeyInASetOfTheUsersAloneAndGivesItBack) {
  ASSERT_TRUE(Load());
  EXPECT_FALSE(TakeKeys::CanBind());
  Unload();
  Run("hotkeySet -source \"Maya_Default\" -current \"Mine\"");
  Run("hotkey -k \"-\" -name \"mine\"");
  ASSERT_TRUE(Load());
  EXPECT_EQ(Run("hotkey -q -name \"Space\" -ctl -alt"), "OrvelStartAnimationCmd");
  {
    TakeKeys keys;
    EXPECT_TRUE(keys.Do(TakeKeys::kBindTake));
    EXPECT_EQ(Run("hotkey -q -name Dash "), "OrvelDecSlowFactorCmd");
    EXPECT_EQ(Run("hotkey -q -name \"Space\""), "OrvelStopAnimationCmd");
    EXPECT_TRUE(keys.Do(TakeKeys::kRestore));
  }
  EXPECT_EQ(Run("hotkey -q -name Dash "), "mine");
  EXPECT_EQ(Run("hotkey -q -name \"Space\""), "");
  Unload();
  EXPECT_EQ(Run("hotkey -q -name \"Space\" -ctl -alt"), "");
}

/// What a widget of the host gets of the keyboard.
class Listener : public QWidget {
 public:
  int keys = 0;

 protected:
  void keyPressEvent(QKeyEvent*) override { ++keys; }
};

TEST_F(HostScene, LeavesTheHostItsKeysButInTakes) {
  ASSERT_TRUE(Load());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  Listener widget;
  const auto press = [&widget](int key, Qt::KeyboardModifiers held) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(type, key, held);
      QCoreApplication::sendEvent(&widget, &event);
    }
    QCoreApplication::processEvents();
  };
  press(Qt::Key_Space, Qt::ControlModifier | Qt::AltModifier);
  press(Qt::Key_Space, Qt::NoModifier);
  EXPECT_EQ(widget.keys, 2);
  EXPECT_FALSE(Core().IsRecording());
  Run("OrvelStartAnimationCmd");
  ASSERT_TRUE(Core().IsRecording());
  press(Qt::Key_A, Qt::NoModifier);
  EXPECT_EQ(widget.keys, 3);
  const int slow = Core().GetSlowFactorIndex();
  press(Qt::Key_Plus, Qt::NoModifier);
  EXPECT_EQ(Core().GetSlowFactorIndex(), slow + 1);
  Run("OrvelDecSlowFactorCmd");
  EXPECT_EQ(Core().GetSlowFactorIndex(), slow);
  press(Qt::Key_Space, Qt::NoModifier);
  EXPECT_FALSE(Core().IsRecording());
  EXPECT_EQ(widget.keys, 3);
}

TEST_F(HostScene, KeysAndPensOfTheHostsWindowsDriveRigsInTakes) {
  ASSERT_TRUE(Load());
  Run("OrvelCreate4WheelerExtCmd");
  EXPECT_TRUE(Try("OrvelLoadProfileCmd -name \"4WheelerExt_01\" \"Example Keyboard.oip\""));
  Listener widget;
  widget.show();
  QApplication::setActiveWindow(&widget);
  QCoreApplication::processEvents();
  auto& drivers = unidevice::DriverManager::instance();
  const auto press = [&widget](QEvent::Type type, int key, unsigned scan) {
    QKeyEvent event(type, key, Qt::NoModifier, scan, 0, 0);
    QCoreApplication::sendEvent(&widget, &event);
    QCoreApplication::processEvents();
  };
  constexpr unsigned kUp = 103 + 8, kH = 35 + 8;  // scan codes
  press(QEvent::KeyPress, Qt::Key_Up, kUp);
  press(QEvent::KeyRelease, Qt::Key_Up, kUp);
  EXPECT_EQ(widget.keys, 1) << "the host's outside of takes";
  Run("OrvelStartAnimationCmd");
  ASSERT_TRUE(Core().IsRecording());
  press(QEvent::KeyPress, Qt::Key_H, kH);
  EXPECT_EQ(widget.keys, 2) << "no rig's";
  press(QEvent::KeyPress, Qt::Key_Up, kUp);
  EXPECT_EQ(widget.keys, 2);
  drivers.updateAll();
  const auto* key = drivers.findControl(unidevice::ControlChoice{"Keyboard", "Up_Arrow", 0}.tag());
  ASSERT_TRUE(key);
  EXPECT_EQ(key->read(), 1.0);
  press(QEvent::KeyRelease, Qt::Key_Up, kUp);
  const QPointF at(10, 10);
  QTabletEvent pen(QEvent::TabletPress, at, at, QTabletEvent::Stylus, QTabletEvent::Pen, 0.5, 0, 0,
                   0, 0, 0, Qt::NoModifier, 1, Qt::LeftButton, Qt::LeftButton);
  QCoreApplication::sendEvent(widget.windowHandle(), &pen);
  EXPECT_TRUE(drivers.findDevice("Tablet"));
  Run("OrvelStopAnimationCmd");
  Unload();
  EXPECT_FALSE(drivers.findDevice("Tablet") || drivers.findDevice("Keyboard"));
}

TEST_F(HostScene, WindowsSpeakTheLanguageOfThePreferences) {
  ASSERT_TRUE(Load());
  std::string problem;
  EXPECT_TRUE(Core().GetPreferences().Set("language", "de", problem)) << problem;
  PluginSession::Get()->ApplyAppearance();
  EXPECT_EQ(gui::Translate("Preferences"), "Einstellungen");
  EXPECT_TRUE(Core().GetPreferences().Save(&problem, {"language"})) << problem;
  Unload();
  EXPECT_EQ(gui::Translate("Preferences"), "Preferences");
  ASSERT_TRUE(Load());
  Run("OrvelShowUICmd");
  bool isGerman = false;
  for (const QWidget* window : QApplication::topLevelWidgets())
    for (const auto* label : window->findChildren<QAction*>())
      isGerman = isGerman || label->text().contains("Einstellungen");
  EXPECT_TRUE(isGerman);
}

TEST_F(HostScene, EndsATakeWhenTheSceneGoesOrPlays) {
  ASSERT_TRUE(Load());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  Run("OrvelStartAnimationCmd");
  mayahost::Play(true);
  EXPECT_FALSE(Core().IsRecording());
  mayahost::Play(false);
  Run("OrvelStartAnimationCmd");
  Save("a");
  EXPECT_FALSE(Core().IsRecording());
  Run("OrvelStartAnimationCmd");
  MFileIO::newFile(true);
  EXPECT_FALSE(Core().IsRecording());
  EXPECT_TRUE(Rigs().empty());
}

/// A script of the user's that the host runs when a take moves the time.
struct Script {
  std::function<void()> run;
  bool wasRecording = false;
  static void Time(MTime&, void* self) {
    auto& script = *static_cast<Script*>(self);
    if (!script.run || !PluginSession::Get()->GetCore().IsRecording()) return;
    const auto run = std::exchange(script.run, nullptr);
    run();
    script.wasRecording = PluginSession::Get()->GetCore().IsRecording();
  }
};

TEST_F(HostScene, WhatATicksTimeTriggersEndsTheTakeFirst) {
  ASSERT_TRUE(Load());
  Script script;
  const MCallbackId id = MDGMessage::addTimeChangeCallback(Script::Time, &script);
  struct Case {
    const char* name;
    std::function<void()> action;
    std::size_t rigs;
  };
  const Case cases[] = {
      {"save", [this] { Save("a"); }, 1},
      {"export", [this] { EXPECT_TRUE(MFileIO::exportAll(Path("e").c_str(), "mayaAscii")); }, 1},
      {"import", [this] { Import("a", "came"); }, 2},
      {"open", [this] { Open("a"); }, 1},
      {"new scene", [] { MFileIO::newFile(true); }, 0},
      {"create", [this] { Run("OrvelCreate4WheelerExtCmd"); }, 2},
      {"clone", [this] { Run("OrvelCloneToolCmd -name \"MotionFilterCam_01\""); }, 2},
      {"delete", [this] { Run("OrvelDeleteToolCmd -name \"MotionFilterCam_01\""); }, 0}};
  for (const auto& [name, action, rigs] : cases) {
    SCOPED_TRACE(name);
    MFileIO::newFile(true);
    Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
    Run("OrvelStartAnimationCmd");
    ASSERT_TRUE(Core().IsRecording());
    script.run = action;
    for (int i = 0; i < 400 && script.run; ++i)
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_FALSE(script.run) << "no tick came";
    EXPECT_FALSE(script.wasRecording);
    EXPECT_FALSE(Core().IsRecording());
    EXPECT_EQ(Rigs().size(), rigs);
    EXPECT_FALSE(PluginSession::Get()->GetAdaptor().IsUndoBlockOpen());
    QCoreApplication::processEvents();
  }
  EXPECT_GT(CountInFile("a", "\ncurve "), 0) << "the take's keys are in the file";
  MMessage::removeCallback(id);
}

TEST_F(HostScene, AnUndoInATakeTakesNothingOfItBack) {
  ASSERT_TRUE(Load());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  Run("OrvelStartAnimationCmd");
  Run("undo");
  EXPECT_TRUE(Core().IsRecording());
  EXPECT_EQ(Rigs().size(), 1u);
  Run("OrvelStopAnimationCmd");
  EXPECT_EQ(Rigs().size(), 1u);
  Run("OrvelDeleteToolCmd -name \"MotionFilterCam_01\"");
  Run("undo");
  EXPECT_EQ(Rigs().size(), 1u);
}

}  // namespace
}  // namespace orv::tests
