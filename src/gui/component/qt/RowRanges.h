// A selection of many rows.
#pragma once

#include <QItemSelectionModel>

namespace orv::gui::component::qt {

/// Rows that follow each other become one range: Qt's selections cost the square of their number.
class RowRanges {
 public:
  /// In the order of the rows; one that is invalid is passed over.
  void Add(const QModelIndex& row) {
    if (!row.isValid()) return;
    if (m_last.isValid() && row.parent() == m_last.parent() && row.row() == m_last.row() + 1) {
      m_last = row;
      return;
    }
    Close();
    m_first = m_last = row;
  }
  QItemSelection Take() {
    Close();
    return m_selection;
  }

 private:
  void Close() {
    if (m_first.isValid()) m_selection.append(QItemSelectionRange(m_first, m_last));
    m_first = m_last = QModelIndex();
  }

  QItemSelection m_selection;
  QModelIndex m_first, m_last;
};

}  // namespace orv::gui::component::qt
