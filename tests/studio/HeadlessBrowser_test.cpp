#include "app/studio/HeadlessBrowser.h"

#include <QPixmap>

#include "app/studio/CarGuess.h"
#include "core/instances/InstanceReference.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/MenuIds.h"
#include "gui/GuiMessages.h"
#include "gui/component/Tree.h"
#include "gui/componentinterface/Menubar.h"
#include "gui/componentinterface/Spinner.h"
#include "support/WindowsTest.h"
#include "util/CMesh_Box.h"

namespace orv::tests {

namespace {

using namespace rws::core::windows;
using Space = SceneBrowser::Space;

class HeadlessBrowser : public WindowsTest {
 protected:
  HeadlessBrowser() : browser(core, session.GetAdaptor(), [](double) { return std::string(); }) {
    program.browser = &browser;
  }
  ~HeadlessBrowser() override { windows.reset(); }  // they look at the browser
  int Key(const std::string& name) {
    for (const SceneBrowser::Node& node : browser.GetNodes())
      if (node.name == name) return node.key;
    return 0;
  }
  rws::adaptor::headless::SceneNode& Mesh(const char* name) {
    auto& node = session.GetScene().AddNode(name);
    node.SetMesh(util::CMesh_Box(1.0, 1.0, 1.0));
    return node;
  }

  app::HeadlessBrowser browser;
};

}  // namespace

TEST_F(HeadlessBrowser, PlacesAndHangsNodesOneStepEach) {
  auto& carrier = Mesh("Carrier");
  rws::adaptor::Trs pose;
  pose.translation = {1.0, 2.0, 3.0};
  pose.rotation = {0.0, std::sqrt(0.5), 0.0, std::sqrt(0.5)};
  carrier.SetPose(pose);
  Mesh("Load");
  const int load = Key("Load"), parent = Key("Carrier");
  ASSERT_EQ(browser.MoveUnder({load}, parent), "");
  SceneBrowser::Pose local, world;
  ASSERT_TRUE(browser.GetPose(load, Space::kParent, local));
  ASSERT_TRUE(browser.GetPose(load, Space::kWorld, world));
  EXPECT_NEAR(world.translation.x, 0.0, 1e-12);
  EXPECT_NEAR(std::abs(local.rotation.y), 90.0, 1e-9);
  world.translation.x = 5.0;
  ASSERT_EQ(browser.SetPose(load, Space::kWorld, world), "");
  SceneBrowser::Pose after;
  browser.GetPose(load, Space::kWorld, after);
  EXPECT_NEAR(after.translation.x, 5.0, 1e-12);
  EXPECT_NEAR(after.translation.y, 0.0, 1e-12);
  EXPECT_NE(browser.MoveUnder({parent}, load), "");
  EXPECT_EQ(browser.GetUndoSteps().position, 2u);
  EXPECT_TRUE(browser.GoToStep(0));
  EXPECT_EQ(session.GetScene().Find("Load")->GetParent(), nullptr);
  EXPECT_EQ(browser.GetUndoSteps().names.size(), 2u);
  EXPECT_TRUE(browser.GoToStep(2));
  EXPECT_EQ(Key("Load"), load);
}

TEST_F(HeadlessBrowser, HandsGroundAndModelToTheCar) {
  const int car = Add("4WheelerExt", "Car");
  Mesh("Yard");
  std::string told;
  ASSERT_EQ(browser.UseAsGround(car, {Key("Yard")}, told), "");
  EXPECT_NE(told.find("Yard"), std::string::npos) << told;
  session.GetScene().AddNode("Nothing");
  EXPECT_NE(browser.UseAsGround(car, {Key("Nothing")}, told), "");
  ASSERT_EQ(browser.WhyNotFit(car), "");
  const std::vector<int> driven = browser.GetDriven(car);
  EXPECT_GT(driven.size(), 4u);
  EXPECT_EQ(app::WheelOfName("wheel_rear_right"), 3);
  EXPECT_EQ(app::WheelOfName("WheelFL_02"), 0);
  EXPECT_EQ(app::WheelOfName("Flag"), -1);
}

TEST_F(HeadlessBrowser, FollowsTenThousandNodesInTheTree) {
  for (int i = 0; i < 100; ++i) {
    auto& group = session.GetScene().AddNode("Group" + std::to_string(i));
    for (int k = 0; k < 99; ++k)
      session.GetScene().AddNode("Part" + std::to_string(100 * i + k), &group);
  }
  Window* main = Begin().Open(WindowKind::kMain);
  auto& tree = *main->GetRoot()->Get<gui::component::Tree>(kNodeTree);
  EXPECT_EQ(tree.GetRowCount(), 10000);
  // Whatever happens, the tree comes to what the scene is.
  unsigned random = 1;
  const auto next = [&random](std::size_t below) {
    random = random * 1664525u + 1013904223u;
    return (random >> 8) % below;
  };
  auto& scene = session.GetScene();
  for (int i = 0; i < 300; ++i) {
    const auto nodes = scene.GetNodes();
    auto& node = *nodes[next(nodes.size())];
    switch (next(4)) {
      case 0:
        scene.Detach(node);
        break;
      case 1:
        scene.Move(node, nodes[next(nodes.size())], next(3));
        break;
      case 2:
        scene.Rename(node, "Other");
        break;
      default:
        scene.AddNode("New", &node);
    }
    if (i % 10 == 0) Live();
  }
  Live();
  std::vector<std::string> shown, wanted;
  const std::function<void(const gui::component::Tree::Node&)> visit = [&](const auto& node) {
    for (const auto* child : node.children()) {
      shown.push_back(child->row.cells[0].text);
      visit(*child);
    }
  };
  visit(tree.GetTop());
  for (const auto* node : scene.GetNodes()) wanted.push_back(node->GetName());
  EXPECT_EQ(shown, wanted);
}

TEST_F(HeadlessBrowser, NamesStepsInTheMenu) {
  Mesh("Body");
  Window* main = Begin().Open(WindowKind::kMain);
  main->GetRoot()->Get<gui::component::Tree>(kNodeTree)->SelectByUser({Key("Body")}, Key("Body"));
  main->OnLive();
  EXPECT_EQ(browser.GetSelection(), std::vector<int>{Key("Body")});
  EXPECT_TRUE(browser.GetUndoSteps().names.empty());
  auto& x = *main->GetRoot()->Get<gui::componentinterface::Spinner>(kNodeNumbers);
  x.SetValue(2.0);
  x.GetComponent().Post(gui::kMsgValueChanged);
  EXPECT_EQ(session.GetScene().Find("Body")->GetPose().translation.x, 2.0);
  windows->TellSceneChanged();
  const auto& menu = main->GetRoot()->Get<gui::componentinterface::Menubar>(kMainMenu)->GetMenu();
  EXPECT_EQ(menu.Find(kCommandUndo)->label, "&Undo Place Body");
  main->GetRoot()->Find(kMainMenu)->Post(gui::kMsgMenuItem, kCommandUndo);
  EXPECT_EQ(session.GetScene().Find("Body")->GetPose().translation.x, 0.0);
}

}  // namespace orv::tests
