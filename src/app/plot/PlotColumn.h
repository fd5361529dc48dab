// One scene of a plot: its top view and its panels below each other.
#pragma once

#include <QRectF>
#include <algorithm>
#include <limits>

#include "app/plot/PlotData.h"
#include "app/plot/PlotLegend.h"

class QColor;
class QFont;
class QPainter;
class QPointF;
class QPolygonF;
class QString;

namespace orv::app {

class PlotLabels;

/// A stretch of values.
struct PlotSpan {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();

  void include(double value);
  void include(const PlotSpan& other);
  /// Zero length at 0 when nothing was included.
  void settle();
  double length() const { return high - low; }
};

/// A rectangle of the ground (m).
struct PlotBounds {
  PlotSpan x, z;

  void include(double across, double along) {
    x.include(across);
    z.include(along);
  }
  /// Makes room around, as a part of the longer side.
  void widen(double part);
  double longerSide() const { return std::max(x.length(), z.length()); }
};

/// Draws one PlotData, which must outlive it, between two places across the page. Which part of the
/// ground and which values are shown is told by the caller, so that columns can be compared.
class PlotColumn {
 public:
  /// Pixels.
  PlotColumn(const PlotData& data, double left, double width);

  const PlotData& data() const { return m_data; }
  double left() const { return m_left; }
  double width() const { return m_width; }

  /// What the paths need, with some room.
  PlotBounds bounds() const;
  /// Smallest and largest value of a panel, and 0 where the panel shows it.
  static PlotSpan valuesOf(const PlotPanel& panel);

  PlotLegend pathLegend() const;
  PlotLegend panelLegend(const PlotPanel& panel) const;

  void drawTopView(QPainter& painter, const QRectF& area, const PlotBounds& bounds);

  /// Height that the scene's side views want (pixels): rows of cells that show as many metres.
  double viewsHeight() const;
  void drawViews(QPainter& painter, double top);
  /// `moreLegend` is the height that the legend's rows behind the first have above `area`.
  void drawPanel(QPainter& painter, const PlotPanel& panel, const QRectF& area,
                 const PlotSpan& values, double moreLegend);

 private:
  struct Axis;

  struct Cells;

  Cells cells() const;
  void drawView(const PlotView& view, const PlotBounds& bounds, const QRectF& area);
  void drawGrid(const QRectF& view, const Axis& x, const Axis& y, double step);
  void drawAxisNames(const QRectF& view, const QString& x, const QString& y);
  /// The rest of the line is that of `line`; places are in pixels.
  void drawLine(const PlotLine& line, const QPolygonF& polygon);
  void drawMark(const QPointF& mark);
  void drawScaleBar(const QRectF& view, const Axis& x, const Axis& z, double metres,
                    PlotLabels& labels);
  void drawPath(const PlotPath& path, std::size_t index, const Axis& x, const Axis& z,
                PlotLabels& labels);
  void drawTimeMarks(const PlotPath& path, std::size_t index, const QRectF& view, const Axis& x,
                     const Axis& z, PlotLabels& labels);
  void drawEnds(const PlotPath& path, std::size_t index, const QRectF& view, const Axis& x,
                const Axis& z, PlotLabels& labels);
  void drawPanelAxes(const QRectF& area, const Axis& t, const Axis& v);
  void drawCurve(const PlotCurve& curve, int pen, const QRectF& area, const Axis& t, const Axis& v);
  void write(const QRectF& area, int flags, const QString& what, const QFont& f,
             const QColor& colour);
  void writeOnPaper(const QRectF& area, const QString& what, const QFont& f, const QColor& colour);

  const PlotData& m_data;
  QPainter* m_painter = nullptr;  ///< while drawing
  double m_left, m_width;
};

}  // namespace orv::app
