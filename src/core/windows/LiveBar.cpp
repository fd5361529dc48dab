#include "core/windows/LiveBar.h"

#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "gui/component/qt/Scale.h"
#include "gui/component/qt/Theme.h"

namespace orv::rws::core::windows {

namespace {

using gui::component::qt::Scaled;
using gui::component::qt::Tone;
using gui::component::qt::ToneOf;

constexpr double kVisible = 0.004;  ///< a smaller change of a bar is not seen

bool LooksSame(const LiveBar::Line& a, const LiveBar::Line& b) {
  return std::abs(a.value - b.value) < kVisible && std::abs(a.low - b.low) < kVisible &&
         std::abs(a.high - b.high) < kVisible;
}

}  // namespace

std::string BarNumber(double value) {
  const QString text = QString::number(value, 'f', 2);
  return (text == QLatin1String("-0.00") ? QStringLiteral("0.00") : text).toStdString();
}

bool LiveBar::Set(const std::array<Line, 2>& lines, const std::string& text) {
  const QString shown = QString::fromStdString(text);
  if (LooksSame(m_lines[0], lines[0]) && LooksSame(m_lines[1], lines[1]) && shown == m_text)
    return false;
  m_lines = lines;
  m_text = shown;
  return true;
}

void LiveBar::Paint(QPainter& painter, QWidget& widget) {
  const QPalette& palette = widget.palette();
  const int text = painter.fontMetrics().width(QStringLiteral("-0.00 \u00b10.00"));
  const int shown = m_count > 1 ? painter.fontMetrics().width(QStringLiteral("-00.00")) : text;
  const double width = widget.width() - shown - Scaled(4);
  const double middle = std::floor(width / 2.0);
  const auto place = [&](double share) {
    return middle + std::clamp(share, -1.0, 1.0) * (middle - 1.0);
  };
  painter.setPen(Qt::NoPen);
  const double thick = Scaled(m_count > 1 ? 6 : 8), gap = Scaled(3);
  double y = (widget.height() - m_count * thick - (m_count - 1) * gap) / 2.0;
  for (int i = 0; i < m_count; ++i, y += thick + gap) {
    const Line& line = m_lines[static_cast<std::size_t>(i)];
    const auto fill = [&](double from, double to, Tone tone) {
      painter.setBrush(ToneOf(palette, tone));
      const double left = std::min(place(from), place(to));
      painter.drawRect(QRectF(left, y, std::abs(place(to) - place(from)), thick));
    };
    fill(-1.0, 1.0, Tone::kField);
    fill(line.low, line.high, Tone::kLine);
    fill(0.0, line.value, i + 1 == m_count ? Tone::kAccent : Tone::kWeakText);
    painter.setBrush(ToneOf(palette, Tone::kText));
    painter.drawRect(QRectF(middle, y - 1.0, 1.0, thick + 2.0));
  }
  painter.setPen(ToneOf(palette, Tone::kText));
  painter.drawText(QRectF(width + Scaled(4), 0, shown, widget.height()),
                   Qt::AlignRight | Qt::AlignVCenter, m_text);
}

}  // namespace orv::rws::core::windows
