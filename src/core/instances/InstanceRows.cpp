// The tree of rows: groups, checks and order.
#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "core/CoreRequest.h"
#include "core/host/AdaptorInterface.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceManager.h"
#include "core/instances/InstanceUndo.h"
#include "core/instances/NameRules.h"
#include "core/instances/RecordKeys.h"
#include "util/xml/Tag.h"

namespace orv::rws::core {

namespace {

using namespace record;
using util::xml::Element;
using util::xml::Tag;
using Place = RowLayout::Place;

constexpr char kWithinItself[] = "a group can't stand within itself";

void Collect(const InstanceReference& row, std::vector<InstanceReference*>& out) {
  for (const auto& child : row.children) {
    out.push_back(child.get());
    Collect(*child, out);
  }
}

/// From the end: what was made last is asked for most.
InstanceReference* FindBelow(const InstanceReference& row, int id) {
  for (auto child = row.children.rbegin(); child != row.children.rend(); ++child) {
    if ((*child)->GetId() == id) return child->get();
    if (InstanceReference* const found = FindBelow(**child, id)) return found;
  }
  return nullptr;
}

RowLayout LayoutOf(const InstanceReference& row) {
  RowLayout layout;
  layout.id = row.GetId();
  layout.isGroup = row.IsGroup();
  if (layout.isGroup) layout.label = row.GetLabel();
  layout.checked = row.IsChecked();
  for (const auto& child : row.children) layout.rows.push_back(LayoutOf(*child));
  return layout;
}

using LooseRows = std::map<int, std::unique_ptr<InstanceReference>>;

void TakeApart(InstanceReference& row, LooseRows& loose) {
  for (auto& child : row.children) {
    TakeApart(*child, loose);
    const int id = child->GetId();
    loose[id] = std::move(child);
  }
  row.children.clear();
}

void Append(InstanceReference& parent, std::unique_ptr<InstanceReference> row) {
  row->parent = &parent;
  parent.children.push_back(std::move(row));
}

void Assemble(const RowLayout& layout, InstanceReference& parent, LooseRows& loose) {
  for (const RowLayout& wanted : layout.rows) {
    std::unique_ptr<InstanceReference> row = std::move(loose[wanted.id]);
    if (!row && wanted.isGroup) row = std::make_unique<InstanceReference>(wanted.id, wanted.label);
    if (!row) continue;
    if (wanted.isGroup) row->SetLabel(wanted.label);
    row->SetChecked(wanted.checked);
    Assemble(wanted, *row, loose);
    Append(parent, std::move(row));
  }
}

using AbsentRigs = std::vector<std::pair<std::string, int>>;

Tag RowTag(const char* kind, const std::string& name) {
  Tag tag(kind);
  tag.setAttribute(kName, name);
  return tag;
}

void Write(const InstanceReference& row, const AbsentRigs& absent, Tag& out) {
  for (const auto& child : row.children) {
    Tag tag = RowTag(child->IsGroup() ? kGroup : kRig, child->GetLabel());
    if (child->IsGroup()) tag.setAttribute(kChecked, child->IsChecked() ? "1" : "0");
    Write(*child, absent, tag);
    out.emplaceChild(std::move(tag));
  }
  for (const auto& [name, group] : absent)
    if (row.IsGroup() && row.GetId() == group) out.emplaceChild(RowTag(kRig, name));
}

}  // namespace

InstanceReference* InstanceManager::FindRow(int id) const {
  return FindBelow(m_root, id);
}

std::vector<InstanceReference*> InstanceManager::GetRows() const {
  std::vector<InstanceReference*> rows;
  Collect(m_root, rows);
  return rows;
}

InstanceReference* InstanceManager::FindRow(const std::string& label) const {
  for (InstanceReference* row : GetRows())
    if (row->GetLabel() == label) return row;
  return nullptr;
}

// --- the tree as a value ---

RowLayout InstanceManager::GetLayout() const {
  return LayoutOf(m_root);
}

void InstanceManager::Arrange(const RowLayout& layout) {
  MessageQueue& messages = GetCore()->GetMessages();
  const MessageQueue::Hold hold(messages);
  const RowLayout before = messages.IsHeard() ? GetLayout() : RowLayout();
  LooseRows loose;
  TakeApart(m_root, loose);
  Assemble(layout, m_root, loose);
  for (auto& [id, row] : loose)
    if (row && !row->IsGroup()) Append(m_root, std::move(row));
  loose.clear();
  if (messages.IsHeard())
    for (CoreNews& news : ChangesOfRows(before, GetLayout())) messages.Tell(std::move(news));
  DropOldSelection();
}

void InstanceManager::ChangeRows(const std::string& undoName, const RowLayout& wanted) {
  if (wanted == GetLayout()) return;
  const CoreRequest request(*GetCore());
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  adaptor.BeginUndoBlock(undoName);
  adaptor.PushUndo(new InstanceRowsRestore(*this));
  Arrange(wanted);
  adaptor.EndUndoBlock();
}

void InstanceManager::PlaceBehind(InstanceReference& row, InstanceReference& other) {
  RowLayout tree = GetLayout();
  RowLayout moved = tree.PlaceOf(row.GetId()).TakeOut();
  tree.PlaceOf(other.GetId()).Behind().Insert(std::move(moved));
  Arrange(tree);
}

// --- what a user does ---

InstanceReference* InstanceManager::CreateGroup(const std::string& name, std::string& problem) {
  if (!IsNameFree(name, problem)) return nullptr;
  RowLayout tree = GetLayout();
  RowLayout group;
  group.id = NextRowId();
  group.label = name;
  tree.rows.push_back(std::move(group));
  ChangeRows("Create group " + name, tree);
  return FindRow(name);
}

void InstanceManager::DeleteGroup(InstanceReference* group) {
  if (!group || !group->IsGroup() || !group->parent) return;
  RowLayout tree = GetLayout();
  const Place place = tree.PlaceOf(group->GetId());
  const RowLayout gone = place.TakeOut();
  place.rows->insert(place.rows->begin() + static_cast<std::ptrdiff_t>(place.index),
                     gone.rows.begin(), gone.rows.end());
  ChangeRows("Delete group " + group->GetLabel(), tree);
}

std::string InstanceManager::RenameGroup(InstanceReference& group, const std::string& name) {
  std::string problem;
  if (name == group.GetLabel() || !IsNameFree(name, problem)) return problem;
  RowLayout tree = GetLayout();
  tree.PlaceOf(group.GetId()).Row().label = name;
  ChangeRows("Rename " + group.GetLabel(), tree);
  return {};
}

void InstanceManager::SetChecked(InstanceReference* row, bool checked) {
  if (!row || !row->parent) return;
  RowLayout tree = GetLayout();
  tree.PlaceOf(row->GetId()).Row().checked = checked;
  ChangeRows((checked ? "Check " : "Uncheck ") + row->GetLabel(), tree);
}

void InstanceManager::SetChecked(const std::vector<std::pair<int, bool>>& checks) {
  RowLayout tree = GetLayout();
  for (const auto& [id, checked] : checks)
    if (const Place place = tree.PlaceOf(id); place.rows) place.Row().checked = checked;
  ChangeRows("Check", tree);
}

std::string InstanceManager::MoveBefore(InstanceReference* row, InstanceReference* before) {
  if (!row || row == before) return {};
  if (before && before->IsUnder(*row)) return kWithinItself;
  RowLayout tree = GetLayout();
  const Place from = tree.PlaceOf(row->GetId());
  RowLayout moved = from.TakeOut();
  if (before)
    tree.PlaceOf(before->GetId()).Insert(std::move(moved));
  else
    from.rows->push_back(std::move(moved));
  ChangeRows("Change order", tree);
  return {};
}

std::string InstanceManager::MoveInto(InstanceReference* row, InstanceReference* group) {
  if (!row || row->parent == group) return {};
  if (group && group->IsUnder(*row)) return kWithinItself;
  const InstanceReference* outermost = row;
  while (outermost->parent->parent) outermost = outermost->parent;
  if (!group && outermost == row) return {};
  RowLayout tree = GetLayout();
  RowLayout moved = tree.PlaceOf(row->GetId()).TakeOut();
  if (group) {
    tree.PlaceOf(group->GetId()).Row().rows.push_back(std::move(moved));
  } else {
    tree.PlaceOf(outermost->GetId()).Behind().Insert(std::move(moved));
  }
  ChangeRows("Move " + row->GetLabel(), tree);
  return {};
}

// --- in a saved scene ---

void InstanceManager::WriteRows(Tag& out) const {
  bool anyGroup = false;
  for (const InstanceReference* row : GetRows()) anyGroup = anyGroup || row->IsGroup();
  if (!anyGroup) return;
  Tag rows(kRows);
  Write(m_root, m_absentRigs, rows);
  out.emplaceChild(std::move(rows));
}

void InstanceManager::SetReservedNames(std::vector<std::string> names) {
  m_reservedNames = std::move(names);
  m_absentRigs.clear();
}

RowLayout InstanceManager::ReadRow(const Element& element, int id, std::set<std::string>& names) {
  RowLayout layout;
  layout.id = id;
  for (const Element* child : element.children) {
    RowLayout row;
    row.label = child->attribute(kName);
    const bool isRig = child->name == kRig;
    if (isRig) {
      const InstanceReference* rig = Find(row.label);
      const auto& reserved = m_reservedNames;
      if (!rig && std::find(reserved.begin(), reserved.end(), row.label) != reserved.end())
        m_absentRigs.emplace_back(row.label, id);
      if (!rig) continue;
      row.id = rig->GetId();
      row.checked = rig->IsChecked();
      row.isGroup = false;
    } else if (child->name == kGroup) {
      std::string ignored;
      if (!IsNameAllowed(row.label, ignored)) row.label = "Group";
      while (!names.insert(row.label).second) row.label += "_2";
      row.id = NextRowId();
      row.checked = child->attribute(kChecked) != "0";
      row.rows = ReadRow(*child, row.id, names).rows;
    } else {
      continue;
    }
    layout.rows.push_back(std::move(row));
  }
  return layout;
}

void InstanceManager::ReadRows(const Element& rows) {
  std::set<std::string> names(m_reservedNames.begin(), m_reservedNames.end());
  for (const Instance* rig : List(false)) names.insert(rig->GetInstanceName());
  m_absentRigs.clear();
  Arrange(ReadRow(rows, 0, names));
}

}  // namespace orv::rws::core
