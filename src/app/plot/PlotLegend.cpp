#include "app/plot/PlotLegend.h"

#include <QPainter>

#include "app/plot/PlotStyle.h"

namespace orv::app {

void PlotLegend::add(const std::string& name, int line, double thickness) {
  const double width = sampleOf(line) + kSpace + textWidthOf(plotFont(13), fromUtf8(name));
  if (m_x + width > m_right && m_x > m_left) {
    m_x = m_left;
    ++m_row;
  }
  m_entries.push_back({name, line, thickness, m_x, m_row});
  m_x += width + kGap;
}

void PlotLegend::draw(QPainter& painter, double y) const {
  for (const Entry& entry : m_entries) {
    const double middle = y + entry.row * kRow;
    const double length = sampleOf(entry.line);
    painter.setPen(penOf(entry.line, entry.thickness));
    painter.drawLine(QPointF(entry.x, middle), QPointF(entry.x + length, middle));
    painter.setFont(plotFont(13));
    painter.setPen(kText);
    painter.drawText(QRectF(entry.x + length + kSpace, middle - 10.0, 10.0, 20.0),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, fromUtf8(entry.name));
  }
}

}  // namespace orv::app
