#include "gui/component/qt/GraphView.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <cmath>

#include "gui/NumberField.h"
#include "gui/component/qt/Peers.h"
#include "gui/component/qt/Scale.h"
#include "gui/component/qt/Theme.h"

namespace orv::gui::component::qt {

namespace {

constexpr int kMostLines = 200;

double Span(const Graph::Axis& axis) {
  return axis.to != axis.from ? axis.to - axis.from : 1.0;
}

/// The distance of round numbers (1, 2 or 5 times a power of ten) that leaves some `lines`.
double RoundStep(double span, double lines) {
  const double raw = std::fabs(span) / std::max(1.0, lines);
  const double power = std::pow(10.0, std::floor(std::log10(raw)));
  const double share = raw / power;
  return power * (share <= 1.0 ? 1.0 : share <= 2.0 ? 2.0 : share <= 5.0 ? 5.0 : 10.0);
}

}  // namespace

GraphView::GraphView(Graph& graph, QWidget* parent) : QWidget(parent), m_graph(&graph) {
  setMouseTracking(true);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void GraphView::Refresh(bool still) {
  if (!m_graph) return;
  if (still) m_still = QPixmap();
  const int count = static_cast<int>(m_graph->GetHandles().size());
  setFocusPolicy(count > 0 ? Qt::StrongFocus : Qt::NoFocus);
  m_handle = std::max(0, std::min(m_handle, count - 1));
  if (m_hover >= count) m_hover = -1;
  update();
}

QSize GraphView::sizeHint() const {
  return QSize(Scaled(240), Scaled(160));
}

QSize GraphView::minimumSizeHint() const {
  return QSize(Scaled(120), Scaled(80));
}

QRectF GraphView::Area() const {
  const int line = fontMetrics().height();
  const int numbers = fontMetrics().width(QStringLiteral("-0.00")) + Scaled(4);
  return QRectF(numbers, line / 2.0 + 1, width() - numbers - Scaled(8), height() - 2.0 * line);
}

QPointF GraphView::ToWidget(const Point& point) const {
  const QRectF area = Area();
  const Graph::Axis &x = m_graph->GetXAxis(), &y = m_graph->GetYAxis();
  // Far beyond the picture is far enough for a painter.
  const auto place = [](double share) { return std::fmax(-50.0, std::fmin(50.0, share)); };
  return QPointF(area.left() + area.width() * place((point.x - x.from) / Span(x)),
                 area.bottom() - area.height() * place((point.y - y.from) / Span(y)));
}

GraphView::Point GraphView::ToData(const QPointF& place) const {
  const QRectF area = Area();
  const Graph::Axis &x = m_graph->GetXAxis(), &y = m_graph->GetYAxis();
  return {x.from + Span(x) * (place.x() - area.left()) / std::max(1.0, area.width()),
          y.from + Span(y) * (area.bottom() - place.y()) / std::max(1.0, area.height())};
}

void GraphView::PaintAxis(QPainter& painter, const Graph::Axis& axis, bool across) const {
  const QRectF area = Area();
  const int line = fontMetrics().height();
  if (!axis.label.empty()) {
    painter.setPen(ToneOf(palette(), Tone::kWeakText));
    const QRectF place(area.left() + Scaled(4), across ? area.bottom() - line : area.top(),
                       area.width() - Scaled(8), line);
    painter.drawText(place, across ? Qt::AlignRight : Qt::AlignLeft, ToQt(axis.label));
  }
  const double low = std::min(axis.from, axis.to), high = std::max(axis.from, axis.to);
  if (!axis.grid || !std::isfinite(high - low) || !(high > low)) return;
  const double step = RoundStep(high - low, (across ? area.width() : area.height()) / Scaled(40));
  int lines = 0;
  for (double i = std::ceil(low / step); i * step <= high + step * 1e-9 && lines < kMostLines;
       i += 1.0, ++lines) {
    const double value = i * step;
    const QPointF at = ToWidget(across ? Point{value, 0.0} : Point{0.0, value});
    const QString number = QString::fromStdString(ShownNumber(AddSteps(0.0, step, i), 0));
    painter.setPen(ToneOf(palette(), value == 0.0 ? Tone::kWeakText : Tone::kLine));
    if (across) {
      painter.drawLine(QPointF(at.x(), area.top()), QPointF(at.x(), area.bottom()));
      painter.setPen(ToneOf(palette(), Tone::kWeakText));
      painter.drawText(QRectF(at.x() - 50, area.bottom() + 2, 100, line), Qt::AlignHCenter, number);
    } else {
      painter.drawLine(QPointF(area.left(), at.y()), QPointF(area.right(), at.y()));
      painter.setPen(ToneOf(palette(), Tone::kWeakText));
      painter.drawText(QRectF(0, at.y() - line / 2.0, area.left() - Scaled(4), line),
                       Qt::AlignRight | Qt::AlignVCenter, number);
    }
  }
}

void GraphView::PaintCurves(QPainter& painter) const {
  static constexpr Tone kTones[] = {Tone::kAccent, Tone::kText, Tone::kWeakText};
  painter.setBrush(Qt::NoBrush);
  for (const Graph::Curve& curve : m_graph->GetCurves()) {
    QPolygonF line;
    line.reserve(static_cast<int>(curve.points.size()));
    for (const Point& point : curve.points)
      if (std::isfinite(point.x) && std::isfinite(point.y)) line.append(ToWidget(point));
    QPen pen(ToneOf(palette(), kTones[static_cast<int>(curve.role)]), Scaled(3) / 2.0);
    if (curve.dashed) pen.setStyle(Qt::DashLine);
    painter.setPen(pen);
    painter.drawPolyline(line);
  }
}

void GraphView::PaintLive(QPainter& painter) const {
  const Point* live = m_graph->GetLivePoint();
  if (!live || !std::isfinite(live->x) || !std::isfinite(live->y)) return;
  const QPointF at = ToWidget(*live);
  const QRectF area = Area();
  painter.setPen(QPen(ToneOf(palette(), Tone::kAccent), 1.0, Qt::DotLine));
  painter.drawLine(QPointF(at.x(), area.bottom()), at);
  painter.drawLine(QPointF(area.left(), at.y()), at);
  painter.setPen(Qt::NoPen);
  painter.setBrush(ToneOf(palette(), Tone::kAccent));
  painter.drawEllipse(at, Scaled(4), Scaled(4));
}

void GraphView::PaintHandles(QPainter& painter) const {
  const auto& handles = m_graph->GetHandles();
  for (int i = 0; i < static_cast<int>(handles.size()); ++i) {
    const bool lit = i == m_hover || (hasFocus() && i == m_handle);
    painter.setPen(QPen(ToneOf(palette(), lit ? Tone::kAccent : Tone::kText), lit ? 2.0 : 1.0));
    painter.setBrush(palette().brush(QPalette::Base));
    const double half = Scaled(4);
    const QPointF at = ToWidget(handles[i].at);
    painter.drawRect(QRectF(at.x() - half, at.y() - half, 2 * half, 2 * half));
  }
}

/// Stroking curves is dear, and a live point moves many times a second.
void GraphView::PaintStill() {
  const QSize size = this->size() * devicePixelRatioF();
  if (m_still.size() == size) return;
  m_still = QPixmap(size);
  m_still.setDevicePixelRatio(devicePixelRatioF());
  m_still.fill(Qt::transparent);
  QPainter painter(&m_still);
  painter.setFont(font());
  painter.fillRect(Area(), palette().brush(QPalette::Base));
  PaintAxis(painter, m_graph->GetXAxis(), true);
  PaintAxis(painter, m_graph->GetYAxis(), false);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setClipRect(Area().adjusted(-1, -1, 1, 1));
  PaintCurves(painter);
}

void GraphView::paintEvent(QPaintEvent*) {
  if (!m_graph) return;
  PaintStill();
  QPainter painter(this);
  painter.drawPixmap(0, 0, m_still);
  painter.setRenderHint(QPainter::Antialiasing);
  PaintLive(painter);
  PaintHandles(painter);
}

int GraphView::HandleAt(const QPointF& place) const {
  const auto& handles = m_graph->GetHandles();
  int nearest = -1;
  double least = Scaled(8);
  for (int i = 0; i < static_cast<int>(handles.size()); ++i) {
    const QPointF way = ToWidget(handles[i].at) - place;
    const double distance = std::hypot(way.x(), way.y());
    if (distance > least) continue;
    least = distance;
    nearest = i;
  }
  return nearest;
}

void GraphView::mousePressEvent(QMouseEvent* event) {
  const int handle =
      m_graph && event->button() == Qt::LeftButton ? HandleAt(event->localPos()) : -1;
  if (handle < 0) return event->ignore();
  m_handle = handle;
  m_before = m_graph->GetHandles()[handle].at;
  m_grip = ToWidget(m_before) - event->localPos();
  m_dragging = true;
  m_graph->BeginDrag();
}

void GraphView::mouseMoveEvent(QMouseEvent* event) {
  if (!m_graph) return;
  if (m_dragging) {
    m_graph->DragHandle(m_handle, ToData(event->localPos() + m_grip));
    return;
  }
  const int hover = HandleAt(event->localPos());
  if (std::exchange(m_hover, hover) != hover) update();
}

void GraphView::End(bool cancelled) {
  const bool was = m_dragging || m_nudging;
  m_dragging = m_nudging = false;
  if (!was || !m_graph) return;
  if (cancelled && (!m_graph->DragHandle(m_handle, m_before) || !m_graph)) return;
  m_graph->EndDrag(cancelled);
}

void GraphView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) End(false);
}

void GraphView::Nudge(double x, double y) {
  const auto& handles = m_graph->GetHandles();
  if (m_handle >= static_cast<int>(handles.size())) return;
  if (!m_nudging) {
    m_before = handles[m_handle].at;
    m_nudging = true;
    if (!m_graph->BeginDrag() || !m_graph) return;
  }
  // A hundredth of what is seen.
  const Point at = m_graph->GetHandles()[m_handle].at;
  m_graph->DragHandle(m_handle, {at.x + x * Span(m_graph->GetXAxis()) / 100.0,
                                 at.y + y * Span(m_graph->GetYAxis()) / 100.0});
}

void GraphView::keyPressEvent(QKeyEvent* event) {
  const int count = m_graph ? static_cast<int>(m_graph->GetHandles().size()) : 0;
  if (count == 0) return QWidget::keyPressEvent(event);
  switch (event->key()) {
    case Qt::Key_Left:
      return Nudge(-1.0, 0.0);
    case Qt::Key_Right:
      return Nudge(1.0, 0.0);
    case Qt::Key_Up:
      return Nudge(0.0, 1.0);
    case Qt::Key_Down:
      return Nudge(0.0, -1.0);
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      End(false);
      m_handle = (m_handle + (event->key() == Qt::Key_PageDown ? 1 : count - 1)) % count;
      return update();
    case Qt::Key_Escape:
      if (m_dragging || m_nudging) return End(true);
      break;
    default:
      break;
  }
  QWidget::keyPressEvent(event);
}

void GraphView::keyReleaseEvent(QKeyEvent* event) {
  if (!event->isAutoRepeat() && m_nudging) End(false);
  QWidget::keyReleaseEvent(event);
}

void GraphView::focusOutEvent(QFocusEvent* event) {
  if (m_nudging) End(false);
  QWidget::focusOutEvent(event);
}

bool GraphView::event(QEvent* event) {
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange ||
      event->type() == QEvent::EnabledChange)
    m_still = QPixmap();
  if (event->type() == QEvent::ToolTip && m_graph) {
    const auto& help = *static_cast<QHelpEvent*>(event);
    const int handle = HandleAt(help.pos());
    if (handle >= 0 && !m_graph->GetHandles()[handle].name.empty()) {
      QToolTip::showText(help.globalPos(), ToQt(m_graph->GetHandles()[handle].name), this);
      return true;
    }
  }
  return QWidget::event(event);
}

namespace {

class GraphPeer : public PeerOf<Graph, GraphView> {
 public:
  GraphPeer(Component& component, GraphView* view) : PeerOf(component, view) {}

 protected:
  void UpdateContent(unsigned changes) override {
    if (changes & (kRangeChange | kItemsChange | kValueChange))
      View()->Refresh(changes & (kRangeChange | kItemsChange));
  }
  void Detached() override {
    if (View()) View()->Release();
  }
};

}  // namespace

std::unique_ptr<Peer> MakeGraph(Component& component, QWidget* parent) {
  return std::make_unique<GraphPeer>(component,
                                     new GraphView(static_cast<Graph&>(component), parent));
}

}  // namespace orv::gui::component::qt
