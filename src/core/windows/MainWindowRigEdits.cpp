// What a user does in the tree of rigs.
#include <algorithm>

#include "core/CoreImplementation.h"
#include "core/host/AdaptorInterface.h"
#include "core/instances/Instance.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/MainWindowRigs.h"
#include "core/windows/MenuIds.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/TextBox.h"

namespace orv::rws::core::windows {

namespace {

using namespace gui::componentinterface;
using gui::Translate;

}  // namespace

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
    case kCommandArmAll:
    case kCommandArmNone:
      return Arm(command == kCommandArmAll);
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

void MainWindowRigs::Arm(bool armed) {
  for (const int id : GetSelectedTops()) {
    Instance* rig = GetCore().FindRow(id)->GetInstance();
    if (!rig || !MayEdit()) continue;
    const auto inputs = static_cast<std::size_t>(rig->GetProperties().count());
    Tell(kRigNotice, Translate(GetCore().ArmInputs(*rig, std::vector<bool>(inputs, armed))));
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
