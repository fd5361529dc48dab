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

  void Include(double value);
  void Include(const PlotSpan& other);
  /// Zero length at 0 when nothing was included.
  void Settle();
  double Length() const { return high - low; }
};

/// A rectangle of the ground (m).
struct PlotBounds {
  PlotSpan x, z;

  void Include(double across, double along) {
    x.Include(across);
    z.Include(along);
  }
  /// Makes room around, as a part of the longer side.
  void Widen(double part);
  double LongerSide() const { return std::max(x.Length(), z.Length()); }
};

/// Draws one PlotData, which must outlive it, between two places across the page. Which part of the
/// ground and which values are shown is told by the caller, so that columns can be compared.
class PlotColumn {
 public:
  /// Pixels.
  PlotColumn(const PlotData& data, double left, double width);

  const PlotData& GetData() const { return m_data; }
  double GetLeft() const { return m_left; }
  double GetWidth() const { return m_width; }

  /// What the paths need, with some room.
  PlotBounds Bounds() const;
  /// Smallest and largest value of a panel, and 0 where the panel shows it.
  static PlotSpan ValuesOf(const PlotPanel& panel);

  PlotLegend PathLegend() const;
  PlotLegend PanelLegend(const PlotPanel& panel) const;

  void DrawTopView(QPainter& painter, const QRectF& area, const PlotBounds& bounds);

  /// Height that the scene's side views want (pixels): rows of cells that show as many metres.
  double ViewsHeight() const;
  void DrawViews(QPainter& painter, double top);
  /// `moreLegend` is the height that the legend's rows behind the first have above `area`.
  void DrawPanel(QPainter& painter, const PlotPanel& panel, const QRectF& area,
                 const PlotSpan& values, double moreLegend);

 private:
  struct Axis;

  struct Cells;

  Cells FindCells() const;
  void DrawView(const PlotView& view, const PlotBounds& bounds, const QRectF& area);
  void DrawGrid(const QRectF& view, const Axis& x, const Axis& y, double step);
  void DrawAxisNames(const QRectF& view, const QString& x, const QString& y);
  /// The rest of the line is that of `line`; places are in pixels.
  void DrawLine(const PlotLine& line, const QPolygonF& polygon);
  void DrawMark(const QPointF& mark);
  void DrawScaleBar(const QRectF& view, const Axis& x, const Axis& z, double metres,
                    PlotLabels& labels);
  void DrawPath(const PlotPath& path, std::size_t index, const Axis& x, const Axis& z,
                PlotLabels& labels);
  void DrawTimeMarks(const PlotPath& path, std::size_t index, const QRectF& view, const Axis& x,
                     const Axis& z, PlotLabels& labels);
  void DrawEnds(const PlotPath& path, std::size_t index, const QRectF& view, const Axis& x,
                const Axis& z, PlotLabels& labels);
  void DrawPanelAxes(const QRectF& area, const Axis& t, const Axis& v);
  void DrawCurve(const PlotCurve& curve, int pen, const QRectF& area, const Axis& t, const Axis& v);
  void Write(const QRectF& area, int flags, const QString& what, const QFont& f,
             const QColor& colour);
  void WriteOnPaper(const QRectF& area, const QString& what, const QFont& f, const QColor& colour);

  const PlotData& m_data;
  QPainter* m_painter = nullptr;  ///< while drawing
  double m_left, m_width;
};

}  // namespace orv::app
