#include "gui/component/qt/GroupBox.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QVBoxLayout>
#include <utility>

#include "gui/component/qt/Scale.h"
#include "gui/component/qt/Theme.h"

namespace orv::gui::component::qt {

GroupBox::GroupBox(QWidget* parent) : QWidget(parent), m_content(new QWidget(this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setSpacing(0);
  layout->addWidget(m_content);
  UpdateMargins();
}

QFont GroupBox::HeadingFont() const {
  QFont heading = font();
  heading.setBold(true);
  return heading;
}

int GroupBox::HeadingHeight() const {
  if (m_title.isEmpty() && !m_foldable) return 0;
  return QFontMetrics(HeadingFont()).height() + Scaled(8);
}

void GroupBox::UpdateMargins() {
  layout()->setContentsMargins(0, HeadingHeight(), 0, 0);
  updateGeometry();
  update();
}

QSize GroupBox::minimumSizeHint() const {
  const int arrow = m_foldable ? Scaled(20) : 0;
  const int heading = QFontMetrics(HeadingFont()).width(m_title) + arrow + Scaled(4);
  return QWidget::minimumSizeHint().expandedTo(QSize(heading, 0));
}

void GroupBox::SetTitle(const QString& title, bool marked) {
  m_title = title;
  m_marked = marked;
  UpdateMargins();
}

void GroupBox::SetFold(bool foldable, bool folded) {
  m_foldable = foldable;
  m_folded = foldable && folded;
  setFocusPolicy(foldable ? Qt::TabFocus : Qt::NoFocus);
  setAttribute(Qt::WA_Hover, foldable);
  if (std::exchange(m_contentHidden, m_folded) != m_folded) m_content->setVisible(!m_folded);
  UpdateMargins();
}

void GroupBox::SetBrush(const QBrush& brush) {
  m_brush = brush;
  update();
}

void GroupBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (m_brush.style() != Qt::NoBrush) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_brush);
    painter.drawRect(rect());
  }
  QRect heading(0, 0, width(), HeadingHeight());
  if (heading.isEmpty()) return;
  if (m_foldable) {
    if (m_hover) painter.fillRect(heading, ToneOf(palette(), Tone::kHover));
    QStyleOption arrow;
    arrow.initFrom(this);
    const int size = Scaled(12);
    arrow.rect = QRect(Scaled(2), (heading.height() - size) / 2, size, size);
    style()->drawPrimitive(
        m_folded ? QStyle::PE_IndicatorArrowRight : QStyle::PE_IndicatorArrowDown, &arrow, &painter,
        this);
    if (hasFocus()) {
      painter.setPen(ToneOf(palette(), Tone::kAccent));
      painter.drawRect(heading.adjusted(0, 0, -1, -1));
    }
    heading.setLeft(Scaled(20));
  }
  painter.setFont(HeadingFont());
  painter.setPen(m_marked ? ToneOf(palette(), Tone::kAccent)
                          : palette().color(QPalette::WindowText));
  painter.drawText(heading, Qt::AlignLeft | Qt::AlignVCenter, m_title);
}

void GroupBox::Toggle() {
  SetFold(m_foldable, !m_folded);
  if (onFold) onFold(m_folded);
}

void GroupBox::mousePressEvent(QMouseEvent* event) {
  const bool heading = event->y() < HeadingHeight() && event->button() == Qt::LeftButton;
  if (m_foldable && heading)
    Toggle();
  else
    event->ignore();
}

void GroupBox::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  const bool turn = key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter ||
                    (key == Qt::Key_Left && !m_folded) || (key == Qt::Key_Right && m_folded);
  if (m_foldable && turn)
    Toggle();
  else
    QWidget::keyPressEvent(event);
}

void GroupBox::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) UpdateMargins();
  QWidget::changeEvent(event);
}

bool GroupBox::event(QEvent* event) {
  if (event->type() == QEvent::HoverMove || event->type() == QEvent::HoverLeave) {
    const bool hover = event->type() == QEvent::HoverMove &&
                       static_cast<QHoverEvent*>(event)->pos().y() < HeadingHeight();
    if (std::exchange(m_hover, hover) != hover) update();
  }
  return QWidget::event(event);
}

}  // namespace orv::gui::component::qt
