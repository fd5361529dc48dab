#include "gui/component/qt/BoxLayout.h"

#include <QWidget>
#include <algorithm>

#include "gui/component/qt/QtPeer.h"
#include "gui/component/qt/Scale.h"

namespace orv::gui::component::qt {

BoxItem::BoxItem(QtPeer& peer, QWidget* widget) : QWidgetItemV2(widget), m_peer(peer) {
  const std::string& name = peer.GetComponent()->GetAttributes().column;
  if (name.empty()) return;
  m_column = &peer.GetColumns()[name];
  m_column->Add(this);
  m_column->Invalidate();
}

BoxItem::~BoxItem() {
  if (m_column) m_column->Remove(this);
}

QSize BoxItem::Wish() const {
  QSize size = QWidgetItemV2::sizeHint();
  if (const Component* component = m_peer.GetComponent()) {
    const Attributes& a = component->GetAttributes();
    if (a.desiredWidth != kUnset) size.setWidth(Scaled(a.desiredWidth));
    if (a.desiredHeight != kUnset) size.setHeight(Scaled(a.desiredHeight));
  }
  const QWidget& widget = *const_cast<BoxItem*>(this)->widget();
  return size.expandedTo(widget.minimumSize()).boundedTo(widget.maximumSize());
}

QSize BoxItem::Least() const {
  QWidget& widget = *const_cast<BoxItem*>(this)->widget();
  QSize size = QWidgetItemV2::minimumSize();
  // A least size that is told can't be less than what the content needs.
  if (widget.minimumWidth() > 0 || widget.minimumHeight() > 0)
    size = size.expandedTo(widget.minimumSizeHint().boundedTo(widget.maximumSize()));
  const Component* component = m_peer.GetComponent();
  if (component && component->GetAttributes().fixedWidth) size.setWidth(Wish().width());
  if (component && component->GetAttributes().fixedHeight) size.setHeight(Wish().height());
  return size;
}

int BoxItem::GetWish() const {
  return isEmpty() ? 0 : Wish().expandedTo(Least()).width();
}

QSize BoxItem::sizeHint() const {
  if (isEmpty()) return QSize(0, 0);
  QSize size = Wish().expandedTo(Least());
  if (m_column) size.setWidth(std::max(size.width(), m_column->GetWidth()));
  return size;
}

QSize BoxItem::minimumSize() const {
  if (isEmpty()) return QSize(0, 0);
  QSize size = Least();
  if (m_column) size.setWidth(std::max(size.width(), m_column->GetWidth()));
  return size;
}

QSize BoxItem::maximumSize() const {
  QSize size = QWidgetItemV2::maximumSize();
  const Component* component = m_peer.GetComponent();
  if (!component || isEmpty()) return size;
  if (m_column) size.setWidth(std::min(size.width(), m_column->GetWidth()));
  if (component->GetAttributes().fixedWidth) size.setWidth(sizeHint().width());
  if (component->GetAttributes().fixedHeight) size.setHeight(sizeHint().height());
  return size;
}

Qt::Orientations BoxItem::expandingDirections() const {
  Qt::Orientations directions = QWidgetItemV2::expandingDirections();
  const Component* component = m_peer.GetComponent();
  if (component && component->GetAttributes().fixedWidth) directions &= ~Qt::Horizontal;
  if (component && component->GetAttributes().fixedHeight) directions &= ~Qt::Vertical;
  return directions;
}

void BoxItem::Changed() {
  if (m_column) m_column->Invalidate();
}

BoxLayout::BoxLayout(Direction direction, QWidget* parent) : QBoxLayout(direction, parent) {
  // The last item, which takes the spare room when nothing else does.
  addItem(new QSpacerItem(0, 0));
  setStretch(0, 1);
}

void BoxLayout::Insert(int index, QtPeer& peer) {
  QWidget* widget = peer.GetWidget();
  auto* item = new BoxItem(peer, widget);
  item->setAlignment(peer.GetAlignment());
  addChildWidget(widget);
  index = std::min(index, count() - 1);
  insertItem(index, item);
  const int stretch = peer.GetComponent()->GetAttributes().stretch;
  if (stretch != kUnset) setStretch(index, stretch);
  const bool fills = stretch > 0 || IsAlong(*item);
  if (this->stretch(count() - 1) != 0 && fills) setStretch(count() - 1, 0);
}

BoxItem* BoxLayout::Find(const QtPeer& peer) const {
  for (int i = 0; i < count() - 1; ++i) {
    auto* item = static_cast<BoxItem*>(itemAt(i));
    if (&item->GetPeer() == &peer) return item;
  }
  return nullptr;
}

void BoxLayout::Remove(QtPeer& peer) {
  BoxItem* item = Find(peer);
  if (!item) return;
  removeItem(item);
  delete item;
}

bool BoxLayout::IsAlong(const QLayoutItem& item) const {
  const Qt::Orientation along = direction() == LeftToRight ? Qt::Horizontal : Qt::Vertical;
  return item.expandingDirections() & along;
}

bool BoxLayout::IsFilled() const {
  if (m_filled >= 0) return m_filled > 0;
  m_filled = 0;
  for (int i = 0; i < count() - 1 && m_filled == 0; ++i) {
    const QLayoutItem& item = *itemAt(i);
    if (!item.isEmpty() && (stretch(i) > 0 || IsAlong(item))) m_filled = 1;
  }
  return m_filled > 0;
}

void BoxLayout::invalidate() {
  m_filled = -1;
  QBoxLayout::invalidate();
}

Qt::Orientations BoxLayout::expandingDirections() const {
  Qt::Orientations directions = QBoxLayout::expandingDirections();
  // The spacer at the end is no wish for room.
  const Qt::Orientation along = direction() == LeftToRight ? Qt::Horizontal : Qt::Vertical;
  if (!IsFilled()) directions &= ~Qt::Orientations(along);
  return directions;
}

void BoxLayout::setGeometry(const QRect& rect) {
  const int spare = IsFilled() ? 0 : 1;
  if (stretch(count() - 1) != spare) setStretch(count() - 1, spare);
  QBoxLayout::setGeometry(rect);
}

}  // namespace orv::gui::component::qt
