#include "app/plot/PlotLabels.h"

#include <cmath>

#include "util/Angles.h"

namespace orv::app {

bool PlotLabels::Place(const QPointF& point, const QSizeF& size, const QRectF& inside,
                       QRectF& found) {
  return PlaceOnce(point, size, inside, true, found) ||
         PlaceOnce(point, size, inside, false, found);
}

bool PlotLabels::PlaceOnce(const QPointF& point, const QSizeF& size, const QRectF& inside,
                           bool offLines, QRectF& found) {
  for (const double distance : {7.0, 14.0, 24.0}) {
    for (int i = 0; i < 8; ++i) {
      const double angle = (i - 1) * 0.25 * util::kPi;
      const QPointF centre(point.x() + std::cos(angle) * (distance + size.width() / 2.0),
                           point.y() + std::sin(angle) * (distance + size.height() / 2.0));
      const QRectF area(centre.x() - size.width() / 2.0, centre.y() - size.height() / 2.0,
                        size.width(), size.height());
      if (!inside.contains(area) || IsTaken(area) || (offLines && IsOverLine(area))) continue;
      Block(area);
      found = area;
      return true;
    }
  }
  return false;
}

bool PlotLabels::IsTaken(const QRectF& area) const {
  for (const QRectF& other : m_taken)
    if (other.intersects(area)) return true;
  return false;
}

bool PlotLabels::IsOverLine(const QRectF& area) const {
  for (const QPolygonF& line : m_lines) {
    for (int i = 1; i < line.size(); ++i)
      if (QRectF(line[i - 1], line[i]).normalized().adjusted(-1.0, -1.0, 1.0, 1.0).intersects(area))
        return true;
  }
  return false;
}

}  // namespace orv::app
