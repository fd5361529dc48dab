#include "app/plot/PlotLegend.h"

#include <QPainter>

#include "app/plot/PlotStyle.h"

namespace orv::app {

void PlotLegend::Add(const std::string& name, int line, double thickness) {
  const double width = SampleOf(line) + kSpace + TextWidthOf(PlotFont(13), FromUtf8(name));
  if (m_x + width > m_right && m_x > m_left) {
    m_x = m_left;
    ++m_row;
  }
  m_entries.push_back({name, line, thickness, m_x, m_row});
  m_x += width + kGap;
}

void PlotLegend::Draw(QPainter& painter, double y) const {
  for (const Entry& entry : m_entries) {
    const double middle = y + entry.row * kRow;
    const double length = SampleOf(entry.line);
    painter.setPen(PenOf(entry.line, entry.thickness));
    painter.drawLine(QPointF(entry.x, middle), QPointF(entry.x + length, middle));
    painter.setFont(PlotFont(13));
    painter.setPen(kText);
    painter.drawText(QRectF(entry.x + length + kSpace, middle - 10.0, 10.0, 20.0),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, FromUtf8(entry.name));
  }
}

}  // namespace orv::app
