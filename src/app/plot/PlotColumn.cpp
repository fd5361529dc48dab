#include "app/plot/PlotColumn.h"

#include <QPainter>
#include <algorithm>
#include <utility>

#include "app/plot/PlotLabels.h"
#include "app/plot/PlotScale.h"
#include "app/plot/PlotStyle.h"

namespace orv::app {

using util::Vector3;

namespace {

QString titleOf(const PlotPanel& panel) {
  return fromUtf8(panel.title) +
         (panel.unit.empty() ? QString() : " (" + fromUtf8(panel.unit) + ")");
}

/// Appends a point unless it adds nothing to see: nearer than a third of a pixel to the last one,
/// or farther along on a level. The last point of all is always kept.
void appendVisible(QPolygonF& line, const QPointF& point, bool isLast) {
  const int n = line.size();
  if (n > 0 && !isLast && (point - line[n - 1]).manhattanLength() < 0.33) return;
  if (n > 1 && line[n - 2].y() == point.y() && line[n - 1].y() == point.y() &&
      (line[n - 1].x() - line[n - 2].x()) * (point.x() - line[n - 1].x()) > 0.0)
    line[n - 1] = point;
  else
    line << point;
}

}  // namespace

void PlotSpan::include(double value) {
  low = std::min(low, value);
  high = std::max(high, value);
}

void PlotSpan::include(const PlotSpan& other) {
  low = std::min(low, other.low);
  high = std::max(high, other.high);
}

void PlotSpan::settle() {
  if (!(low <= high)) low = high = 0.0;
}

/// A map from values to pixels along one axis.
struct PlotColumn::Axis {
  double from = 0.0, to = 1.0;    ///< values
  double start = 0.0, end = 1.0;  ///< pixels

  double at(double value) const { return start + (value - from) / (to - from) * (end - start); }
};

PlotColumn::PlotColumn(const PlotData& data, double left, double width)
    : m_data(data), m_left(left), m_width(width) {}

void PlotBounds::widen(double part) {
  x.settle();
  z.settle();
  const double room = std::max(longerSide(), 1e-3) * part;
  for (PlotSpan* span : {&x, &z}) {
    span->low -= room;
    span->high += room;
  }
}

PlotBounds PlotColumn::bounds() const {
  PlotBounds bounds;
  for (const PlotPath& path : m_data.paths)
    for (const Vector3<double>& p : path.points) bounds.include(p.x, p.z);
  for (const PlotLine& line : m_data.lines)
    if (line.needsRoom())
      for (const Vector3<double>& p : line.points) bounds.include(p.x, p.z);
  bounds.widen(0.06);
  return bounds;
}

PlotSpan PlotColumn::valuesOf(const PlotPanel& panel) {
  PlotSpan span;
  for (const PlotCurve& curve : panel.curves)
    for (const double value : curve.values) span.include(value);
  span.settle();
  if (panel.fromZero) span.include(0.0);
  return span;
}

PlotLegend PlotColumn::pathLegend() const {
  PlotLegend legend(m_left, m_left, m_left + m_width);
  for (std::size_t i = 0; i < m_data.paths.size(); ++i)
    legend.add(m_data.paths[i].name, static_cast<int>(i), m_data.chief[i] ? 3.0 : 1.6);
  for (const PlotLine& line : m_data.lines)
    if (!line.name.empty()) legend.add(line.name, line.pen, line.thickness);
  return legend;
}

PlotLegend PlotColumn::panelLegend(const PlotPanel& panel) const {
  const double title = textWidthOf(plotFont(14, true), titleOf(panel)) + 30.0;
  PlotLegend legend(m_left + title, m_left, m_left + m_width);
  for (std::size_t i = 0; i < panel.curves.size(); ++i)
    legend.add(panel.curves[i].name, panel.colours[i], 2.4);
  return legend;
}

void PlotColumn::write(const QRectF& area, int flags, const QString& what, const QFont& f,
                       const QColor& colour) {
  m_painter->setFont(f);
  m_painter->setPen(colour);
  m_painter->drawText(area, flags | Qt::TextDontClip, what);
}

/// A text with a light ground, readable over lines.
void PlotColumn::writeOnPaper(const QRectF& area, const QString& what, const QFont& f,
                              const QColor& colour) {
  m_painter->setPen(Qt::NoPen);
  m_painter->setBrush(QColor(255, 255, 255, 215));
  m_painter->drawRoundedRect(area, 2.0, 2.0);
  write(area, Qt::AlignCenter, what, f, colour);
}

void PlotColumn::drawTopView(QPainter& painter, const QRectF& view, const PlotBounds& bounds) {
  m_painter = &painter;
  const double scale =
      std::min(view.width() / bounds.x.length(), view.height() / bounds.z.length());
  const double middleX = (bounds.x.low + bounds.x.high) / 2.0;
  const double middleZ = (bounds.z.low + bounds.z.high) / 2.0;
  const double halfX = view.width() / 2.0 / scale;
  const double halfZ = view.height() / 2.0 / scale;
  const Axis x{middleX - halfX, middleX + halfX, view.left(), view.right()};
  const Axis z{middleZ - halfZ, middleZ + halfZ, view.top(), view.bottom()};
  const double step = roundStep(std::min(110.0, view.width() / 5.0) / scale, 1);

  drawGrid(view, x, z, step);
  drawAxisNames(view, QStringLiteral("x (m) \u2192"), QStringLiteral("z (m) \u2193"));
  PlotLabels labels;
  drawScaleBar(view, x, z, step, labels);
  m_painter->save();
  m_painter->setClipRect(view);
  for (const PlotLine& line : m_data.lines) {
    QPolygonF polygon;
    for (const Vector3<double>& p : line.points)
      appendVisible(polygon, QPointF(x.at(p.x), z.at(p.z)), &p == &line.points.back());
    drawLine(line, polygon);
  }
  for (const Vector3<double>& p : m_data.marks) drawMark(QPointF(x.at(p.x), z.at(p.z)));
  // The thin line of what is followed lies on the broad one of what follows it.
  for (const bool chief : {true, false})
    for (std::size_t i = 0; i < m_data.paths.size(); ++i)
      if (m_data.chief[i] == chief) drawPath(m_data.paths[i], i, x, z, labels);
  m_painter->restore();
  for (std::size_t i = 0; i < m_data.paths.size(); ++i)
    if (m_data.chief[i]) drawEnds(m_data.paths[i], i, view, x, z, labels);
  for (std::size_t i = 0; i < m_data.paths.size(); ++i)
    if (m_data.chief[i]) drawTimeMarks(m_data.paths[i], i, view, x, z, labels);
}

void PlotColumn::drawGrid(const QRectF& view, const Axis& x, const Axis& y, double step) {
  m_painter->fillRect(view, kGround);
  const QFont f = plotFont(12);
  for (const double value : ticks(x.from, x.to, step)) {
    const double at = x.at(value);
    m_painter->setPen(QPen(kGrid, 1.0));
    m_painter->drawLine(QPointF(at, view.top()), QPointF(at, view.bottom()));
    write(QRectF(at - 50.0, view.bottom() + 4.0, 100.0, 16.0), Qt::AlignCenter,
          tickText(value, step), f, kFaint);
  }
  for (const double value : ticks(y.from, y.to, step)) {
    const double at = y.at(value);
    m_painter->setPen(QPen(kGrid, 1.0));
    m_painter->drawLine(QPointF(view.left(), at), QPointF(view.right(), at));
    write(QRectF(view.left() - 76.0, at - 8.0, 70.0, 16.0), Qt::AlignRight | Qt::AlignVCenter,
          tickText(value, step), f, kFaint);
  }
  m_painter->setPen(QPen(kFrame, 1.0));
  m_painter->setBrush(Qt::NoBrush);
  m_painter->drawRect(view);
}

void PlotColumn::drawAxisNames(const QRectF& view, const QString& x, const QString& y) {
  const QFont f = plotFont(12);
  write(QRectF(view.right() - 200.0, view.bottom() + 20.0, 200.0, 16.0), Qt::AlignRight, x, f,
        kText);
  write(QRectF(view.left() - 76.0, view.top() - 24.0, 72.0, 16.0), Qt::AlignRight, y, f, kText);
}

void PlotColumn::drawLine(const PlotLine& line, const QPolygonF& polygon) {
  m_painter->setPen(penOf(line.pen, line.thickness));
  m_painter->setBrush(Qt::NoBrush);
  if (line.closed)
    m_painter->drawPolygon(polygon);
  else
    m_painter->drawPolyline(polygon);
}

void PlotColumn::drawMark(const QPointF& mark) {
  m_painter->setPen(QPen(kText, 0.9));
  m_painter->setBrush(kPaper);
  m_painter->drawEllipse(mark, 2.0, 2.0);
}

/// In the first corner of the view that no path crosses, from the lower right on.
void PlotColumn::drawScaleBar(const QRectF& view, const Axis& x, const Axis& z, double metres,
                              PlotLabels& labels) {
  const double width = x.at(metres) - x.at(0.0);
  const auto at = [&](bool right, bool lower) {
    return QPointF(right ? view.right() - 18.0 - width : view.left() + 18.0,
                   lower ? view.bottom() - 18.0 : view.top() + 30.0);
  };
  const auto areaOf = [&](const QPointF& end) {
    return QRectF(end.x(), end.y() - 24.0, width, 16.0).adjusted(-8.0, -4.0, 8.0, 26.0);
  };
  const auto isFree = [&](const QRectF& area) {
    for (const PlotPath& path : m_data.paths)
      for (const Vector3<double>& p : path.points)
        if (area.contains(QPointF(x.at(p.x), z.at(p.z)))) return false;
    return true;
  };
  QPointF end = at(true, true);
  for (const auto& [right, lower] :
       {std::pair{true, true}, {false, true}, {true, false}, {false, false}}) {
    if (!isFree(areaOf(at(right, lower)))) continue;
    end = at(right, lower);
    break;
  }
  m_painter->setPen(QPen(kText, 2.0, Qt::SolidLine, Qt::FlatCap));
  m_painter->drawLine(end, end + QPointF(width, 0.0));
  for (const double mark : {0.0, width})
    m_painter->drawLine(end + QPointF(mark, -5.0), end + QPointF(mark, 5.0));
  write(QRectF(end.x(), end.y() - 24.0, width, 16.0), Qt::AlignCenter,
        tickText(metres, metres) + QStringLiteral(" m"), plotFont(12), kText);
  labels.block(areaOf(end));
}

void PlotColumn::drawPath(const PlotPath& path, std::size_t index, const Axis& x, const Axis& z,
                          PlotLabels& labels) {
  if (path.points.empty()) return;
  QPolygonF line;
  for (std::size_t i = 0; i < path.points.size(); ++i)
    appendVisible(line, QPointF(x.at(path.points[i].x), z.at(path.points[i].z)),
                  i + 1 == path.points.size());
  labels.avoid(line);
  const double thickness = m_data.chief[index] ? 3.2 : 1.1;
  m_painter->setBrush(Qt::NoBrush);
  m_painter->setPen(penOf(static_cast<int>(index), thickness));
  m_painter->drawPolyline(line);
}

void PlotColumn::drawTimeMarks(const PlotPath& path, std::size_t index, const QRectF& view,
                               const Axis& x, const Axis& z, PlotLabels& labels) {
  const double step = roundStep(m_data.end - m_data.start, 10);
  const QFont f = plotFont(12);
  for (const double time : ticks(m_data.start, m_data.end, step)) {
    const auto found = std::lower_bound(m_data.times.begin(), m_data.times.end(), time - 1e-6);
    if (found == m_data.times.end()) continue;
    const auto i = static_cast<std::size_t>(found - m_data.times.begin());
    if (i == 0 || i + 1 >= path.points.size()) continue;  // the ends have marks of their own
    const QPointF p(x.at(path.points[i].x), z.at(path.points[i].z));
    m_painter->setPen(QPen(colourOf(index), 1.6));
    m_painter->setBrush(kPaper);
    m_painter->drawEllipse(p, 3.2, 3.2);
    const QString what = tickText(time, step) + QStringLiteral(" s");
    QRectF area;
    if (labels.place(p, QSizeF(textWidthOf(f, what) + 6.0, 16.0), view, area))
      writeOnPaper(area, what, f, kText);
  }
}

void PlotColumn::drawEnds(const PlotPath& path, std::size_t index, const QRectF& view,
                          const Axis& x, const Axis& z, PlotLabels& labels) {
  if (path.points.empty()) return;
  const QFont f = plotFont(12, true);
  const struct {
    const Vector3<double>& point;
    QString name;
    bool start;
  } ends[] = {{path.points.front(), QStringLiteral("start"), true},
              {path.points.back(), QStringLiteral("end"), false}};
  for (const auto& end : ends) {
    const QPointF p(x.at(end.point.x), z.at(end.point.z));
    m_painter->setPen(QPen(kPaper, 1.5));
    m_painter->setBrush(colourOf(index));
    if (end.start)
      m_painter->drawEllipse(p, 6.0, 6.0);
    else
      m_painter->drawRect(QRectF(p.x() - 5.5, p.y() - 5.5, 11.0, 11.0));
    labels.block(QRectF(p.x() - 6.0, p.y() - 6.0, 12.0, 12.0));
    QRectF area;
    if (labels.place(p, QSizeF(textWidthOf(f, end.name) + 8.0, 16.0), view, area))
      writeOnPaper(area, end.name, f, colourOf(index).darker(120));
  }
}

// --- side views ---

namespace {

/// What a side view needs, with some room: `x` is along its axis, `z` is the height.
PlotBounds boundsOf(const PlotView& view) {
  PlotBounds bounds;
  for (const PlotLine& line : view.lines)
    if (line.needsRoom())
      for (const Vector3<double>& p : line.points) bounds.include(p.dot(view.across), p.y);
  bounds.widen(0.05);
  return bounds;
}

}  // namespace

/// Where the side views stand: all of one size and one scale.
struct PlotColumn::Cells {
  static constexpr double kGap = 92.0;    ///< between two in a row, with the numbers of the right
  static constexpr double kTitle = 40.0;  ///< above each
  static constexpr double kFoot = 36.0;   ///< below each: the axis

  std::vector<PlotBounds> bounds;
  std::size_t perRow = 1;
  double width = 0.0, height = 0.0;  ///< pixels
};

PlotColumn::Cells PlotColumn::cells() const {
  constexpr double kLeastWidth = 400.0, kMostHeight = 420.0;  // pixels
  Cells cells;
  double x = 0.0, z = 0.0;
  for (const PlotView& view : m_data.views) {
    cells.bounds.push_back(boundsOf(view));
    x = std::max(x, cells.bounds.back().x.length());
    z = std::max(z, cells.bounds.back().z.length());
  }
  if (cells.bounds.size() > 1 && m_width >= 2.0 * kLeastWidth + Cells::kGap) cells.perRow = 2;
  const double gaps = Cells::kGap * static_cast<double>(cells.perRow - 1);
  cells.width = (m_width - gaps) / static_cast<double>(cells.perRow);
  cells.height = std::min(cells.width * z / std::max(x, 1e-9), kMostHeight);
  for (PlotBounds& b : cells.bounds) {
    const double middleX = (b.x.low + b.x.high) / 2.0, middleZ = (b.z.low + b.z.high) / 2.0;
    const double scale = std::max(x / cells.width, z / cells.height);  // metres of a pixel
    const double halfX = cells.width / 2.0 * scale, halfZ = cells.height / 2.0 * scale;
    b = {{middleX - halfX, middleX + halfX}, {middleZ - halfZ, middleZ + halfZ}};
  }
  return cells;
}

double PlotColumn::viewsHeight() const {
  if (m_data.views.empty()) return 0.0;
  const Cells all = cells();
  const std::size_t rows = (m_data.views.size() + all.perRow - 1) / all.perRow;
  return static_cast<double>(rows) * (Cells::kTitle + all.height + Cells::kFoot);
}

void PlotColumn::drawViews(QPainter& painter, double top) {
  if (m_data.views.empty()) return;
  m_painter = &painter;
  const Cells all = cells();
  for (std::size_t i = 0; i < m_data.views.size(); ++i) {
    const auto column = static_cast<double>(i % all.perRow);
    const auto row = static_cast<double>(i / all.perRow);
    drawView(m_data.views[i], all.bounds[i],
             QRectF(m_left + column * (all.width + Cells::kGap),
                    top + row * (Cells::kTitle + all.height + Cells::kFoot) + Cells::kTitle,
                    all.width, all.height));
  }
}

void PlotColumn::drawView(const PlotView& view, const PlotBounds& bounds, const QRectF& area) {
  const Axis x{bounds.x.low, bounds.x.high, area.left(), area.right()};
  const Axis y{bounds.z.low, bounds.z.high, area.bottom(), area.top()};
  const auto at = [&](const Vector3<double>& p) {
    return QPointF(x.at(p.dot(view.across)), y.at(p.y));
  };
  write(QRectF(area.left() + 10.0, area.top() - 26.0, area.width(), 20.0),
        Qt::AlignLeft | Qt::AlignVCenter, fromUtf8(view.title), plotFont(14, true), kText);
  drawGrid(area, x, y, roundStep(80.0 * bounds.x.length() / area.width(), 1));
  drawAxisNames(area, QStringLiteral("along (m) \u2192"), QStringLiteral("y (m) \u2191"));
  m_painter->save();
  m_painter->setClipRect(area);
  for (const PlotLine& line : view.lines) {
    QPolygonF polygon;
    for (const Vector3<double>& p : line.points)
      appendVisible(polygon, at(p), &p == &line.points.back());
    if (polygon.boundingRect().adjusted(-1.0, -1.0, 1.0, 1.0).intersects(area))
      drawLine(line, polygon);
  }
  for (const Vector3<double>& p : view.marks) drawMark(at(p));
  m_painter->restore();
}

// --- curves ---

void PlotColumn::drawPanel(QPainter& painter, const PlotPanel& panel, const QRectF& area,
                           const PlotSpan& values, double moreLegend) {
  m_painter = &painter;
  const double low = values.low;
  // Below a billionth of a unit there is only rounding to see.
  const double high = values.length() < 1e-9 ? low + 1.0 : values.high;
  const double room = (high - low) * 0.06;
  const double end = m_data.end > m_data.start ? m_data.end : m_data.start + 1.0;
  const Axis t{m_data.start, end, area.left(), area.right()};
  const Axis v{low == 0.0 ? 0.0 : low - room, high + room, area.bottom(), area.top()};

  const double titleY = area.top() - 18.0 - moreLegend;
  write(QRectF(area.left(), titleY - 10.0, 300.0, 20.0), Qt::AlignLeft | Qt::AlignVCenter,
        titleOf(panel), plotFont(14, true), kText);
  panelLegend(panel).draw(painter, titleY);
  drawPanelAxes(area, t, v);
  for (std::size_t i = 0; i < panel.curves.size(); ++i)
    drawCurve(panel.curves[i], panel.colours[i], area, t, v);
}

void PlotColumn::drawPanelAxes(const QRectF& area, const Axis& t, const Axis& v) {
  m_painter->fillRect(area, kGround);
  const QFont f = plotFont(12);
  const double timeStep = roundStep(t.to - t.from, static_cast<int>(area.width() / 75.0));
  for (const double time : ticks(t.from, t.to, timeStep)) {
    const double at = t.at(time);
    m_painter->setPen(QPen(kGrid, 1.0));
    m_painter->drawLine(QPointF(at, area.top()), QPointF(at, area.bottom()));
    write(QRectF(at - 40.0, area.bottom() + 4.0, 80.0, 16.0), Qt::AlignCenter,
          tickText(time, timeStep) + QStringLiteral(" s"), f, kFaint);
  }
  const double step = roundStep(v.to - v.from, 5);
  for (const double value : ticks(v.from, v.to, step)) {
    const double at = v.at(value);
    m_painter->setPen(QPen(value == 0.0 ? kFrame : kGrid, 1.0));
    m_painter->drawLine(QPointF(area.left(), at), QPointF(area.right(), at));
    write(QRectF(area.left() - 76.0, at - 8.0, 70.0, 16.0), Qt::AlignRight | Qt::AlignVCenter,
          tickText(value, step), f, kFaint);
  }
  m_painter->setPen(QPen(kFrame, 1.0));
  m_painter->setBrush(Qt::NoBrush);
  m_painter->drawRect(area);
}

void PlotColumn::drawCurve(const PlotCurve& curve, int pen, const QRectF& area, const Axis& t,
                           const Axis& v) {
  QPolygonF line;
  for (std::size_t i = 0; i < curve.times.size(); ++i) {
    if (curve.times[i] < t.from - 1e-9 || curve.times[i] > t.to + 1e-9) continue;
    appendVisible(line, QPointF(t.at(curve.times[i]), v.at(curve.values[i])),
                  i + 1 == curve.times.size());
  }
  m_painter->save();
  m_painter->setClipRect(area);
  m_painter->setPen(penOf(pen, 1.6));
  m_painter->setBrush(Qt::NoBrush);
  m_painter->drawPolyline(line);
  m_painter->restore();
}

}  // namespace orv::app
