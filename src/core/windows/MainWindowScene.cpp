#include "core/windows/MainWindowScene.h"

#include <algorithm>
#include <unordered_set>

#include "core/CoreImplementation.h"
#include "core/services/Translation.h"
#include "core/windows/FitCarWindow.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/MenuIds.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/TextBox.h"

namespace orv::rws::core::windows {

namespace {

using namespace gui::componentinterface;
using gui::Translate;
using Node = SceneBrowser::Node;

bool IsSame(const Node& a, const Node& b) {
  return a.type == b.type && a.name == b.name && a.keyed == b.keyed && a.ofRig == b.ofRig;
}

std::string TypeText(SceneBrowser::Type type) {
  switch (type) {
    case SceneBrowser::Type::kMesh:
      return Translate("mesh");
    case SceneBrowser::Type::kCurve:
      return Translate("curve");
    case SceneBrowser::Type::kCamera:
      return Translate("camera");
    default:
      return Translate("group");
  }
}

}  // namespace

MainWindowScene::MainWindowScene(MainWindowFrame& window) : MainWindowPage(window) {}

MainWindowScene::~MainWindowScene() {
  if (m_browser) m_browser->RemoveObserver(*this);
}

void MainWindowScene::OnBuilt() {
  Follow();
  if (gui::Component* area = GetWindow().Find(kNodeArea)) area->SetVisible(m_browser != nullptr);
  OnSettingsChanged();
  OnLive();
}

void MainWindowScene::Follow() {
  if (m_browser || !GetBrowser()) return;
  m_browser = GetBrowser();
  m_browser->AddObserver(*this);
}

void MainWindowScene::OnSettingsChanged() {
  With<Tree>(kNodeTree, [](Tree& tree) {
    tree.SetColumns({{Translatable("Node"), 200, true, false, true},
                     {Translatable("Type"), 70, false, false, true},
                     {Translatable("Keys"), 76, false, false, true}});
    tree.SetEmptyText(Translate("The scene is empty. Import a model, or drop a file here."));
  });
  m_nodes.clear();
  m_isOld = m_selectionIsOld = true;
}

// --- what is shown ---

MainWindowScene::Tree::Row MainWindowScene::Describe(const Node& node) const {
  Tree::Row row;
  row.takesRows = true;
  row.cells.resize(3);
  row.cells[0].text = node.name;
  row.cells[0].dim = node.ofRig;
  row.cells[1].text = TypeText(node.type);
  row.cells[1].dim = true;
  if (node.keyed) {
    row.cells[2].text = Translate("keys");
    row.cells[2].icon = "[coreimages]/icons/key.png";
  }
  return row;
}

void MainWindowScene::Show() {
  m_isOld = false;
  Tree* tree = Get<Tree>(kNodeTree);
  if (!tree) return;
  const std::vector<Node> nodes = m_browser->GetNodes();
  const gui::Frozen frozen(*GetWindow().Find(kNodeTree));
  std::unordered_map<int, Node> shown;
  shown.reserve(nodes.size());
  for (const Node& node : nodes) shown.emplace(node.key, node);
  std::vector<int> gone;
  for (const auto& [key, node] : m_nodes)
    if (!shown.count(key)) gone.push_back(key);
  // Another scene: nothing is worth being kept.
  if (gone.size() == m_nodes.size()) {
    tree->Clear();
    m_nodes.clear();
    gone.clear();
  }
  // A row takes those below it along when it goes, so what has another parent leaves first.
  for (const Node& node : nodes) {
    const auto old = m_nodes.find(node.key);
    if (old == m_nodes.end() || old->second.parent == node.parent) continue;
    if (!tree->MoveRow(node.key, node.parent, -1)) tree->MoveRow(node.key, Tree::kTop, -1);
  }
  for (const int key : gone) tree->RemoveRow(key);
  std::unordered_map<int, int> places;
  for (const Node& node : nodes) {
    const int place = places[node.parent]++;
    const Tree::Node* parent = tree->FindRow(node.parent);
    const Tree::Node* there = parent ? parent->child(place) : nullptr;
    const auto old = m_nodes.find(node.key);
    if (old == m_nodes.end()) {
      tree->AddRow(node.key, node.parent, place, Describe(node));
      continue;
    }
    if (!there || there->key != node.key) tree->MoveRow(node.key, node.parent, place);
    if (!IsSame(old->second, node)) tree->SetRow(node.key, Describe(node));
  }
  m_nodes = std::move(shown);
  m_selectionIsOld = true;
}

void MainWindowScene::ShowSelection() {
  m_selectionIsOld = false;
  With<Tree>(kNodeTree, [this](Tree& tree) {
    const std::vector<int> selection = m_browser->GetSelection();
    std::vector<int> wanted = selection, shown = tree.GetSelected();
    std::sort(wanted.begin(), wanted.end());
    std::sort(shown.begin(), shown.end());
    if (wanted == shown) return;
    tree.Select(selection);
    if (!selection.empty()) tree.ShowRow(selection.front());
  });
  ShowCommands();
}

int MainWindowScene::GetCurrent() const {
  const Tree* tree = Get<Tree>(kNodeTree);
  if (!tree) return 0;
  const std::vector<int> selected = tree->GetSelected();
  return selected.empty() ? 0 : selected.front();
}

void MainWindowScene::OnLive() {
  Follow();
  if (!m_browser || (!m_isOld && !m_selectionIsOld)) return;
  // A take's nodes come and go with it; the tree follows behind it.
  if (m_isOld && GetCore().GetRunState() == RunState::kIdle) Show();
  if (m_selectionIsOld) ShowSelection();
}

void MainWindowScene::OnCore(const util::Message& message) {
  if (const auto* run = NewsIn<RunStateChanged>(message))
    m_isOld = m_isOld || run->state == RunState::kIdle;
}

// --- what the user does ---

int MainWindowScene::FirstRig() const {
  for (const int id : GetCore().GetSelection()) {
    const InstanceReference* row = GetCore().FindRow(id);
    if (row && !row->IsGroup()) return id;
  }
  return 0;
}

void MainWindowScene::ShowCommands() {
  if (!m_browser) return;
  MainWindowFrame& window = GetWindow();
  const std::string locked = window.WhyLocked();
  const int rig = FirstRig();
  const bool node = GetCurrent() != 0;
  const std::string noRig = Translate("Select a rig first."),
                    noNode = Translate("Select a node in the scene first.");
  const auto show = [&](int command, const std::string& why) {
    window.ShowCommand(command, why.empty(), why);
  };
  show(kNodeGround, !locked.empty() ? locked : !rig ? noRig : !node ? noNode : std::string());
  show(kNodeFit, !locked.empty() ? locked : !rig ? noRig : m_browser->WhyNotFit(rig));
  show(kNodeToWorld, !locked.empty() ? locked : !node ? noNode : std::string());
  show(kNodeSelectDriven, rig ? std::string() : noRig);
}

void MainWindowScene::OnComponent(gui::Component& source, util::Message& message) {
  Tree* tree = Get<Tree>(kNodeTree);
  if (!m_browser || !tree) return;
  if (source.GetId() == kNodeSearch && message.id == gui::kMsgTyped)
    With<TextBox>(kNodeSearch, [tree](TextBox& box) { tree->SetFilter(box.GetText()); });
  if (source.GetId() != kNodeTree) return;
  if (message.id == gui::kMsgSelectionChanged) {
    Tell(kNodeNotice, {});
    m_browser->Select(tree->GetSelected());
    ShowCommands();
  } else if (const auto* move = gui::DataOf<gui::MoveRequest>(message)) {
    const std::string locked = GetWindow().WhyLocked();
    Tell(kNodeNotice, locked.empty() ? m_browser->MoveUnder(move->keys, move->parent) : locked);
    OnLive();
  }
}

void MainWindowScene::OnCommand(int command) {
  if (!m_browser) return;
  Tree* tree = Get<Tree>(kNodeTree);
  const bool edits = command == kNodeGround || command == kNodeFit || command == kNodeToWorld;
  if (edits && !GetWindow().WhyLocked().empty()) return;
  if (command == kNodeGround) UseAsGround();
  if (command == kNodeFit) FitCar();
  if (command == kNodeToWorld && tree)
    Tell(kNodeNotice, m_browser->MoveUnder(tree->GetSelected(), 0));
  if (command == kNodeSelectDriven && FirstRig() != 0)
    m_browser->Select(m_browser->GetDriven(FirstRig()));
  OnLive();
}

void MainWindowScene::UseAsGround() {
  Tree* tree = Get<Tree>(kNodeTree);
  const int rig = FirstRig();
  if (!tree || rig == 0 || GetCurrent() == 0) return;
  std::string told;
  const std::string problem = m_browser->UseAsGround(rig, tree->GetSelected(), told);
  Tell(kNodeNotice, problem.empty() ? told : problem);
}

void MainWindowScene::FitCar() {
  const int rig = FirstRig();
  if (rig == 0) return;
  SceneBrowser::Car car = m_browser->GuessCar(GetCurrent());
  if (!FitCarWindow(GetWindows(), *m_browser, rig).Run(car)) return;
  std::string told;
  const std::string problem = m_browser->FitCar(rig, car, told);
  Tell(kNodeNotice, problem.empty() ? told : problem);
}

}  // namespace orv::rws::core::windows
