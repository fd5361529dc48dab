#include "app/studio/windows/MakeModelWindow.h"

#include <algorithm>

#include "app/session/anyhost/Names.h"
#include "app/session/models/GltfBuilder.h"
#include "app/studio/windows/StudioWindowIds.h"
#include "core/CoreImplementation.h"
#include "core/instances/InstanceReference.h"
#include "core/windows/SceneBrowser.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/TextBox.h"
#include "gui/componentinterface/Tree.h"
#include "gui/componentinterface/View.h"
#include "util/AtomicFile.h"

namespace orv::app {

namespace {

using namespace gui::componentinterface;
using gui::Translate;

constexpr int kRigs = 1, kNodes = 2;  ///< keys of the headings

}  // namespace

MakeModelWindow::MakeModelWindow(rws::core::windows::Windows& windows,
                                 rws::core::windows::SceneBrowser& browser)
    : ModalWindow(windows, "MakeModel", "/core/layout/rws_makemodel.xml", kMakeAccept, kMakeCancel,
                  Size::kAsKept) {
  // What is done to a group is done to its rigs.
  const std::vector<int> rows = GetCore().GetSelection();
  for (const rws::core::InstanceReference* row : GetCore().GetRows()) {
    if (row->IsGroup()) continue;
    bool chosen = false;
    for (const rws::core::InstanceReference* at = row; at; at = at->parent)
      chosen = chosen || std::count(rows.begin(), rows.end(), at->GetId()) != 0;
    AddPart(true, row->GetLabel(), chosen);
  }
  const std::vector<int> keys = browser.GetSelection();
  for (const auto& node : browser.GetNodes()) {
    if (node.ofRig) continue;
    const bool chosen = std::count(keys.begin(), keys.end(), node.key) != 0;
    if (chosen || node.parent == 0) AddPart(false, node.name, chosen);
  }
}

MakeModelWindow::~MakeModelWindow() {
  With<View>(kMakePicture, [](View& view) { view.SetHandler(nullptr); });
}

void MakeModelWindow::AddPart(bool isRig, const std::string& name, bool chosen) {
  m_parts[kNodes + 1 + static_cast<int>(m_parts.size())] = {isRig, name, chosen};
}

bool MakeModelWindow::Run(ModelSelection& selection, ModelCard& card) {
  if (!Ask()) return false;
  for (const auto& [key, part] : m_parts)
    if (part.chosen) (part.isRig ? selection.rigs : selection.nodes).push_back(part.name);
  card = m_card;
  return true;
}

void MakeModelWindow::OnBuilt() {
  With<View>(kMakePicture, [this](View& view) { view.SetHandler(&m_picture); });
  With<Tree>(kMakeParts, [this](Tree& tree) {
    tree.SetColumns({{"", 0, true}});
    const auto addHeading = [&tree](int key, const std::string& text) {
      Tree::Row row;
      row.cells = {{text, {}, {}, false}};
      row.strong = true;
      tree.AddRow(key, Tree::kTop, -1, std::move(row));
    };
    addHeading(kRigs, Translate("Rigs"));
    addHeading(kNodes, Translate("Nodes"));
    for (const auto& [key, part] : m_parts) {
      Tree::Row row;
      row.cells = {{part.name, {}, {}, false}};
      row.hasCheck = true;
      row.check = part.chosen ? CheckState::kOn : CheckState::kOff;
      tree.AddRow(key, part.isRig ? kRigs : kNodes, -1, std::move(row));
    }
    for (const int heading : {kRigs, kNodes}) tree.SetExpanded(heading, true);
  });
  SetPicture({}, {});
  ShowAccept();
}

void MakeModelWindow::SetPicture(const std::string& bytes, const std::string& problem) {
  m_card.picture = bytes;
  m_picture.SetPicture(bytes);
  With<View>(kMakePicture, [](View& view) { view.Repaint(); });
  SetEnabled(kMakeNoPicture, !bytes.empty(), Translate("There is no picture."));
  SetText(kMakeNotice, problem);
  if (gui::Component* notice = Find(kMakeNotice)) notice->SetVisible(!problem.empty());
}

void MakeModelWindow::ChoosePicture() {
  const std::string path = GetWindows().ChooseFile(
      Translate("Picture"), Translate("Pictures (*.png *.jpg *.jpeg)"), "pictures");
  if (path.empty()) return;
  std::string bytes, error;
  if (!util::readFile(path, bytes, &error)) return SetPicture(m_card.picture, error);
  if (MimeOfImage(bytes).empty())
    return SetPicture(m_card.picture, Translate("%1 is no PNG and no JPEG.", {path}));
  SetPicture(bytes, {});
}

void MakeModelWindow::ShowAccept() {
  const bool any = std::any_of(m_parts.begin(), m_parts.end(),
                               [](const auto& entry) { return entry.second.chosen; });
  const bool named = m_card.title.find_first_not_of(' ') != std::string::npos;
  SetEnabled(kMakeAccept, any && named,
             any ? Translate("Give it a title.") : Translate("Tick a rig or a node."));
}

void MakeModelWindow::OnComponent(gui::Component& source, util::Message& message) {
  ModalWindow::OnComponent(source, message);
  const int id = source.GetId();
  if (id == kMakeParts && message.id == gui::kMsgRowChecked) {
    const auto part = m_parts.find(message.param);
    const auto* tree = Get<Tree>(kMakeParts);
    const Tree::Node* row = tree ? tree->FindRow(message.param) : nullptr;
    if (row && part != m_parts.end()) part->second.chosen = row->row.check == CheckState::kOn;
    ShowAccept();
  }
  if (id == kMakeTitle || id == kMakeText) {
    if (message.id != gui::kMsgTyped && message.id != gui::kMsgValueChanged) return;
    With<TextBox>(
        id, [&](TextBox& box) { (id == kMakeTitle ? m_card.title : m_card.text) = box.GetText(); });
    ShowAccept();
  }
  if (message.id != gui::kMsgClicked) return;
  if (id == kMakeChoosePicture) ChoosePicture();
  if (id == kMakeNoPicture) SetPicture({}, {});
}

}  // namespace orv::app
