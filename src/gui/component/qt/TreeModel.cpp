#include "gui/component/qt/TreeModel.h"

#include <QDataStream>
#include <QFont>
#include <QMimeData>

#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/component/qt/Elided.h"
#include "gui/component/qt/Images.h"
#include "gui/component/qt/QtPeer.h"
#include "gui/component/qt/Theme.h"

namespace orv::gui::component::qt {

using componentinterface::CheckState;

static const char kKeysType[] = "application/x-orv-tree-rows";

TreeModel::TreeModel(Tree& tree, QtPeer& peer) : m_tree(&tree), m_peer(peer) {
  CollectShown(tree.GetTop());
}

const TreeModel::Node* TreeModel::NodeOf(const QModelIndex& index) const {
  if (!m_tree) return nullptr;
  if (!index.isValid()) return &m_tree->GetTop();
  return m_tree->FindRow(static_cast<int>(static_cast<qintptr>(index.internalId())));
}

const std::vector<TreeModel::Node*>& TreeModel::Rows(const Node& parent) const {
  static const std::vector<Node*> kNone;
  if (!IsFiltered()) return parent.children();
  const auto found = m_shown.find(parent.key);
  return found == m_shown.end() ? kNone : found->second;
}

QModelIndex TreeModel::IndexOf(const Node& row, int column) const {
  if (!m_tree || &row == &m_tree->GetTop()) return {};
  int place = row.GetIndex();
  if (IsFiltered()) {
    const auto found = m_places.find(row.key);
    if (found == m_places.end()) return {};
    place = found->second;
  }
  return createIndex(place, column, static_cast<quintptr>(row.key));
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
  const Node* above = NodeOf(parent);
  if (!above || row < 0 || column < 0 || column >= columnCount()) return {};
  const auto& rows = Rows(*above);
  if (row >= static_cast<int>(rows.size())) return {};
  return createIndex(row, column, static_cast<quintptr>(rows[row]->key));
}

QModelIndex TreeModel::parent(const QModelIndex& index) const {
  const Node* row = index.isValid() ? NodeOf(index) : nullptr;
  return row && row->parent() ? IndexOf(*row->parent()) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& parent) const {
  const Node* above = parent.column() <= 0 ? NodeOf(parent) : nullptr;
  return above ? static_cast<int>(Rows(*above).size()) : 0;
}

int TreeModel::columnCount(const QModelIndex&) const {
  return m_tree ? static_cast<int>(m_tree->GetColumns().size()) : 0;
}

QVariant TreeModel::CellData(const Tree::Cell& cell, const Tree::Row& row, int role) const {
  const QWidget& widget = *m_peer.GetWidget();
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return ToQt(cell.text);
    case Qt::ToolTipRole:
      return ToQt(cell.tooltip);
    case Qt::DecorationRole:
      return cell.icon.empty() ? QVariant() : LoadIcon(*m_tree, cell.icon, widget);
    case Qt::FontRole: {
      if (!row.strong) return {};
      QFont font = widget.font();
      font.setBold(true);
      return font;
    }
    case Qt::ForegroundRole:
      if (row.marked) return ToneOf(widget.palette(), Tone::kAccent);
      return cell.dim ? QVariant(ToneOf(widget.palette(), Tone::kWeakText)) : QVariant();
    default:
      return {};
  }
}

QVariant TreeModel::data(const QModelIndex& index, int role) const {
  const Node* node = index.isValid() ? NodeOf(index) : nullptr;
  if (!node) return {};
  if (role == Qt::CheckStateRole) {
    static constexpr Qt::CheckState kStates[] = {Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked};
    if (index.column() != 0 || !node->row.hasCheck) return {};
    return kStates[static_cast<int>(node->row.check)];
  }
  if (role == Qt::TextAlignmentRole)
    return static_cast<int>(
        Qt::AlignVCenter |
        (m_tree->GetColumns()[index.column()].right ? Qt::AlignRight : Qt::AlignLeft));
  static const Tree::Cell kEmpty;
  const auto& cells = node->row.cells;
  const bool there = index.column() < static_cast<int>(cells.size());
  if (role == Qt::ToolTipRole && there && cells[index.column()].tooltip.empty())
    return ElidedText(*static_cast<QAbstractItemView*>(m_peer.GetWidget()), index);
  return CellData(there ? cells[index.column()] : kEmpty, node->row, role);
}

QVariant TreeModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (!m_tree || orientation != Qt::Horizontal || section < 0 || section >= columnCount())
    return {};
  const Tree::Column& column = m_tree->GetColumns()[section];
  if (role == Qt::DisplayRole) return ToQt(column.english ? Translate(column.title) : column.title);
  if (role == Qt::TextAlignmentRole)
    return static_cast<int>(Qt::AlignVCenter | (column.right ? Qt::AlignRight : Qt::AlignLeft));
  return {};
}

Qt::ItemFlags TreeModel::flags(const QModelIndex& index) const {
  const Node* node = NodeOf(index);
  if (!node) return Qt::NoItemFlags;
  if (!index.isValid()) return m_tree->CanDrag() ? Qt::ItemIsDropEnabled : Qt::NoItemFlags;
  Qt::ItemFlags flags = Qt::NoItemFlags;
  if (node->row.enabled) flags |= Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (node->row.enabled && m_tree->CanDrag()) flags |= Qt::ItemIsDragEnabled;
  if (node->row.takesRows && m_tree->CanDrag()) flags |= Qt::ItemIsDropEnabled;
  if (index.column() == 0 && node->row.hasCheck) flags |= Qt::ItemIsUserCheckable;
  if (index.column() == 0 && node->row.editable) flags |= Qt::ItemIsEditable;
  return flags;
}

bool TreeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  const Node* node = index.isValid() ? NodeOf(index) : nullptr;
  if (!node) return false;
  if (role == Qt::CheckStateRole) {
    // From undetermined it leads to on, as it does in a check box.
    m_tree->CheckByUser(node->key,
                        node->row.check == CheckState::kOn ? CheckState::kOff : CheckState::kOn);
    return true;
  }
  if (role != Qt::EditRole || data(index, Qt::EditRole) == value) return false;
  Renamed renamed{node->key, value.toString().toStdString()};
  m_tree->Post(kMsgRenamed, renamed.key, &renamed);
  return true;
}

QStringList TreeModel::mimeTypes() const {
  return {QLatin1String(kKeysType)};
}

QMimeData* TreeModel::mimeData(const QModelIndexList& indexes) const {
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream << static_cast<quint64>(reinterpret_cast<quintptr>(this));
  // In the order of the tree, whatever the order they were selected in.
  for (const int key : m_tree ? m_tree->GetSelected() : std::vector<int>()) {
    const Node* node = m_tree->FindRow(key);
    if (node && indexes.contains(IndexOf(*node))) stream << static_cast<qint32>(key);
  }
  auto* data = new QMimeData;
  data->setData(QLatin1String(kKeysType), bytes);
  return data;
}

/// Empty when they are another tree's.
static std::vector<int> KeysOf(const QMimeData& data, const TreeModel* model) {
  QDataStream stream(data.data(QLatin1String(kKeysType)));
  quint64 owner = 0;
  stream >> owner;
  std::vector<int> keys;
  if (owner != reinterpret_cast<quintptr>(model)) return keys;
  for (qint32 key = 0; !stream.atEnd();) {
    stream >> key;
    keys.push_back(key);
  }
  return keys;
}

bool TreeModel::canDropMimeData(const QMimeData* data, Qt::DropAction, int, int,
                                const QModelIndex& parent) const {
  const Node* to = NodeOf(parent.sibling(parent.row(), 0));
  if (!to || !m_tree->CanDrag() || (parent.isValid() && !to->row.takesRows)) return false;
  const std::vector<int> keys = KeysOf(*data, this);
  for (const int key : keys)
    for (const Node* up = to; up; up = up->parent())
      if (up->key == key && up != &m_tree->GetTop()) return false;
  return !keys.empty();
}

bool TreeModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                             const QModelIndex& parent) {
  if (!canDropMimeData(data, action, row, column, parent)) return false;
  const Node& to = *NodeOf(parent.sibling(parent.row(), 0));
  MoveRequest request{KeysOf(*data, this), to.key, to.childCount()};
  // The view tells the place among the rows in sight.
  const auto& shown = Rows(to);
  if (row >= 0 && row < static_cast<int>(shown.size())) request.index = shown[row]->GetIndex();
  m_tree->Post(kMsgMoveRequest, request.keys.front(), &request);
  // The rows move, if at all, by what the window does; the view must not take them away.
  return false;
}

void TreeModel::CollectShown(const Node& parent) {
  if (&parent == &m_tree->GetTop()) {
    m_shown.clear();
    m_places.clear();
  }
  if (!IsFiltered()) return;
  std::vector<Node*>& rows = m_shown[parent.key];
  for (Node* child : parent.children()) {
    if (child->hidden) continue;
    m_places[child->key] = static_cast<int>(rows.size());
    rows.push_back(child);
  }
  for (Node* child : std::vector<Node*>(rows)) CollectShown(*child);
}

void TreeModel::EndReset() {
  if (m_tree) CollectShown(m_tree->GetTop());
  endResetModel();
}

void TreeModel::BeginInsert(const Node& parent, int index) {
  if (IsFiltered()) return beginResetModel();
  beginInsertRows(IndexOf(parent), index, index);
}

void TreeModel::EndInsert() {
  if (IsFiltered()) return EndReset();
  endInsertRows();
}

void TreeModel::BeginRemove(const Node& row) {
  if (IsFiltered()) return beginResetModel();
  beginRemoveRows(IndexOf(*row.parent()), row.GetIndex(), row.GetIndex());
}

void TreeModel::EndRemove() {
  if (IsFiltered()) return EndReset();
  endRemoveRows();
}

void TreeModel::BeginMove(const Node& row, const Node& parent, int to) {
  if (IsFiltered()) return beginResetModel();
  const int from = row.GetIndex();
  beginMoveRows(IndexOf(*row.parent()), from, from, IndexOf(parent), to);
}

void TreeModel::EndMove() {
  if (IsFiltered()) return EndReset();
  endMoveRows();
}

void TreeModel::RowChanged(const Node& row) {
  const QModelIndex first = IndexOf(row);
  if (first.isValid()) emit dataChanged(first, IndexOf(row, columnCount() - 1));
}

}  // namespace orv::gui::component::qt
