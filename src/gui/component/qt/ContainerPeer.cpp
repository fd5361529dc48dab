#include "gui/component/qt/ContainerPeer.h"

#include <QLabel>
#include <QPainter>

#include "gui/component/Label.h"
#include "gui/component/qt/Scale.h"
#include "gui/component/qt/Theme.h"
#include "gui/component/qt/Watcher.h"

namespace orv::gui::component::qt {

namespace {

/// Between two children, in pixels at 96 dpi.
constexpr int kSpacing = 4;
constexpr int kSpacingAcross = 8;

}  // namespace

void Panel::SetLook(const QBrush& brush, BorderStyle border) {
  m_brush = brush;
  m_border = border;
  update();
}

void Panel::paintEvent(QPaintEvent*) {
  if (m_brush.style() == Qt::NoBrush && m_border == BorderStyle::kNone) return;
  QPainter painter(this);
  if (m_brush.style() != Qt::NoBrush) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_brush);
    painter.drawRect(rect());
  }
  if (m_border == BorderStyle::kNone) return;
  if (m_border == BorderStyle::kSunken) painter.fillRect(rect(), palette().base());
  const bool round = m_border != BorderStyle::kThin;
  const double radius = round ? Scaled(4) : 0.0;
  painter.setRenderHint(QPainter::Antialiasing, round);
  painter.setPen(ToneOf(palette(), Tone::kLine));
  painter.setBrush(Qt::NoBrush);
  const double half = round ? 0.5 : 0.0;
  painter.drawRoundedRect(QRectF(half, half, width() - 1, height() - 1), radius, radius);
}

ContainerPeer::ContainerPeer(Component& component, QWidget* widget, QWidget* content)
    : QtPeer(component, widget), m_content(content) {
  new BoxLayout(QBoxLayout::TopToBottom, content);
}

BoxLayout* ContainerPeer::GetLayout() const {
  return m_content ? static_cast<BoxLayout*>(m_content->layout()) : nullptr;
}

void ContainerPeer::UpdateContent(unsigned changes) {
  if (!(changes & kStyleChange)) return;
  const BoxLook look = GetLook();
  BoxLayout& layout = *GetLayout();
  layout.setDirection(look.horizontal ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  const int spacing =
      look.spacing != kUnset ? look.spacing : (look.horizontal ? kSpacingAcross : kSpacing);
  layout.setSpacing(Scaled(spacing));
  const Padding& p = look.padding;
  layout.setContentsMargins(Scaled(p.left), Scaled(p.top), Scaled(p.right), Scaled(p.bottom));
  if (auto* panel = dynamic_cast<Panel*>(GetWidget())) panel->SetLook(GetBrush(), GetBorder());
}

void ContainerPeer::SetLeast(const QSize& size) {
  // A widget's own least size would hold even where the content needs more.
  if (m_content == GetWidget())
    GetLayout()->SetLeast(size);
  else
    QtPeer::SetLeast(size);
}

void ContainerPeer::AddChild(Component& child, int index) {
  QtPeer* peer = QtPeer::Of(child);
  BoxLayout* layout = GetLayout();
  if (!peer || !peer->GetWidget() || !layout) return;
  layout->Insert(index, *peer);
  peer->UpdateName();
  BecomeBuddy(*peer, index);
  if (!m_content->isVisible()) return;
  if (child.IsVisible()) peer->GetWidget()->show();
  Watcher::Instance().OrderTabs(*this);
}

void ContainerPeer::BecomeBuddy(QtPeer& peer, int index) {
  QWidget* focus = peer.GetFocusWidget();
  const Component* before = GetComponent()->child(index - 1);
  auto* label = focus && before && QtPeer::Of(*before)
                    ? qobject_cast<QLabel*>(QtPeer::Of(*before)->GetWidget())
                    : nullptr;
  if (label && before->IsDocumentLabel() && label->text().contains('&')) label->setBuddy(focus);
}

void ContainerPeer::RemoveChild(Component& child) {
  QtPeer* peer = QtPeer::Of(child);
  if (peer && GetLayout()) GetLayout()->Remove(*peer);
}

void ContainerPeer::ChildChanged(Component& child) {
  BoxLayout* layout = GetLayout();
  BoxItem* item = layout ? layout->Find(*QtPeer::Of(child)) : nullptr;
  if (item) item->Changed();
  if (!dynamic_cast<Label*>(&child)) return;
  // What stands behind a label is called by it, up to the next one.
  const Component& list = *GetComponent();
  for (int i = list.childIndex(&child) + 1; i < list.childCount(); ++i) {
    if (dynamic_cast<Label*>(list.child(i))) return;
    if (QtPeer* peer = QtPeer::Of(*list.child(i))) peer->UpdateName();
  }
}

void ContainerPeer::Freeze(bool frozen) {
  QtPeer::Freeze(frozen);
  BoxLayout* layout = GetLayout();
  if (!layout) return;
  layout->setEnabled(!frozen);
  if (!frozen && m_content->isVisible()) layout->activate();
}

}  // namespace orv::gui::component::qt
