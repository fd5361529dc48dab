// How the time line looks.
#include <QPainter>
#include <QPainterPath>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <utility>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/session/anyhost/Names.h"
#include "app/studio/timeline/Timeline.h"
#include "core/CoreImplementation.h"
#include "gui/Texts.h"
#include "gui/component/qt/Scale.h"
#include "gui/component/qt/Theme.h"

namespace orv::app {

using gui::component::qt::Scaled;
using gui::component::qt::Tone;
using gui::component::qt::ToneOf;

namespace {

QColor Faint(QColor colour, double alpha) {
  colour.setAlphaF(alpha);
  return colour;
}

}  // namespace

void Timeline::Paint(QPainter& painter, QWidget& widget) {
  // What a run records is read when it is over.
  const bool runs = m_core.GetRunState() != rws::core::RunState::kIdle;
  if (m_isOld && !runs) Read();
  ReadRange();
  PlaceRows();
  m_scale.SetWidth(widget.width());
  if (m_fitsNext && widget.width() > 0) {
    m_fitsNext = false;
    ShowRange();
  }
  // Whatever has moved the scale, all of this is painted anew.
  const std::pair<double, double> scale{m_scale.ToFrame(0.0), m_scale.GetPixelsPerFrame()};
  if (std::exchange(m_paintedScale, scale) != scale && scaleChanged) scaleChanged();
  const QPalette& palette = widget.palette();
  painter.fillRect(QRectF(0, m_rows.ruler, widget.width(), m_rows.sound - m_rows.ruler),
                   ToneOf(palette, Tone::kField));
  // What lies beside the range steps back.
  const double begin = std::clamp(ToX(m_begin), 0.0, double(widget.width()));
  const double end = std::clamp(ToX(m_end), 0.0, double(widget.width()));
  const QColor beside = Faint(ToneOf(palette, Tone::kLine), 0.35);
  painter.fillRect(QRectF(0, m_rows.ruler, begin, m_rows.sound - m_rows.ruler), beside);
  painter.fillRect(QRectF(end, m_rows.ruler, widget.width() - end, m_rows.sound - m_rows.ruler),
                   beside);
  PaintSound(painter, widget);
  PaintTakes(painter, widget);
  PaintKeys(painter, widget);
  PaintRuler(painter, widget);
  PaintRange(painter, widget);
  PaintMarks(painter, widget);
  PaintCursor(painter, widget);
  m_shown = m_host.GetCurrentTime();
  if (!widget.hasFocus()) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(ToneOf(palette, Tone::kAccent));
  painter.drawRect(widget.rect().adjusted(0, 0, -1, -1));
}

void Timeline::PaintRuler(QPainter& painter, const QWidget& widget) const {
  const QPalette& palette = widget.palette();
  const QFontMetrics metrics = painter.fontMetrics();
  const int widest = metrics.horizontalAdvance(QString::number(m_scale.SnapToFrame(0))) +
                     metrics.horizontalAdvance("00");
  const timeline::TimeScale::Steps steps =
      m_scale.ChooseSteps(m_host.GetFrameRate(), Scaled(6), widest + Scaled(16));
  const int first = static_cast<int>(std::floor(m_scale.ToFrame(-widest) / steps.mark));
  const int last = static_cast<int>(std::ceil(m_scale.ToFrame(widget.width()) / steps.mark));
  const QColor line = ToneOf(palette, Tone::kLine), text = ToneOf(palette, Tone::kWeakText);
  for (int i = first; i <= last; ++i) {
    const int frame = i * steps.mark;
    const double x = std::floor(m_scale.ToPixel(frame)) + 0.5;
    const bool numbered = frame % steps.number == 0;
    painter.setPen(line);
    painter.drawLine(QPointF(x, m_rows.ruler - (numbered ? Scaled(8) : Scaled(4))),
                     QPointF(x, m_rows.ruler));
    if (!numbered) continue;
    painter.drawLine(QPointF(x, m_rows.ruler), QPointF(x, m_rows.sound));
    painter.setPen(text);
    painter.drawText(QPointF(x + Scaled(3), metrics.ascent() + 1), QString::number(frame));
  }
}

void Timeline::PaintKeys(QPainter& painter, const QWidget& widget) const {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(ToneOf(widget.palette(), Tone::kAccent));
  const double y = 0.5 * (m_rows.ruler + m_rows.keys), size = Scaled(4);
  double before = -1e9;
  for (const double time : m_keys) {
    const double x = ToX(time);
    // A take has a key each frame: one mark a pixel is enough.
    if (x < -size || x > widget.width() + size || x - before < 1.0) continue;
    before = x;
    const QPointF corners[] = {{x, y - size}, {x + size, y}, {x, y + size}, {x - size, y}};
    painter.drawConvexPolygon(corners, 4);
  }
  painter.setRenderHint(QPainter::Antialiasing, false);
}

void Timeline::PaintTakes(QPainter& painter, const QWidget& widget) const {
  const QPalette& palette = widget.palette();
  const double top = m_rows.keys + Scaled(2), room = m_rows.takes - top - Scaled(2);
  const double height = std::floor(room / m_lanes);
  painter.setPen(Qt::NoPen);
  for (const timeline::Bar& bar : m_takes) {
    const double from = std::max(ToX(bar.from), -10.0);
    const double to = std::min(ToX(bar.to), widget.width() + 10.0);
    if (to < from) continue;
    const QRectF place(from, top + bar.lane * height, std::max(2.0, to - from),
                       height - (m_lanes > 1 ? 1 : 0));
    painter.fillRect(place, Faint(ToneOf(palette, Tone::kGood), 0.4));
    if (height < painter.fontMetrics().height() || place.width() < Scaled(40)) continue;
    painter.setPen(ToneOf(palette, Tone::kText));
    const QRectF inside = place.intersected(widget.rect()).adjusted(Scaled(4), 0, -Scaled(4), 0);
    painter.drawText(
        inside, Qt::AlignVCenter | Qt::AlignLeft,
        painter.fontMetrics().elidedText(QString::fromStdString(bar.name), Qt::ElideRight,
                                         static_cast<int>(inside.width())));
    painter.setPen(Qt::NoPen);
  }
  const rws::core::RunState state = m_core.GetRunState();
  if (state != rws::core::RunState::kRecording && state != rws::core::RunState::kResimulating)
    return;
  const double from = ToX(m_core.GetStartTime()), to = ToX(m_core.GetFrameTime());
  painter.fillRect(QRectF(from, top, std::max(0.0, to - from), room),
                   Faint(ToneOf(palette, Tone::kError), 0.55));
}

void Timeline::PaintSound(QPainter& painter, const QWidget& widget) const {
  const auto& kept = m_host.GetScene().GetSound();
  if (!kept || m_rows.sound <= m_rows.takes) return;
  const QPalette& palette = widget.palette();
  const double top = m_rows.takes, height = m_rows.sound - top - 1.0;
  const std::string name = FileNameOf(kept->file);
  const double begin = ToX(m_soundStart);
  if (!m_sound) {
    painter.setPen(ToneOf(palette, Tone::kError));
    painter.drawText(QRectF(std::max(begin, 0.0) + Scaled(4), top, widget.width(), height),
                     Qt::AlignVCenter, QString::fromStdString(m_soundProblem));
    return;
  }
  const double end = ToX(m_soundStart + m_sound->GetSeconds());
  const int first = std::max(0, static_cast<int>(std::floor(begin)));
  const int last = std::min(widget.width() - 1, static_cast<int>(std::ceil(end)));
  if (last < first) return;
  painter.fillRect(QRectF(first, top, last - first + 1, height),
                   Faint(ToneOf(palette, Tone::kAccent), 0.12));
  painter.setPen(Faint(ToneOf(palette, Tone::kAccent), 0.8));
  const double duration = m_host.GetFrameDuration(), middle = top + 0.5 * height;
  for (int x = first; x <= last; ++x) {
    const double from = m_scale.ToFrame(x) * duration - m_soundStart;
    const double to = m_scale.ToFrame(x + 1) * duration - m_soundStart;
    const sound::Sound::Peak peak = m_sound->FindPeak(from, to);
    painter.drawLine(QPointF(x + 0.5, middle - 0.5 * height * peak.high),
                     QPointF(x + 0.5, middle - 0.5 * height * peak.low));
  }
  painter.setPen(ToneOf(palette, Tone::kText));
  painter.drawText(QPointF(first + Scaled(4), top + painter.fontMetrics().ascent()),
                   QString::fromStdString(name));
}

void Timeline::PaintRange(QPainter& painter, const QWidget& widget) const {
  const QPalette& palette = widget.palette();
  const double top = m_rows.sound + Scaled(3), height = m_rows.range - top - Scaled(3);
  painter.fillRect(QRectF(0, top, widget.width(), height), ToneOf(palette, Tone::kHover));
  const double begin = std::clamp(ToX(m_begin), -20.0, widget.width() + 20.0);
  const double end = std::clamp(ToX(m_end), -20.0, widget.width() + 20.0);
  const QColor bar = Faint(ToneOf(palette, Tone::kWeakText), 0.55);
  painter.fillRect(QRectF(begin, top, end - begin, height), bar);
  for (const double x : {begin, end})
    painter.fillRect(QRectF(x - Scaled(2), top - Scaled(2), Scaled(4), height + Scaled(4)),
                     ToneOf(palette, Tone::kText));
}

/// What the next take between the marks will record.
void Timeline::PaintMarks(QPainter& painter, const QWidget& widget) const {
  if (!HasMarks()) return;
  const QColor red = ToneOf(widget.palette(), Tone::kError);
  const double from = ToX(m_markFrom), to = ToX(m_markTo);
  painter.fillRect(QRectF(from, 0, to - from, m_rows.ruler), Faint(red, 0.25));
  for (const double x : {from, to}) painter.fillRect(QRectF(x - 1.0, 0, 2.0, m_rows.sound), red);
}

QRect Timeline::CursorRect(double time) const {
  const int x = static_cast<int>(std::floor(ToX(time)));
  const int room =
      m_widget ? m_widget->fontMetrics().horizontalAdvance(QString::number(GetFrame())) + Scaled(16)
               : 0;
  return QRect(x - room, 0, 2 * room, m_widget ? m_widget->height() : 0);
}

void Timeline::PaintCursor(QPainter& painter, const QWidget& widget) const {
  const QPalette& palette = widget.palette();
  const bool runs = m_core.GetRunState() != rws::core::RunState::kIdle;
  const QColor colour = ToneOf(palette, runs ? Tone::kError : Tone::kAccent);
  const double x = std::floor(ToX(m_host.GetCurrentTime())) + 0.5;
  painter.fillRect(QRectF(x - 1.0, 0, 2.0, m_rows.sound), colour);
  // The number on a field of its own, to the left where there is no room.
  const QString text = QString::number(GetFrame());
  const double room = painter.fontMetrics().horizontalAdvance(text) + Scaled(8);
  const double left = x + room > widget.width() ? x - room : x;
  painter.fillRect(QRectF(left, 0, room, painter.fontMetrics().height() + 2), colour);
  painter.setPen(palette.color(QPalette::Window));
  painter.drawText(QRectF(left, 0, room, painter.fontMetrics().height() + 2), Qt::AlignCenter,
                   text);
}

}  // namespace orv::app
