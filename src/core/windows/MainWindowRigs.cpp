#include "core/windows/MainWindowRigs.h"

#include <algorithm>

#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/services/Translation.h"
#include "core/tools/Tool.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/MenuIds.h"
#include "gui/Texts.h"

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
                     {Translatable("Kind"), 90, false, false, true},
                     {Translatable("State"), 86, false, false, true}});
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
  show(kCommandArmAll, isRig, noRig, true);
  show(kCommandArmNone, isRig, noRig, true);
  show(kCommandRename, !rows.empty(), noRow, true);
  show(kCommandDuplicate, isRig, noRig, true);
  show(kCommandDelete, !rows.empty(), noRow, true);
  show(kCommandGroup, !rows.empty(), noRow, true);
  show(kCommandUngroup, isGroup, Translate("Select a group first."), true);
  show(kCommandSelectAll, !GetCore().GetRows().empty(), Translate("There is no rig yet."), false);
  show(kCommandRescanTools, true, {}, true);
}

}  // namespace orv::rws::core::windows
