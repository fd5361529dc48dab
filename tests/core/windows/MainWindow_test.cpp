#include <QKeyEvent>
#include <QMenuBar>
#include <cmath>

#include "core/WindowIds.h"
#include "core/instances/InstanceReference.h"
#include "core/windows/MainWindow.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/MenuIds.h"
#include "core/windows/ToolConfigIds.h"
#include "gui/GuiMessages.h"
#include "gui/component/Tree.h"
#include "gui/componentinterface/Button.h"
#include "gui/componentinterface/CheckBox.h"
#include "gui/componentinterface/Dialog.h"
#include "gui/componentinterface/Label.h"
#include "gui/componentinterface/Menubar.h"
#include "gui/componentinterface/Spinner.h"
#include "gui/componentinterface/TextBox.h"
#include "support/WindowsTest.h"

namespace orv::tests {

namespace {

using namespace rws::core;
using namespace rws::core::windows;
using namespace gui::componentinterface;

class MainWindow : public WindowsTest {
 protected:
  MainWindow() {
    core.StopRecording();
    main = Begin().Open(WindowKind::kMain);
  }
  template <class Interface>
  Interface& The(int id) {
    return *main->GetRoot()->Get<Interface>(id);
  }
  gui::component::Tree& Rigs() { return The<gui::component::Tree>(kRigTree); }
  void Command(int id) { main->GetRoot()->Find(kMainMenu)->Post(gui::kMsgMenuItem, id); }
  const gui::MenuItem& Item(int id) { return *The<Menubar>(kMainMenu).GetMenu().Find(id); }
  std::string Text(int id) { return The<Label>(id).GetShownText(); }
  /// The rows as the tree shows them, "name" or "name(inside)".
  std::string Shown(const Tree::Node& node) {
    std::string text;
    for (const Tree::Node* child : node.children()) {
      text += (text.empty() ? "" : " ") + child->row.cells[0].text;
      if (child->childCount() > 0) text += "(" + Shown(*child) + ")";
    }
    return text;
  }
  std::string Shown() { return Shown(*Rigs().FindRow(Tree::kTop)); }
  void Drag(const std::vector<int>& rows, int parent, int index) {
    gui::MoveRequest request{rows, parent, index};
    main->GetRoot()->Find(kRigTree)->Post(gui::kMsgMoveRequest, 0, &request);
  }

  Window* main = nullptr;
};

}  // namespace

TEST_F(MainWindow, FramesWhatTheProgramHas) {
  ASSERT_TRUE(main);
  EXPECT_EQ(main->GetWidget()->windowTitle(), "scene.glb - Orvel Rigwright");
  program.changed = true;
  windows->TellSceneChanged();
  EXPECT_EQ(main->GetWidget()->windowTitle(), "scene.glb* - Orvel Rigwright");
  EXPECT_FALSE(Item(kCommandNew).visible);
  Command(kCommandNew);
  EXPECT_EQ(program.ran, std::vector<int>{kCommandNew});
  gui::FilesDropped dropped{{"a.glb"}};
  main->GetRoot()->Post(gui::kMsgFilesDropped, 0, &dropped);
  EXPECT_EQ(program.dropped, dropped.paths);
  // The core has its view of it, and its check boxes are kept.
  bool on = false;
  ASSERT_TRUE(core.GetMainWindow() && core.GetMainWindow()->GetCheckBox(kAutoExpandTimeline, on));
  EXPECT_TRUE(on);
  EXPECT_EQ(core.GetRootComponent(), main->GetRoot());
  EXPECT_TRUE(core.GetMainWindow()->GetWindowHandle());
  EXPECT_EQ(Unnamed(*main->GetWidget()), std::vector<std::string>{});
  // Escape is no way out, and the program may refuse.
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QApplication::sendEvent(main->GetWidget(), &escape);
  EXPECT_TRUE(main->IsShown());
  auto* dialog = dynamic_cast<Dialog*>(main->GetRoot());
  program.mayClose = false;
  EXPECT_FALSE(dialog->Close());
  program.mayClose = true;
  EXPECT_TRUE(dialog->Close());
  EXPECT_EQ(program.closed, 1);
  EXPECT_EQ(core.GetRootComponent(), nullptr);
}

TEST_F(MainWindow, ArrangesRigs) {
  EXPECT_FALSE(Rigs().GetEmptyText().empty());
  const int a = Add("1DPositioner", "A"), b = Add("1DPositioner", "B"), c = Add("1DRotator", "C");
  EXPECT_EQ(Shown(), "A B C");
  // Selection goes both ways.
  core.SetSelection({b});
  EXPECT_EQ(Rigs().GetSelected(), std::vector<int>{b});
  Rigs().SelectByUser({a, c}, c);
  EXPECT_EQ(core.GetSelection(), (std::vector<int>{a, c}));
  // Each is one step of undo.
  Command(kCommandGroup);
  EXPECT_EQ(Shown(), "Group(A C) B");
  const int group = core.FindRow("Group")->GetId();
  Drag({b}, group, 1);
  EXPECT_EQ(Shown(), "Group(A B C)");
  Drag({a, c}, Tree::kTop, 1);
  EXPECT_EQ(Shown(), "Group(B) A C");
  Drag({group}, Tree::kTop, 3);
  EXPECT_EQ(Shown(), "A C Group(B)");
  Drag({group}, group, 0);
  EXPECT_EQ(Shown(), "A C Group(B)");
  EXPECT_FALSE(Text(kRigNotice).empty());
  core.SetSelection({group, b, a});
  Command(kCommandDelete);
  EXPECT_EQ(Shown(), "C");
  for (const char* before :
       {"A C Group(B)", "Group(B) A C", "Group(A B C)", "Group(A C) B", "A B C"}) {
    ASSERT_TRUE(core.Undo());
    EXPECT_EQ(Shown(), before);
  }
  core.SetSelection({core.FindRow("A")->GetId(), core.FindRow("B")->GetId()});
  Command(kCommandDuplicate);
  EXPECT_EQ(Rigs().GetRowCount(), 5);
  EXPECT_EQ(core.GetSelection().size(), 2u);
  core.Undo();
  EXPECT_EQ(Shown(), "A B C");
  // A name that is taken is refused in words.
  gui::Renamed renamed{a, "B"};
  main->GetRoot()->Find(kRigTree)->Post(gui::kMsgRenamed, a, &renamed);
  EXPECT_NE(Text(kRigNotice).find("B"), std::string::npos);
  EXPECT_EQ(Shown(), "A B C");
  Rigs().CheckByUser(b, CheckState::kOff);
  EXPECT_FALSE(core.FindRow("B")->IsChecked());
  EXPECT_EQ(Rigs().FindRow(core.FindRow("B")->GetId())->row.cells[2].text, "off");
}

TEST_F(MainWindow, DocksTheParametersOfTheSelectedRigs) {
  const int a = Add("1DPositioner", "A"), b = Add("1DPositioner", "B"), c = Add("1DRotator", "C");
  core.SetSelection({a, b, c});
  Window* panel = windows->Find(WindowKind::kToolConfig, a);
  ASSERT_TRUE(panel && panel->IsDocked() && panel->IsShown());
  EXPECT_GT(panel->GetRoot()->Find(kConfigRows)->childCount(), 0);
  core.SetSelection({c});
  EXPECT_FALSE(panel->IsShown());
  EXPECT_TRUE(windows->Find(WindowKind::kToolConfig, c)->IsShown());
  The<Button>(kDockFloat).Click();
  QApplication::processEvents();
  ASSERT_TRUE(windows->Find(WindowKind::kToolConfig, c));
  EXPECT_FALSE(windows->Find(WindowKind::kToolConfig, c)->IsDocked());
  The<Button>(kDockFloat).Click();
  EXPECT_TRUE(windows->Find(WindowKind::kToolConfig, c)->IsDocked());
  Command(kCommandDelete);
  QApplication::processEvents();
  EXPECT_FALSE(windows->Find(WindowKind::kToolConfig, c));
}

TEST_F(MainWindow, MakesRigsOfTheListOfTools) {
  auto& tools = The<gui::component::Tree>(kToolTree);
  const int all = tools.GetRowCount();
  The<TextBox>(kToolSearch).SetText("rotat");
  main->GetRoot()->Find(kToolSearch)->Post(gui::kMsgTyped);
  EXPECT_GT(tools.GetRowCount(), 0);
  EXPECT_LT(tools.GetRowCount(), all);
  main->GetRoot()->Find(kToolSearch)->Post(gui::kMsgEntered);
  ASSERT_EQ(core.GetRows().size(), 1u);
  EXPECT_EQ(core.GetSelection(), std::vector<int>{core.GetRows().front()->GetId()});
  EXPECT_FALSE(Text(kToolNotice).size());
}

TEST_F(MainWindow, RunsTakes) {
  EXPECT_FALSE(main->GetRoot()->Find(kTakeRecord)->IsEnabled());
  EXPECT_FALSE(main->GetRoot()->Find(kTakeRecord)->GetShownTooltip().empty());
  const int rig = Add("1DPositioner", "A");
  ASSERT_TRUE(main->GetRoot()->Find(kTakeRecord)->IsEnabled());
  The<Button>(kTakeRecord).Click();
  ASSERT_TRUE(core.IsRecording());
  EXPECT_FALSE(main->GetRoot()->Find(kTakeRecord)->IsEnabled());
  EXPECT_FALSE(Item(kCommandDelete).enabled);
  core.SetSelection({rig});
  Command(kCommandDelete);
  EXPECT_EQ(core.GetRows().size(), 1u);
  EXPECT_EQ(Rigs().FindRow(rig)->row.cells[2].text, "recording");
  for (unsigned ms = 0; ms <= 400; ms += 20) core.OnTimer(RecordManager::kTakeTimer, ms);
  main->OnLive();
  EXPECT_NE(Text(kTakeStatus).find("frame"), std::string::npos) << Text(kTakeStatus);
  The<Button>(kTakeStop).Click();
  EXPECT_FALSE(core.IsRecording());
  // The slow factor by its index, with the factor in words.
  core.SetSlowFactorIndex(3);
  EXPECT_EQ(The<Spinner>(kSlowMotionFactor).GetValue(), 3.0);
  EXPECT_EQ(Text(kTakeSlowText), "4 x slower");
  // The range is the host's, and a change of it one step.
  The<Spinner>(kTakeTo).SetValue(4.0);
  main->GetRoot()->Find(kTakeTo)->Post(gui::kMsgValueChanged);
  double start = 0.0, end = 0.0;
  core.GetAdaptor()->GetTimeRange(start, end);
  EXPECT_EQ(end, 4.0);
  core.Undo();
  core.GetAdaptor()->GetTimeRange(start, end);
  EXPECT_NE(end, 4.0);
  main->OnLive();
  EXPECT_EQ(The<Spinner>(kTakeTo).GetValue(), end);
}

}  // namespace orv::tests
