#include "core/windows/MainWindowTools.h"

#include <QString>
#include <QStringList>
#include <algorithm>

#include "core/CoreImplementation.h"
#include "core/WindowIds.h"
#include "core/instances/Instance.h"
#include "core/tools/Tool.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Layout.h"
#include "gui/Texts.h"
#include "gui/componentinterface/Label.h"
#include "gui/componentinterface/TextBox.h"
#include "gui/componentinterface/Tree.h"

namespace orv::rws::core::windows {

namespace {

using namespace gui::componentinterface;
using gui::Translate;

const char* IconOf(const std::string& category) {
  if (category == "Vehicle") return "[coreimages]/icons/car.png";
  if (category == "Camera") return "[coreimages]/icons/camera.png";
  return "[coreimages]/icons/settings.png";
}

}  // namespace

void MainWindowTools::OnBuilt() {
  With<Tree>(kToolTree, [](Tree& tree) { tree.SetMultiSelect(false); });
  if (gui::Component* into = GetWindow().Find(kToolProduct))
    m_product = GetWindows().GetLayout().Instantiate(kProductPopupLayout, *into);
  Fill();
}

void MainWindowTools::OnSettingsChanged() {
  Fill();
}

/// Every word that is looked for stands in the tool's name, category or description, in English or
/// as shown.
bool MainWindowTools::Matches(Tool& tool, const std::string& words) const {
  std::vector<std::string> texts{tool.GetDisplayName(), tool.GetDescription(), tool.GetDisplayId()};
  tool.GetCategories(texts);
  QString all;
  for (const std::string& text : texts)
    all += QString::fromStdString(text + "\n" + Translate(text) + "\n");
  for (const QString& word : QString::fromStdString(words).split(' '))
    if (!all.contains(word, Qt::CaseInsensitive)) return false;
  return true;
}

void MainWindowTools::Fill() {
  Tree* tree = Get<Tree>(kToolTree);
  if (!tree) return;
  const Tool* selected = GetSelected();
  const std::string kept = selected ? m_tools[tree->GetCurrent()] : std::string();
  const TextBox* search = Get<TextBox>(kToolSearch);
  const std::string words = search ? search->GetText() : std::string();
  const gui::Frozen frozen(*GetWindow().Find(kToolTree));
  tree->SetColumns({{"", 0, true}});
  tree->Clear();
  m_tools.clear();
  m_hovered = 0;
  int key = 0, current = 0;
  for (const std::string& category : GetCore().GetLibrary().GetCategories()) {
    const int group = ++key;
    Tree::Row heading;
    heading.cells.resize(1);
    heading.cells[0].text = Translate(category);
    heading.strong = true;
    tree->AddRow(group, Tree::kTop, -1, std::move(heading));
    for (Tool* tool : GetCore().GetLibrary().GetTools()) {
      std::vector<std::string> own;
      tool->GetCategories(own);
      if (std::find(own.begin(), own.end(), category) == own.end() || !Matches(*tool, words))
        continue;
      const std::string why = WhyNot(*tool);
      Tree::Row row;
      row.cells = {{Translate(tool->GetDisplayName()), IconOf(category),
                    why.empty() ? Translate(tool->GetDescription()) : why, !why.empty()}};
      tree->AddRow(++key, group, -1, std::move(row));
      m_tools[key] = tool->GetDisplayId();
      if (m_tools[key] == kept && current == 0) current = key;
    }
    if (tree->FindRow(group)->childCount() == 0)
      tree->RemoveRow(group);
    else
      tree->SetExpanded(group, true);
  }
  tree->SetEmptyText(words.empty() ? Translate("There are no tools.")
                                   : Translate("No tool has this in its name or description."));
  // What is looked for is at hand for Enter.
  if (current == 0 && !words.empty() && !m_tools.empty()) current = m_tools.begin()->first;
  if (current != 0) tree->SetCurrent(current);
  ShowProduct();
}

Tool* MainWindowTools::GetSelected() const {
  const Tree* tree = Get<Tree>(kToolTree);
  return Find(tree ? tree->GetCurrent() : 0);
}

Tool* MainWindowTools::Find(int key) const {
  const auto found = m_tools.find(key);
  return found == m_tools.end() ? nullptr : GetCore().GetLibrary().Find(found->second);
}

std::string MainWindowTools::WhyNot(Tool& tool) const {
  const std::string feature = tool.GetLicenceName();
  if (GetCore().CheckLicence(feature)) return {};
  return Translate("This tool needs a licence with the feature \"%1\".", {feature});
}

/// The tool under the mouse, else the one that is selected. Its place is never hidden, which would
/// move the rows under the mouse.
void MainWindowTools::ShowProduct() {
  if (!m_product) return;
  Tool* selected = GetSelected();
  Tool* hovered = Find(m_hovered);
  Tool* tool = hovered ? hovered : selected;
  const auto set = [this](int id, const std::string& text) {
    if (auto* label = m_product->Get<Label>(id)) label->SetText(text);
  };
  const std::string author = tool ? tool->GetCreatedBy() : std::string();
  const std::string licence = tool ? WhyNot(*tool) : std::string();
  set(kProductTitle, tool ? Translate(tool->GetDisplayName()) : Translate("Tools"));
  if (auto* text = m_product->Get<TextBox>(kProductText))
    text->SetText(tool ? Translate(tool->GetDescription())
                       : Translate("Point at a tool, or choose one with the arrow keys, to see "
                                   "what it does."));
  // Its line stays where there is nothing to say: the list of tools must not move under the
  // pointer.
  set(kProductAuthor, !licence.empty() ? licence
                      : author.empty() ? "\u00a0"
                                       : Translate("By %1", {author}));
  std::string why = selected ? WhyNot(*selected) : Translate("Choose a tool first.");
  if (why.empty()) why = GetWindow().WhyLocked();
  if (gui::Component* button = m_product->Find(kProductCreate))
    button->SetEnabled(why.empty(), why);
}

void MainWindowTools::Create() {
  Tool* tool = GetSelected();
  if (!tool) return;
  std::string problem = GetWindow().WhyLocked();
  if (problem.empty()) problem = WhyNot(*tool);
  if (problem.empty()) {
    const std::string name = tool->GetDisplayName();
    const Instance* rig = GetCore().CreateToolFromFactory(tool->GetDisplayId(), {});
    if (rig)
      GetCore().SetSelection({rig->GetIdentity()});
    else
      problem = Translate("%1 could not be created; the log tells why.", {Translate(name)});
  }
  Tell(kToolNotice, problem);
}

void MainWindowTools::OnComponent(gui::Component& source, util::Message& message) {
  if (source.GetId() == kToolSearch) {
    if (message.id == gui::kMsgTyped) Fill();
    if (message.id == gui::kMsgEntered) Create();
  } else if (source.GetId() == kToolTree) {
    if (message.id == gui::kMsgSelectionChanged) {
      Tell(kToolNotice, {});
      ShowProduct();
    }
    if (message.id == gui::kMsgActivated) Create();
    if (message.id == gui::kMsgHovered) {
      m_hovered = message.param;
      ShowProduct();
    }
    // Who comes by the keyboard sees at once what there is. A mouse's press would land elsewhere:
    // the list shows what is current.
    if (message.id == gui::kMsgFocusGained && m_hovered == 0 && !GetSelected() &&
        !m_tools.empty()) {
      Get<Tree>(kToolTree)->SetCurrent(m_tools.begin()->first);
      ShowProduct();
    }
  } else if (message.id == gui::kMsgClicked && m_product &&
             &source == m_product->Find(kProductCreate)) {
    Create();
  }
}

void MainWindowTools::OnCore(const util::Message& message) {
  if (NewsIn<ToolsChanged>(message)) Fill();
}

}  // namespace orv::rws::core::windows
