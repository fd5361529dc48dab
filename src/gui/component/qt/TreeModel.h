// The rows of a tree as a model of Qt.
#pragma once

#include <QAbstractItemModel>
#include <unordered_map>
#include <vector>

#include "gui/component/Tree.h"

namespace orv::gui::component::qt {

class QtPeer;

/// Indices hold the rows' keys, so that one which outlives its row finds nothing. While there is a
/// filter, only what passes it is there.
class TreeModel : public QAbstractItemModel {
 public:
  using Node = Tree::Node;

  TreeModel(Tree& tree, QtPeer& peer);

  /// The component is gone.
  void Release() { m_tree = nullptr; }
  const Node* NodeOf(const QModelIndex& index) const;
  QModelIndex IndexOf(const Node& row, int column = 0) const;
  bool IsFiltered() const { return m_tree && !m_tree->GetFilter().empty(); }

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& index) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
  QStringList mimeTypes() const override;
  QMimeData* mimeData(const QModelIndexList& indexes) const override;
  bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                       const QModelIndex& parent) const override;
  bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                    const QModelIndex& parent) override;

  void BeginReset() { beginResetModel(); }
  void EndReset();
  void BeginInsert(const Node& parent, int index);
  void EndInsert();
  void BeginRemove(const Node& row);
  void EndRemove();
  void BeginMove(const Node& row, const Node& parent, int to);
  void EndMove();
  void RowChanged(const Node& row);

 private:
  const std::vector<Node*>& Rows(const Node& parent) const;
  void CollectShown(const Node& parent);
  QVariant CellData(const Tree::Cell& cell, const Tree::Row& row, int role) const;

  Tree* m_tree;
  QtPeer& m_peer;
  std::unordered_map<int, std::vector<Node*>> m_shown;  ///< by the parent's key, with a filter
  std::unordered_map<int, int> m_places;                ///< by key, with a filter
};

}  // namespace orv::gui::component::qt
