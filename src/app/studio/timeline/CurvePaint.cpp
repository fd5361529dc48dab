// How the curves of inputs look.
#include <QPainter>
#include <QPainterPath>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "app/studio/timeline/CurveStrip.h"
#include "app/studio/timeline/Timeline.h"
#include "gui/Texts.h"
#include "gui/component/qt/Scale.h"
#include "gui/component/qt/Theme.h"

namespace orv::app {

using gui::component::qt::Scaled;
using gui::component::qt::Tone;
using gui::component::qt::ToneOf;

QColor CurveStrip::ColourOf(const Input& input, const QWidget& widget) {
  return gui::component::qt::IsDark(widget.palette()) ? input.colour.lighter(125)
                                                      : input.colour.darker(130);
}

void CurveStrip::Paint(QPainter& painter, QWidget& widget) {
  if (m_isOld) Read();
  painter.fillRect(widget.rect(), ToneOf(widget.palette(), Tone::kField));
  PaintGrid(painter, widget);
  for (const Input& input : m_inputs)
    if (input.isShown) PaintCurve(painter, widget, input);
  PaintNames(painter, widget);
  PaintHand(painter, widget);
  if (m_inputs.empty()) {
    painter.setPen(ToneOf(widget.palette(), Tone::kWeakText));
    painter.drawText(
        widget.rect(), Qt::AlignCenter,
        QString::fromStdString(gui::Translate("Nothing has been recorded of the selected rig.")));
  }
  if (!widget.hasFocus()) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(ToneOf(widget.palette(), Tone::kAccent));
  painter.drawRect(widget.rect().adjusted(0, 0, -1, -1));
}

void CurveStrip::PaintGrid(QPainter& painter, const QWidget& widget) const {
  const QColor line = ToneOf(widget.palette(), Tone::kLine);
  for (const double value : {-1.0, 0.0, 1.0}) {
    painter.setPen(QPen(line, 1, value == 0.0 ? Qt::SolidLine : Qt::DotLine));
    const double y = std::floor(ToY(value)) + 0.5;
    painter.drawLine(QPointF(0, y), QPointF(widget.width(), y));
  }
  const double x = std::floor(ToX(m_host.GetCurrentTime())) + 0.5;
  painter.fillRect(QRectF(x - 1.0, 0, 2.0, widget.height()),
                   ToneOf(widget.palette(), Tone::kAccent));
}

void CurveStrip::PaintCurve(QPainter& painter, const QWidget& widget, const Input& input) const {
  const Track* track = TrackOf(input.index);
  if (!track || track->samples.empty()) return;
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor colour = ColourOf(input, widget);
  painter.setPen(QPen(colour, 1.5));
  const auto& samples = track->samples;
  const double from = ToPlace(QPoint(-10, 0)).first,
               to = ToPlace(QPoint(widget.width() + 10, 0)).first;
  auto first = std::lower_bound(samples.begin(), samples.end(), from,
                                [](const auto& sample, double t) { return sample.time < t; });
  if (first != samples.begin()) --first;
  auto last = std::upper_bound(first, samples.end(), to,
                               [](double t, const auto& sample) { return t < sample.time; });
  if (last != samples.end()) ++last;
  // Of many samples in a pixel the highest and the lowest are drawn.
  QPolygonF line;
  for (auto at = first; at != last;) {
    const double x = ToX(at->time);
    double low = at->value, high = at->value, end = at->value;
    line << QPointF(x, ToY(at->value));
    for (++at; at != last && ToX(at->time) < x + 1.0; ++at) {
      low = std::min(low, at->value);
      high = std::max(high, at->value);
      end = at->value;
    }
    if (low < high) line << QPointF(x, ToY(high)) << QPointF(x, ToY(low)) << QPointF(x, ToY(end));
  }
  painter.drawPolyline(line);
  const auto chosen = m_selection.find(input.index);
  const double pixels = m_timeline.GetScale().GetPixelsPerFrame(), size = Scaled(3);
  painter.setPen(Qt::NoPen);
  for (auto at = first; at != last; ++at) {
    const bool isChosen = chosen != m_selection.end() && chosen->second.count(at->time) != 0;
    if (!isChosen && (pixels < Scaled(5) || m_tool != Tool::kPoints)) continue;
    const QPointF place(ToX(at->time), ToY(at->value));
    painter.setBrush(isChosen ? ToneOf(widget.palette(), Tone::kAccent) : colour);
    const double half = isChosen ? size + 1.0 : size - 1.0;
    painter.drawRect(QRectF(place.x() - half, place.y() - half, 2.0 * half, 2.0 * half));
  }
  painter.setRenderHint(QPainter::Antialiasing, false);
}

/// Along the top, in the curves' colours.
void CurveStrip::PaintNames(QPainter& painter, const QWidget& widget) const {
  const QFontMetrics metrics = painter.fontMetrics();
  int x = Scaled(6);
  for (const Input& input : m_inputs) {
    if (!input.isShown) continue;
    const QString name = QString::fromStdString(gui::Translate(input.name));
    const QRect room(x, Scaled(2), metrics.horizontalAdvance(name), metrics.height());
    if (room.right() > widget.width()) break;
    QColor behind = ToneOf(widget.palette(), Tone::kField);
    behind.setAlphaF(0.8);
    painter.fillRect(room, behind);
    painter.setPen(ColourOf(input, widget));
    painter.drawText(room, Qt::AlignVCenter, name);
    x = room.right() + Scaled(14);
  }
}

void CurveStrip::PaintHand(QPainter& painter, const QWidget& widget) const {
  const QColor accent = ToneOf(widget.palette(), Tone::kAccent);
  QColor faint = accent;
  faint.setAlphaF(0.15);
  if (m_drag == Drag::kBox) {
    painter.setPen(accent);
    painter.setBrush(faint);
    painter.drawRect(QRect(m_pressed, m_at).normalized());
  }
  if (m_tool == Tool::kSmooth && (m_isOver || m_drag == Drag::kSmooth)) {
    const double time = ToPlace(m_at).first;
    painter.fillRect(
        QRectF(QPointF(ToX(time - m_radius), 0), QPointF(ToX(time + m_radius), widget.height())),
        faint);
  }
  if (!m_edit.IsRunning()) return;
  painter.fillRect(QRectF(0, 0, widget.width() * m_edit.GetProgress(), Scaled(3)),
                   ToneOf(widget.palette(), Tone::kGood));
}

}  // namespace orv::app
