// What the host does to its scene while rigs are in it.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

#include "adaptor/maya/plugin/TakeKeys.h"
#include "adaptor/maya/scene/ModifiedFlag.h"
#include "adaptor/maya/scene/SceneStorage.h"
#include "maya/plugin/PluginFixture.h"
#include "util/ReturnValue.h"

namespace orv::tests {
namespace {

using namespace rws::adaptor::maya;

class HostScene : public PluginTest {};

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

TEST_F(HostScene, KeepsTheRigsWhenAnotherCannotBeOpened) {
  ASSERT_TRUE(Load());
  Run("OrvelCreateToolCmd -name \"MotionFilterCam\"");
  MFileIO::open(Path("none").c_str(), "mayaAscii", true);
  QCoreApplication::processEvents();
  const bool nodesLive = !Tags().empty();
  EXPECT_EQ(Rigs().size(), nodesLive ? 1u : 0u);
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

}  // namespace
}  // namespace orv::tests
