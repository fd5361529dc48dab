#include "gui/component/qt/SliderLine.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "gui/component/Slider.h"
#include "gui/component/qt/Peers.h"
#include "gui/component/qt/Scale.h"
#include "gui/component/qt/Theme.h"

namespace orv::gui::component::qt {

namespace {

constexpr int kHandle = 12;  ///< px at 96 dpi

}  // namespace

SliderLine::SliderLine(Slider& slider, QWidget* parent) : QWidget(parent), m_slider(&slider) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  m_pause.setSingleShot(true);
  connect(&m_pause, &QTimer::timeout, this, [this] { End(false); });
}

void SliderLine::Release() {
  m_slider = nullptr;
  m_pause.stop();
}

QSize SliderLine::sizeHint() const {
  return QSize(Scaled(120), Scaled(kHandle + 8));
}

QSize SliderLine::minimumSizeHint() const {
  return QSize(Scaled(48), Scaled(kHandle + 8));
}

int SliderLine::PlaceX(double place) const {
  const int handle = Scaled(kHandle);
  return handle / 2 + static_cast<int>(std::lround(place * std::max(0, width() - handle)));
}

double SliderLine::PlaceAt(int x) const {
  const int handle = Scaled(kHandle);
  return width() > handle ? (x - handle / 2) / static_cast<double>(width() - handle) : 0.0;
}

void SliderLine::paintEvent(QPaintEvent*) {
  if (!m_slider) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const double middle = height() / 2.0;
  const double thick = Scaled(3);
  const int at = PlaceX(m_slider->PlaceOf(m_slider->GetValue()));
  // A range around 0 is filled from there.
  const int zero = PlaceX(m_slider->GetMin() < 0.0 ? m_slider->PlaceOf(0.0) : 0.0);
  const auto bar = [&](int from, int to, const QColor& color) {
    painter.setBrush(color);
    painter.drawRoundedRect(
        QRectF(std::min(from, to), middle - thick / 2, std::abs(to - from), thick), thick / 2,
        thick / 2);
  };
  const QColor accent =
      isEnabled() ? ToneOf(palette(), Tone::kAccent) : ToneOf(palette(), Tone::kLine);
  bar(PlaceX(0.0), PlaceX(1.0), ToneOf(palette(), Tone::kLine));
  bar(zero, at, accent);
  const double radius = Scaled(kHandle) / 2.0 - 1.0;
  painter.setBrush(palette().brush(QPalette::Button));
  painter.setPen(
      QPen(hasFocus() ? accent : ToneOf(palette(), Tone::kWeakText), hasFocus() ? 2.0 : 1.0));
  painter.drawEllipse(QPointF(at, middle), radius, radius);
}

void SliderLine::Change(double value) {
  if (!m_slider) return;
  if (!m_editing) {
    m_editing = true;
    if (!m_slider->BeginDrag() || !m_slider) return;
  }
  m_slider->EnterByUser(value);
}

void SliderLine::End(bool cancelled) {
  m_dragging = false;
  m_pause.stop();
  if (std::exchange(m_editing, false) && m_slider) m_slider->EndDrag(cancelled);
}

void SliderLine::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !m_slider) return event->ignore();
  setFocus(Qt::MouseFocusReason);
  const double place = m_slider->PlaceOf(m_slider->GetValue());
  const bool onHandle = std::abs(event->x() - PlaceX(place)) <= Scaled(kHandle) / 2;
  m_grip = onHandle ? PlaceAt(event->x()) - place : 0.0;
  m_dragging = true;
  if (!onHandle) Change(m_slider->ValueAt(PlaceAt(event->x())));
}

void SliderLine::mouseMoveEvent(QMouseEvent* event) {
  if (m_dragging && m_slider) Change(m_slider->ValueAt(PlaceAt(event->x()) - m_grip));
}

void SliderLine::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) End(false);
}

void SliderLine::wheelEvent(QWheelEvent* event) {
  // Without the focus it scrolls what the line lies in.
  const int turn = event->angleDelta().y();
  if (!hasFocus() || turn == 0 || !m_slider) return event->ignore();
  event->accept();
  Change(m_slider->Stepped(turn / 120.0));
  m_pause.start(kWheelPause);
}

void SliderLine::keyPressEvent(QKeyEvent* event) {
  if (!m_slider) return;
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Down:
      return Change(m_slider->Stepped(-1.0));
    case Qt::Key_Right:
    case Qt::Key_Up:
      return Change(m_slider->Stepped(1.0));
    case Qt::Key_PageDown:
      return Change(m_slider->Stepped(-10.0));
    case Qt::Key_PageUp:
      return Change(m_slider->Stepped(10.0));
    case Qt::Key_Home:
      return Change(m_slider->GetMin());
    case Qt::Key_End:
      return Change(m_slider->GetMax());
    case Qt::Key_Escape:
      if (m_editing) return End(true);
      break;
    default:
      break;
  }
  QWidget::keyPressEvent(event);
}

void SliderLine::keyReleaseEvent(QKeyEvent* event) {
  if (!event->isAutoRepeat() && !m_dragging && !m_pause.isActive()) End(false);
  QWidget::keyReleaseEvent(event);
}

void SliderLine::focusOutEvent(QFocusEvent* event) {
  if (event->reason() != Qt::PopupFocusReason) End(false);
  QWidget::focusOutEvent(event);
}

namespace {

class SliderPeer : public PeerOf<Slider, SliderLine> {
 public:
  SliderPeer(Component& component, SliderLine* line) : PeerOf(component, line) {}

 protected:
  void UpdateContent(unsigned changes) override {
    if (changes & (kRangeChange | kValueChange)) View()->update();
  }
  void Detached() override {
    if (View()) View()->Release();
  }
};

}  // namespace

std::unique_ptr<Peer> MakeSlider(Component& component, QWidget* parent) {
  return std::make_unique<SliderPeer>(component,
                                      new SliderLine(static_cast<Slider&>(component), parent));
}

}  // namespace orv::gui::component::qt
