#include "core/windows/MainWindowRigs.h"

#include <algorithm>

#include "core/CoreImplementation.h"
#include "core/host/AdaptorInterface.h"
#include "core/instances/Instance.h"
#include "core/services/Translation.h"
#include "core/tools/Tool.h"
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

enum Column { kName, kKind, kState };

bool IsRecorded(Instance& rig) {
  const auto& tracks = rig.GetTracks();
  return std::any_of(tracks.begin(), tracks.end(),
                     [](const auto& track) { return !track.samples.empty(); });
}

}  // namespace

// --- what is shown ---

void MainWindowRigs::OnBuilt() {
  Fill();
}

void MainWindowRigs::OnSettingsChanged() {
  With<Tree>(kRigTree, [](Tree& tree) {
    tree.SetEmptyText(
        Translate("No rig yet. Double-click a tool at the left, or choose one and "
                  "press Enter."));
  });
  ShowStates();
}

void MainWindowRigs::Fill() {
  With<Tree>(kRigTree, [this](Tree& tree) {
    tree.SetColumns({{Translatable("Rig"), 180, true, false, true},
                     {Translatable("Kind"), 120, false, false, true},
                     {Translatable("State"), 110, false, false, true}});
    tree.Clear();
    for (const InstanceReference* row : GetCore().GetRows()) {
      const bool top = !row->parent || !row->parent->parent;
      tree.AddRow(row->GetId(), top ? Tree::kTop : row->parent->GetId(), -1, Describe(*row));
      if (row->IsGroup()) tree.SetExpanded(row->GetId(), true);
    }
  });
  OnSettingsChanged();
  ShowSelection();
}

std::string MainWindowRigs::StateOf(const InstanceReference& row) const {
  bool checked = true;
  for (const InstanceReference* at = &row; at && at->parent; at = at->parent)
    checked = checked && at->IsChecked();
  if (row.IsGroup()) return checked ? std::string() : Translate("off");
  if (!checked) return Translate("off");
  Instance* rig = row.GetInstance();
  const std::vector<Instance*>& taken = GetCore().GetTakeInstances();
  const bool runs = GetCore().GetRunState() != RunState::kIdle &&
                    std::find(taken.begin(), taken.end(), rig) != taken.end();
  if (runs)
    return GetCore().GetRunState() == RunState::kResimulating ? Translate("resimulating")
                                                              : Translate("recording");
  return IsRecorded(*rig) ? Translate("recorded") : Translate("ready");
}

Tree::Row MainWindowRigs::Describe(const InstanceReference& row) const {
  Tree::Row shown;
  shown.hasCheck = true;
  shown.check = row.IsChecked() ? CheckState::kOn : CheckState::kOff;
  shown.editable = true;
  shown.takesRows = row.IsGroup();
  shown.strong = row.IsGroup();
  shown.cells.resize(3);
  shown.cells[kName].text = row.GetLabel();
  if (const Instance* rig = row.GetInstance()) {
    shown.cells[kName].icon = rig->GetIconPath();
    shown.cells[kKind].text = rig->GetTool()->GetDisplayName();
    shown.cells[kKind].dim = true;
  }
  shown.cells[kState].text = StateOf(row);
  shown.cells[kState].dim = true;
  return shown;
}

void MainWindowRigs::ShowRow(int id) {
  const InstanceReference* row = GetCore().FindRow(id);
  if (row) With<Tree>(kRigTree, [&](Tree& tree) { tree.SetRow(id, Describe(*row)); });
}

void MainWindowRigs::ShowStates() {
  With<Tree>(kRigTree, [this](Tree& tree) {
    for (const InstanceReference* row : GetCore().GetRows()) {
      const Tree::Node* node = tree.FindRow(row->GetId());
      const std::string state = StateOf(*row);
      if (node && node->row.cells[kState].text != state) tree.SetText(row->GetId(), kState, state);
    }
  });
}

void MainWindowRigs::ShowSelection() {
  With<Tree>(kRigTree, [this](Tree& tree) {
    std::vector<int> wanted = GetCore().GetSelection();
    std::vector<int> shown = tree.GetSelected();
    const int current = wanted.empty() ? 0 : wanted.front();
    std::sort(wanted.begin(), wanted.end());
    std::sort(shown.begin(), shown.end());
    if (wanted == shown) return;
    tree.Select(GetCore().GetSelection());
    if (current) tree.ShowRow(current);
  });
}

void MainWindowRigs::OnCore(const util::Message& message) {
  Tree* tree = Get<Tree>(kRigTree);
  if (!tree) return;
  if (const auto* created = NewsIn<RowCreated>(message)) {
    const InstanceReference* row = GetCore().FindRow(created->row);
    // What is not there any more is told to be deleted next.
    Tree::Row shown;
    shown.cells.resize(3);
    shown.cells[kName].text = created->label;
    tree->AddRow(created->row, created->parent, created->index, row ? Describe(*row) : shown);
    if (created->isGroup) tree->SetExpanded(created->row, true);
  } else if (const auto* deleted = NewsIn<RowDeleted>(message)) {
    tree->RemoveRow(deleted->row);
    Tell(kRigNotice, {});
  } else if (const auto* moved = NewsIn<RowMoved>(message)) {
    tree->MoveRow(moved->row, moved->parent, moved->index);
    ShowStates();
  } else if (const auto* renamed = NewsIn<RowRenamed>(message)) {
    tree->SetText(renamed->row, kName, renamed->label);
  } else if (const auto* checked = NewsIn<RowChecked>(message)) {
    tree->SetCheck(checked->row, checked->checked ? CheckState::kOn : CheckState::kOff);
    ShowStates();
  } else if (NewsIn<RowSelected>(message)) {
    ShowSelection();
  } else if (NewsIn<RunStateChanged>(message)) {
    ShowStates();
  }
}

// --- what can be done ---

std::vector<int> MainWindowRigs::TopsOf(const std::vector<int>& ids) const {
  std::vector<int> tops;
  for (const InstanceReference* row : GetCore().GetRows()) {
    bool carried = false;
    const auto isIn = [&ids](const InstanceReference& one) {
      return std::find(ids.begin(), ids.end(), one.GetId()) != ids.end();
    };
    for (const InstanceReference* at = row->parent; at; at = at->parent)
      carried = carried || isIn(*at);
    if (isIn(*row) && !carried) tops.push_back(row->GetId());
  }
  return tops;
}

std::vector<int> MainWindowRigs::GetSelectedTops() const {
  return TopsOf(GetCore().GetSelection());
}

void MainWindowRigs::ShowCommands() {
  const std::string locked = GetWindow().WhyLocked();
  const std::vector<int> rows = GetSelectedTops();
  bool isRig = false, isGroup = false;
  for (const int row : rows) (GetCore().FindRow(row)->IsGroup() ? isGroup : isRig) = true;
  const auto show = [&](int command, bool can, const std::string& why, bool edits) {
    const bool free = !edits || locked.empty();
    GetWindow().ShowCommand(command, can && free, can ? locked : why);
  };
  const std::string noRig = Translate("Select a rig first.");
  const std::string noRow = Translate("Select a rig or a group first.");
  show(kCommandConfigure, isRig, noRig, false);
  show(kCommandInputs, isRig, noRig, false);
  show(kCommandRename, !rows.empty(), noRow, true);
  show(kCommandDuplicate, isRig, noRig, true);
  show(kCommandDelete, !rows.empty(), noRow, true);
  show(kCommandGroup, !rows.empty(), noRow, true);
  show(kCommandUngroup, isGroup, Translate("Select a group first."), true);
  show(kCommandSelectAll, !GetCore().GetRows().empty(), Translate("There is no rig yet."), false);
  show(kCommandRescanTools, true, {}, true);
}

bool MainWindowRigs::MayEdit() {
  const std::string locked = GetWindow().WhyLocked();
  Tell(kRigNotice, locked);
  return locked.empty();
}

/// Rolled back as a whole when one part of it is refused.
template <class Edit>
void MainWindowRigs::AsOneStep(const char* name, Edit&& edit) {
  if (!MayEdit()) return;
  AdaptorInterface* adaptor = GetCore().GetAdaptor();
  adaptor->BeginUndoBlock(name);
  const std::string problem = edit();
  if (problem.empty())
    adaptor->EndUndoBlock();
  else
    adaptor->CancelUndoBlock();
  Tell(kRigNotice, problem);
}

void MainWindowRigs::OnComponent(gui::Component& source, util::Message& message) {
  if (source.GetId() == kRigSearch && message.id == gui::kMsgTyped)
    return With<Tree>(kRigTree, [this](Tree& tree) {
      With<TextBox>(kRigSearch, [&tree](TextBox& box) { tree.SetFilter(box.GetText()); });
    });
  Tree* tree = source.GetId() == kRigTree ? Get<Tree>(kRigTree) : nullptr;
  if (!tree) return;
  switch (message.id) {
    case gui::kMsgSelectionChanged:
      Tell(kRigNotice, {});
      GetCore().SetSelection(tree->GetSelected());
      break;
    case gui::kMsgRowChecked:
      Check(message.param, tree->FindRow(message.param)->row.check == CheckState::kOn);
      break;
    case gui::kMsgRenamed:
      if (const auto* renamed = gui::DataOf<gui::Renamed>(message))
        Rename(renamed->key, renamed->text);
      break;
    case gui::kMsgMoveRequest:
      if (const auto* request = gui::DataOf<gui::MoveRequest>(message))
        AsOneStep("Move rigs", [&] { return Move(*request); });
      break;
    case gui::kMsgActivated:
      OnCommand(kCommandConfigure);
      break;
    default:
      break;
  }
}

void MainWindowRigs::OnCommand(int command) {
  switch (command) {
    case kCommandSelectAll: {
      std::vector<int> all;
      for (const InstanceReference* row : GetCore().GetRows()) all.push_back(row->GetId());
      return GetCore().SetSelection(all);
    }
    case kCommandInputs:
      for (const int row : GetSelectedTops())
        if (!GetCore().FindRow(row)->IsGroup()) GetWindows().Open(WindowKind::kInputConfig, row);
      return;
    case kCommandRename:
      if (!GetSelectedTops().empty() && MayEdit())
        With<Tree>(kRigTree, [this](Tree& tree) { tree.EditRow(GetSelectedTops().front()); });
      return;
    case kCommandDuplicate:
      return AsOneStep("Duplicate", [this] { return Duplicate(); });
    case kCommandDelete:
      return AsOneStep("Delete", [this] { return Delete(), std::string(); });
    case kCommandGroup:
      return AsOneStep("Group", [this] { return Group(); });
    case kCommandUngroup:
      return AsOneStep("Ungroup", [this] { return Ungroup(), std::string(); });
    case kCommandRescanTools:
      if (MayEdit()) GetCore().RescanTools();
      return;
    default:
      return;
  }
}

void MainWindowRigs::Check(int id, bool checked) {
  InstanceReference* row = GetCore().FindRow(id);
  if (!row) return;
  if (MayEdit())
    GetCore().SetChecked(row, checked);
  else
    ShowRow(id);
}

void MainWindowRigs::Rename(int id, const std::string& text) {
  InstanceReference* row = GetCore().FindRow(id);
  if (!row || !MayEdit() || text == row->GetLabel()) return;
  Tell(kRigNotice, GetCore().Rename(row, text));
}

std::string MainWindowRigs::MoveRow(InstanceReference& row, InstanceReference* group,
                                    InstanceReference* before) {
  CoreImplementation& core = GetCore();
  const int id = row.GetId();
  if (before) return core.MoveBefore(&row, before);
  if (group && row.parent != group) return core.MoveInto(&row, group);
  std::string problem;
  if (!group && row.parent && row.parent->parent) problem = core.MoveInto(&row, nullptr);
  return problem.empty() ? core.MoveBefore(core.FindRow(id), nullptr) : problem;
}

std::string MainWindowRigs::Move(const gui::MoveRequest& request) {
  CoreImplementation& core = GetCore();
  InstanceReference* group = request.parent == Tree::kTop ? nullptr : core.FindRow(request.parent);
  if (request.parent != Tree::kTop && (!group || !group->IsGroup()))
    return Translate("Rigs can be dropped on groups and between rows.");
  const auto moves = [&request](const InstanceReference& row) {
    return std::find(request.keys.begin(), request.keys.end(), row.GetId()) != request.keys.end();
  };
  const auto& siblings = (group ? *group : core.GetRoot()).children;
  int before = 0;
  for (std::size_t i = static_cast<std::size_t>(std::max(0, request.index));
       i < siblings.size() && before == 0; ++i)
    if (!moves(*siblings[i])) before = siblings[i]->GetId();
  // Each arrangement may put other objects in the rows' places.
  for (const int top : TopsOf(request.keys)) {
    InstanceReference* row = core.FindRow(top);
    const std::string problem =
        MoveRow(*row, group ? core.FindRow(request.parent) : nullptr, core.FindRow(before));
    if (!problem.empty()) return problem;
  }
  return {};
}

std::string MainWindowRigs::Duplicate() {
  std::vector<int> copies;
  for (const int id : GetSelectedTops()) {
    InstanceReference* row = GetCore().FindRow(id);
    if (row->IsGroup()) continue;
    std::string problem;
    const Instance* copy = GetCore().Clone(row, problem);
    if (!copy) return problem;
    copies.push_back(copy->GetIdentity());
  }
  GetCore().SetSelection(copies);
  return {};
}

void MainWindowRigs::Delete() {
  for (const int id : GetSelectedTops()) DeleteRow(id);
}

void MainWindowRigs::DeleteRow(int id) {
  InstanceReference* row = GetCore().FindRow(id);
  if (!row) return;
  if (!row->IsGroup()) return GetCore().Delete(row, true);
  std::vector<int> inside;
  for (const auto& child : row->children) inside.push_back(child->GetId());
  for (const int child : inside) DeleteRow(child);
  GetCore().DeleteGroup(GetCore().FindRow(id));
}

std::string MainWindowRigs::Group() {
  CoreImplementation& core = GetCore();
  const std::vector<int> rows = GetSelectedTops();
  if (rows.empty()) return {};
  std::string problem;
  const InstanceReference* made = core.CreateGroup(core.UniqueName(Translate("Group")), problem);
  if (!made) return problem;
  const int group = made->GetId();
  problem = core.MoveBefore(core.FindRow(group), core.FindRow(rows.front()));
  for (const int row : rows)
    if (problem.empty()) problem = core.MoveInto(core.FindRow(row), core.FindRow(group));
  if (problem.empty()) core.SetSelection({group});
  return problem;
}

void MainWindowRigs::Ungroup() {
  for (const int id : GetSelectedTops()) GetCore().DeleteGroup(GetCore().FindRow(id));
}

}  // namespace orv::rws::core::windows
