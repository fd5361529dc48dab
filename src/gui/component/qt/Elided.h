// Texts of rows that are cut off.
#pragma once

#include <QAbstractItemView>

namespace orv::gui::component::qt {

/// The text of a row that its place cuts off, which its tooltip then tells; empty when all is seen.
inline QString ElidedText(const QAbstractItemView& view, const QModelIndex& index) {
  const bool whole = view.sizeHintForIndex(index).width() <= view.visualRect(index).width();
  return whole ? QString() : index.data().toString();
}

}  // namespace orv::gui::component::qt
