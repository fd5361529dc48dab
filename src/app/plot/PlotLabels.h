// Places of texts in a plot.
#pragma once

#include <QPolygonF>
#include <QRectF>
#include <vector>

namespace orv::app {

/// Places of texts, so that none covers another.
class PlotLabels {
 public:
  void Block(const QRectF& area) { m_taken.push_back(area); }
  /// A line that texts keep off where they can.
  void Avoid(const QPolygonF& line) { m_lines.push_back(line); }

  /// The first of eight places around `point` that is free, at a growing distance; one over a line
  /// only where there is no other. False when none lies `inside`.
  bool Place(const QPointF& point, const QSizeF& size, const QRectF& inside, QRectF& found);

 private:
  bool PlaceOnce(const QPointF& point, const QSizeF& size, const QRectF& inside, bool offLines,
                 QRectF& found);
  bool IsTaken(const QRectF& area) const;
  bool IsOverLine(const QRectF& area) const;

  std::vector<QRectF> m_taken;
  std::vector<QPolygonF> m_lines;
};

}  // namespace orv::app
