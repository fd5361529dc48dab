// How the children of a list, border, group, scroll or dialog stand.
#pragma once

#include <QBoxLayout>
#include <QWidget>
#include <QWidgetItem>

#include "gui/component/qt/Column.h"

namespace orv::gui::component::qt {

class QtPeer;

/// A widget with the sizes that its component asks for.
class BoxItem : public QWidgetItemV2, public Column::Member {
 public:
  BoxItem(QtPeer& peer, QWidget* widget);
  ~BoxItem() override;

  QSize sizeHint() const override;
  QSize minimumSize() const override;
  QSize maximumSize() const override;
  Qt::Orientations expandingDirections() const override;
  int GetWish() const override;  ///< width but for the column's
  void Relayout() override { widget()->updateGeometry(); }
  QtPeer& GetPeer() const { return m_peer; }
  /// The component's sizes have changed, or what is shown.
  void Changed();

 private:
  QSize Wish() const;   ///< what the document asks for, or the content needs
  QSize Least() const;  ///< but for the column's

  QtPeer& m_peer;
  Column* m_column = nullptr;
};

/// Children in a row or column, packed to its start unless one of them takes the spare room.
class BoxLayout : public QBoxLayout {
 public:
  BoxLayout(Direction direction, QWidget* parent);

  void Insert(int index, QtPeer& peer);
  void Remove(QtPeer& peer);
  BoxItem* Find(const QtPeer& peer) const;
  /// As small as it may become, where the content needs no more.
  void SetLeast(const QSize& size) { m_least = size; }

  QSize minimumSize() const override { return QBoxLayout::minimumSize().expandedTo(m_least); }
  QSize sizeHint() const override { return QBoxLayout::sizeHint().expandedTo(m_least); }
  Qt::Orientations expandingDirections() const override;
  void setGeometry(const QRect& rect) override;
  void invalidate() override;

 private:
  bool IsAlong(const QLayoutItem& item) const;
  bool IsFilled() const;

  QSize m_least;
  mutable int m_filled = -1;  ///< -1: to be worked out
};

}  // namespace orv::gui::component::qt
