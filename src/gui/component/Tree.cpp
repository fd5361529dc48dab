#include "gui/component/Tree.h"

#include <algorithm>
#include <utility>

#include "gui/GuiMessages.h"
#include "gui/TextSearch.h"

namespace orv::gui::componentinterface {

int Tree::Node::GetIndex() const {
  if (!m_parent) return 0;
  if (m_parent->child(m_index) == this) return m_index;
  // Rows have come or gone: all of these rows are told, so that the next ones need no search.
  const auto& rows = m_parent->children();
  for (std::size_t i = 0; i < rows.size(); ++i) rows[i]->m_index = static_cast<int>(i);
  return m_index;
}

}  // namespace orv::gui::componentinterface

namespace orv::gui::component {

using componentinterface::CheckState;

Tree::Tree(const util::xml::Element& tag)
    : Element(tag), m_drag(ReadFlag(tag.attribute("dragdrop"), false)) {
  m_top.expanded = true;
  for (const util::xml::Element* child : tag.children) {
    if (child->name != "column" || child->kind != util::xml::kTag) continue;
    Column column;
    column.title = child->attribute("label");
    column.width = ReadInt(child->attribute("width"), 0);
    column.stretch = ReadFlag(child->attribute("stretch"), false);
    column.right = child->attribute("halign") == "right";
    column.english = true;
    m_columns.push_back(std::move(column));
  }
  if (m_columns.empty()) m_columns.emplace_back();
}

Tree::~Tree() {
  // While the rows' index is still there: their removal is told to nobody.
  m_observer = nullptr;
}

bool Tree::KnowsAttribute(std::string_view name) const {
  return name == "dragdrop" || Element::KnowsAttribute(name);
}

bool Tree::OwnsTag(std::string_view name) const {
  return name == "column" || Element::OwnsTag(name);
}

void Tree::SetColumns(std::vector<Column> columns) {
  m_columns = std::move(columns);
  if (m_columns.empty()) m_columns.emplace_back();
  Changed(kItemsChange);
}

Tree::Node* Tree::Held(int key) const {
  if (key == kTop) return const_cast<Node*>(&m_top);
  const auto found = m_rows.find(key);
  return found == m_rows.end() ? nullptr : found->second;
}

const Tree::Node* Tree::FindRow(int key) const {
  return Held(key);
}

bool Tree::AddRow(int key, int parent, int index, Row row) {
  Node* above = Held(parent);
  if (key == kTop || !above || m_rows.count(key)) return false;
  if (index < 0 || index > above->childCount()) index = above->childCount();
  auto* node = new Node(key);
  node->row = std::move(row);
  if (!m_filter.empty()) {
    node->hidden = !Holds(node->row);
    // A new row in sight brings what it stands in into sight, too.
    if (!node->hidden)
      for (Node* up = above; up != &m_top; up = up->parent()) SetHidden(*up, false);
  }
  if (m_observer) m_observer->BeginInsert(*above, index);
  above->insertChild(node, index);
  m_rows[key] = node;
  if (m_observer) m_observer->EndInsert(*node);
  return true;
}

void Tree::SetHidden(Node& row, bool hidden) {
  if (std::exchange(row.hidden, hidden) != hidden && m_observer) m_observer->RowChanged(row);
}

void Tree::Forget(const Node& row) {
  m_rows.erase(row.key);
  if (m_current == row.key) m_current = kTop;
  for (const Node* child : row.children()) Forget(*child);
}

bool Tree::RemoveRow(int key) {
  Node* row = Held(key);
  if (!row || row == &m_top) return false;
  if (m_observer) m_observer->BeginRemove(*row);
  Forget(*row);
  row->parent()->removeChild(row);
  if (m_observer) m_observer->EndRemove();
  delete row;
  return true;
}

bool Tree::MoveRow(int key, int parent, int index) {
  Node* row = Held(key);
  Node* to = Held(parent);
  if (!row || row == &m_top || !to) return false;
  for (const Node* up = to; up; up = up->parent())
    if (up == row) return false;
  const bool same = row->parent() == to;
  const int last = to->childCount() - (same ? 1 : 0);
  if (index < 0 || index > last) index = last;
  const int from = row->GetIndex();
  if (same && from == index) return true;
  if (m_observer) m_observer->BeginMove(*row, *to, same && index > from ? index + 1 : index);
  row->parent()->removeChild(row);
  to->insertChild(row, index);
  if (m_observer) m_observer->EndMove(*row);
  return true;
}

void Tree::Clear() {
  if (m_observer) m_observer->BeginReset();
  m_rows.clear();
  m_current = kTop;
  while (Node* last = m_top.child(m_top.childCount() - 1)) delete last;
  if (m_observer) m_observer->EndReset();
}

bool Tree::SetRow(int key, Row row) {
  Node* node = Held(key);
  if (!node || node == &m_top) return false;
  node->row = std::move(row);
  if (m_observer) m_observer->RowChanged(*node);
  return true;
}

bool Tree::SetText(int key, int column, const std::string& text) {
  Node* node = Held(key);
  if (!node || node == &m_top || column < 0 || column >= static_cast<int>(m_columns.size()))
    return false;
  auto& cells = node->row.cells;
  if (static_cast<int>(cells.size()) <= column) cells.resize(column + 1);
  if (std::exchange(cells[column].text, text) != text && m_observer) m_observer->RowChanged(*node);
  return true;
}

bool Tree::SetCheck(int key, CheckState state) {
  Node* node = Held(key);
  if (!node || node == &m_top || !node->row.hasCheck) return false;
  if (std::exchange(node->row.check, state) != state && m_observer) m_observer->RowChanged(*node);
  return true;
}

bool Tree::SetExpanded(int key, bool expanded) {
  Node* node = Held(key);
  if (!node || node == &m_top) return false;
  if (std::exchange(node->expanded, expanded) != expanded && m_observer)
    m_observer->ExpandedSet(*node);
  return true;
}

void Tree::SetMultiSelect(bool several) {
  m_several = several;
  Changed(kRangeChange);
}

void Tree::MarkSelected(const std::vector<int>& keys) {
  for (const auto& row : m_rows) row.second->selected = false;
  for (const int key : keys)
    if (Node* node = Held(key); node && node != &m_top) node->selected = true;
}

void Tree::Select(const std::vector<int>& keys) {
  MarkSelected(keys);
  m_current = keys.empty() || !Held(keys.front()) ? int(kTop) : keys.front();
  if (m_observer) m_observer->SelectionSet();
}

std::vector<int> Tree::GetSelected() const {
  std::vector<int> keys;
  std::vector<const Node*> open{&m_top};
  while (!open.empty()) {
    const Node* node = open.back();
    open.pop_back();
    if (node->selected) keys.push_back(node->key);
    open.insert(open.end(), node->children().rbegin(), node->children().rend());
  }
  return keys;
}

bool Tree::IsSelection(std::vector<int> keys) const {
  std::vector<int> selected = GetSelected();
  std::sort(selected.begin(), selected.end());
  std::sort(keys.begin(), keys.end());
  return selected == keys;
}

void Tree::SetCurrent(int key) {
  m_current = Held(key) ? key : int(kTop);
  if (m_observer) m_observer->SelectionSet();
}

void Tree::ShowRow(int key) {
  Node* node = Held(key);
  if (!node || node == &m_top) return;
  for (Node* up = node->parent(); up && up != &m_top; up = up->parent()) SetExpanded(up->key, true);
  if (m_observer) m_observer->Reveal(*node);
}

void Tree::EditRow(int key) {
  Node* node = Held(key);
  if (!node || node == &m_top) return;
  ShowRow(key);
  if (m_observer) m_observer->Edit(*node);
}

bool Tree::Holds(const Row& row) const {
  return std::any_of(row.cells.begin(), row.cells.end(),
                     [this](const Cell& cell) { return HoldsText(cell.text, m_filter); });
}

bool Tree::FilterRows(Node& row) {
  bool any = false;
  for (Node* child : row.children()) any = FilterRows(*child) || any;
  if (&row == &m_top) return any;
  const bool shown = m_filter.empty() || any || Holds(row.row);
  row.hidden = !shown;
  return shown;
}

void Tree::SetFilter(const std::string& text) {
  if (std::exchange(m_filter, text) == text) return;
  FilterRows(m_top);
  if (m_observer) m_observer->FilterSet();
}

void Tree::SetEmptyText(const std::string& text) {
  m_emptyText = text;
  Changed(kValueChange);
}

void Tree::SelectByUser(const std::vector<int>& keys, int current) {
  MarkSelected(keys);
  m_current = current;
  Post(kMsgSelectionChanged, current);
}

void Tree::ExpandByUser(int key, bool expanded) {
  Node* node = Held(key);
  if (!node || node == &m_top) return;
  node->expanded = expanded;
  Post(expanded ? kMsgExpanded : kMsgCollapsed, key);
}

void Tree::CheckByUser(int key, CheckState state) {
  if (SetCheck(key, state)) Post(kMsgRowChecked, key);
}

}  // namespace orv::gui::component
