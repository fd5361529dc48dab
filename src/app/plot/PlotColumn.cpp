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

QString TitleOf(const PlotPanel& panel) {
  return FromUtf8(panel.title) +
         (panel.unit.empty() ? QString() : " (" + FromUtf8(panel.unit) + ")");
}

/// Appends a point unless it adds nothing to see: nearer than a third of a pixel to the last one,
/// or farther along on a level. The last point of all is always kept.
void AppendVisible(QPolygonF& line, const QPointF& point, bool isLast) {
  const int n = line.size();
  if (n > 0 && !isLast && (point - line[n - 1]).manhattanLength() < 0.33) return;
  if (n > 1 && line[n - 2].y() == point.y() && line[n - 1].y() == point.y() &&
      (line[n - 1].x() - line[n - 2].x()) * (point.x() - line[n - 1].x()) > 0.0)
    line[n - 1] = point;
  else
    line << point;
}

}  // namespace

void PlotSpan::Include(double value) {
  low = std::min(low, value);
  high = std::max(high, value);
}

void PlotSpan::Include(const PlotSpan& other) {
  low = std::min(low, other.low);
  high = std::max(high, other.high);
}

void PlotSpan::Settle() {
  if (!(low <= high)) low = high = 0.0;
}

/// A map from values to pixels along one axis.
struct PlotColumn::Axis {
  double from = 0.0, to = 1.0;    ///< values
  double start = 0.0, end = 1.0;  ///< pixels

  double At(double value) const { return start + (value - from) / (to - from) * (end - start); }
};

PlotColumn::PlotColumn(const PlotData& data, double left, double width)
    : m_data(data), m_left(left), m_width(width) {}

void PlotBounds::Widen(double part) {
  x.Settle();
  z.Settle();
  const double room = std::max(LongerSide(), 1e-3) * part;
  for (PlotSpan* span : {&x, &z}) {
    span->low -= room;
    span->high += room;
  }
}

PlotBounds PlotColumn::Bounds() const {
  PlotBounds bounds;
  for (const PlotPath& path : m_data.paths)
    for (const Vector3<double>& p : path.points) bounds.Include(p.x, p.z);
  for (const PlotLine& line : m_data.lines)
    if (line.NeedsRoom())
      for (const Vector3<double>& p : line.points) bounds.Include(p.x, p.z);
  bounds.Widen(0.06);
  return bounds;
}

PlotSpan PlotColumn::ValuesOf(const PlotPanel& panel) {
  PlotSpan span;
  for (const PlotCurve& curve : panel.curves)
    for (const double value : curve.values) span.Include(value);
  span.Settle();
  if (panel.fromZero) span.Include(0.0);
  return span;
}

PlotLegend PlotColumn::PathLegend() const {
  PlotLegend legend(m_left, m_left, m_left + m_width);
  for (std::size_t i = 0; i < m_data.paths.size(); ++i)
    legend.Add(m_data.paths[i].name, static_cast<int>(i), m_data.chief[i] ? 3.0 : 1.6);
  for (const PlotLine& line : m_data.lines)
    if (!line.name.empty()) legend.Add(line.name, line.pen, line.thickness);
  return legend;
}

PlotLegend PlotColumn::PanelLegend(const PlotPanel& panel) const {
  const double title = TextWidthOf(PlotFont(14, true), TitleOf(panel)) + 30.0;
  PlotLegend legend(m_left + title, m_left, m_left + m_width);
  for (std::size_t i = 0; i < panel.curves.size(); ++i)
    legend.Add(panel.curves[i].name, panel.colours[i], 2.4);
  return legend;
}

void PlotColumn::Write(const QRectF& area, int flags, const QString& what, const QFont& f,
                       const QColor& colour) {
  m_painter->setFont(f);
  m_painter->setPen(colour);
  m_painter->drawText(area, flags | Qt::TextDontClip, what);
}

/// A text with a light ground, readable over lines.
void PlotColumn::WriteOnPaper(const QRectF& area, const QString& what, const QFont& f,
                              const QColor& colour) {
  m_painter->setPen(Qt::NoPen);
  m_painter->setBrush(QColor(255, 255, 255, 215));
  m_painter->drawRoundedRect(area, 2.0, 2.0);
  Write(area, Qt::AlignCenter, what, f, colour);
}

void PlotColumn::DrawTopView(QPainter& painter, const QRectF& view, const PlotBounds& bounds) {
  m_painter = &painter;
  const double scale =
      std::min(view.width() / bounds.x.Length(), view.height() / bounds.z.Length());
  const double middleX = (bounds.x.low + bounds.x.high) / 2.0;
  const double middleZ = (bounds.z.low + bounds.z.high) / 2.0;
  const double halfX = view.width() / 2.0 / scale;
  const double halfZ = view.height() / 2.0 / scale;
  const Axis x{middleX - halfX, middleX + halfX, view.left(), view.right()};
  const Axis z{middleZ - halfZ, middleZ + halfZ, view.top(), view.bottom()};
  const double step = RoundStep(std::min(110.0, view.width() / 5.0) / scale, 1);

  DrawGrid(view, x, z, step);
  DrawAxisNames(view, QStringLiteral("x (m) \u2192"), QStringLiteral("z (m) \u2193"));
  PlotLabels labels;
  DrawScaleBar(view, x, z, step, labels);
  m_painter->save();
  m_painter->setClipRect(view);
  for (const PlotLine& line : m_data.lines) {
    QPolygonF polygon;
    for (const Vector3<double>& p : line.points)
      AppendVisible(polygon, QPointF(x.At(p.x), z.At(p.z)), &p == &line.points.back());
    DrawLine(line, polygon);
  }
  for (const Vector3<double>& p : m_data.marks) DrawMark(QPointF(x.At(p.x), z.At(p.z)));
  // The thin line of what is followed lies on the broad one of what follows it.
  for (const bool chief : {true, false})
    for (std::size_t i = 0; i < m_data.paths.size(); ++i)
      if (m_data.chief[i] == chief) DrawPath(m_data.paths[i], i, x, z, labels);
  m_painter->restore();
  for (std::size_t i = 0; i < m_data.paths.size(); ++i)
    if (m_data.chief[i]) DrawEnds(m_data.paths[i], i, view, x, z, labels);
  for (std::size_t i = 0; i < m_data.paths.size(); ++i)
    if (m_data.chief[i]) DrawTimeMarks(m_data.paths[i], i, view, x, z, labels);
}

void PlotColumn::DrawGrid(const QRectF& view, const Axis& x, const Axis& y, double step) {
  m_painter->fillRect(view, kGround);
  const QFont f = PlotFont(12);
  for (const double value : Ticks(x.from, x.to, step)) {
    const double at = x.At(value);
    m_painter->setPen(QPen(kGrid, 1.0));
    m_painter->drawLine(QPointF(at, view.top()), QPointF(at, view.bottom()));
    Write(QRectF(at - 50.0, view.bottom() + 4.0, 100.0, 16.0), Qt::AlignCenter,
          TickText(value, step), f, kFaint);
  }
  for (const double value : Ticks(y.from, y.to, step)) {
    const double at = y.At(value);
    m_painter->setPen(QPen(kGrid, 1.0));
    m_painter->drawLine(QPointF(view.left(), at), QPointF(view.right(), at));
    Write(QRectF(view.left() - 76.0, at - 8.0, 70.0, 16.0), Qt::AlignRight | Qt::AlignVCenter,
          TickText(value, step), f, kFaint);
  }
  m_painter->setPen(QPen(kFrame, 1.0));
  m_painter->setBrush(Qt::NoBrush);
  m_painter->drawRect(view);
}

void PlotColumn::DrawAxisNames(const QRectF& view, const QString& x, const QString& y) {
  const QFont f = PlotFont(12);
  Write(QRectF(view.right() - 200.0, view.bottom() + 20.0, 200.0, 16.0), Qt::AlignRight, x, f,
        kText);
  Write(QRectF(view.left() - 76.0, view.top() - 24.0, 72.0, 16.0), Qt::AlignRight, y, f, kText);
}

void PlotColumn::DrawLine(const PlotLine& line, const QPolygonF& polygon) {
  m_painter->setPen(PenOf(line.pen, line.thickness));
  m_painter->setBrush(Qt::NoBrush);
  if (line.closed)
    m_painter->drawPolygon(polygon);
  else
    m_painter->drawPolyline(polygon);
}

void PlotColumn::DrawMark(const QPointF& mark) {
  m_painter->setPen(QPen(kText, 0.9));
  m_painter->setBrush(kPaper);
  m_painter->drawEllipse(mark, 2.0, 2.0);
}

/// In the first corner of the view that no path crosses, from the lower right on.
void PlotColumn::DrawScaleBar(const QRectF& view, const Axis& x, const Axis& z, double metres,
                              PlotLabels& labels) {
  const double width = x.At(metres) - x.At(0.0);
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
        if (area.contains(QPointF(x.At(p.x), z.At(p.z)))) return false;
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
  Write(QRectF(end.x(), end.y() - 24.0, width, 16.0), Qt::AlignCenter,
        TickText(metres, metres) + QStringLiteral(" m"), PlotFont(12), kText);
  labels.Block(areaOf(end));
}

void PlotColumn::DrawPath(const PlotPath& path, std::size_t index, const Axis& x, const Axis& z,
                          PlotLabels& labels) {
  if (path.points.empty()) return;
  QPolygonF line;
  for (std::size_t i = 0; i < path.points.size(); ++i)
    AppendVisible(line, QPointF(x.At(path.points[i].x), z.At(path.points[i].z)),
                  i + 1 == path.points.size());
  labels.Avoid(line);
  const double thickness = m_data.chief[index] ? 3.2 : 1.1;
  m_painter->setBrush(Qt::NoBrush);
  m_painter->setPen(PenOf(static_cast<int>(index), thickness));
  m_painter->drawPolyline(line);
}

void PlotColumn::DrawTimeMarks(const PlotPath& path, std::size_t index, const QRectF& view,
                               const Axis& x, const Axis& z, PlotLabels& labels) {
  const double step = RoundStep(m_data.end - m_data.start, 10);
  const QFont f = PlotFont(12);
  for (const double time : Ticks(m_data.start, m_data.end, step)) {
    const auto found = std::lower_bound(m_data.times.begin(), m_data.times.end(), time - 1e-6);
    if (found == m_data.times.end()) continue;
    const auto i = static_cast<std::size_t>(found - m_data.times.begin());
    if (i == 0 || i + 1 >= path.points.size()) continue;  // the ends have marks of their own
    const QPointF p(x.At(path.points[i].x), z.At(path.points[i].z));
    m_painter->setPen(QPen(ColourOf(index), 1.6));
    m_painter->setBrush(kPaper);
    m_painter->drawEllipse(p, 3.2, 3.2);
    const QString what = TickText(time, step) + QStringLiteral(" s");
    QRectF area;
    if (labels.Place(p, QSizeF(TextWidthOf(f, what) + 6.0, 16.0), view, area))
      WriteOnPaper(area, what, f, kText);
  }
}

void PlotColumn::DrawEnds(const PlotPath& path, std::size_t index, const QRectF& view,
                          const Axis& x, const Axis& z, PlotLabels& labels) {
  if (path.points.empty()) return;
  const QFont f = PlotFont(12, true);
  const struct {
    const Vector3<double>& point;
    QString name;
    bool start;
  } ends[] = {{path.points.front(), QStringLiteral("start"), true},
              {path.points.back(), QStringLiteral("end"), false}};
  for (const auto& end : ends) {
    const QPointF p(x.At(end.point.x), z.At(end.point.z));
    m_painter->setPen(QPen(kPaper, 1.5));
    m_painter->setBrush(ColourOf(index));
    if (end.start)
      m_painter->drawEllipse(p, 6.0, 6.0);
    else
      m_painter->drawRect(QRectF(p.x() - 5.5, p.y() - 5.5, 11.0, 11.0));
    labels.Block(QRectF(p.x() - 6.0, p.y() - 6.0, 12.0, 12.0));
    QRectF area;
    if (labels.Place(p, QSizeF(TextWidthOf(f, end.name) + 8.0, 16.0), view, area))
      WriteOnPaper(area, end.name, f, ColourOf(index).darker(120));
  }
}

// --- side views ---

namespace {

/// What a side view needs, with some room: `x` is along its axis, `z` is the height.
PlotBounds BoundsOf(const PlotView& view) {
  PlotBounds bounds;
  for (const PlotLine& line : view.lines)
    if (line.NeedsRoom())
      for (const Vector3<double>& p : line.points) bounds.Include(p.dot(view.across), p.y);
  bounds.Widen(0.05);
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

PlotColumn::Cells PlotColumn::FindCells() const {
  constexpr double kLeastWidth = 400.0, kMostHeight = 420.0;  // pixels
  Cells cells;
  double x = 0.0, z = 0.0;
  for (const PlotView& view : m_data.views) {
    cells.bounds.push_back(BoundsOf(view));
    x = std::max(x, cells.bounds.back().x.Length());
    z = std::max(z, cells.bounds.back().z.Length());
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

double PlotColumn::ViewsHeight() const {
  if (m_data.views.empty()) return 0.0;
  const Cells all = FindCells();
  const std::size_t rows = (m_data.views.size() + all.perRow - 1) / all.perRow;
  return static_cast<double>(rows) * (Cells::kTitle + all.height + Cells::kFoot);
}

void PlotColumn::DrawViews(QPainter& painter, double top) {
  if (m_data.views.empty()) return;
  m_painter = &painter;
  const Cells all = FindCells();
  for (std::size_t i = 0; i < m_data.views.size(); ++i) {
    const auto column = static_cast<double>(i % all.perRow);
    const auto row = static_cast<double>(i / all.perRow);
    DrawView(m_data.views[i], all.bounds[i],
             QRectF(m_left + column * (all.width + Cells::kGap),
                    top + row * (Cells::kTitle + all.height + Cells::kFoot) + Cells::kTitle,
                    all.width, all.height));
  }
}

void PlotColumn::DrawView(const PlotView& view, const PlotBounds& bounds, const QRectF& area) {
  const Axis x{bounds.x.low, bounds.x.high, area.left(), area.right()};
  const Axis y{bounds.z.low, bounds.z.high, area.bottom(), area.top()};
  const auto at = [&](const Vector3<double>& p) {
    return QPointF(x.At(p.dot(view.across)), y.At(p.y));
  };
  Write(QRectF(area.left() + 10.0, area.top() - 26.0, area.width(), 20.0),
        Qt::AlignLeft | Qt::AlignVCenter, FromUtf8(view.title), PlotFont(14, true), kText);
  DrawGrid(area, x, y, RoundStep(80.0 * bounds.x.Length() / area.width(), 1));
  DrawAxisNames(area, QStringLiteral("along (m) \u2192"), QStringLiteral("y (m) \u2191"));
  m_painter->save();
  m_painter->setClipRect(area);
  for (const PlotLine& line : view.lines) {
    QPolygonF polygon;
    for (const Vector3<double>& p : line.points)
      AppendVisible(polygon, at(p), &p == &line.points.back());
    if (polygon.boundingRect().adjusted(-1.0, -1.0, 1.0, 1.0).intersects(area))
      DrawLine(line, polygon);
  }
  for (const Vector3<double>& p : view.marks) DrawMark(at(p));
  m_painter->restore();
}

// --- curves ---

void PlotColumn::DrawPanel(QPainter& painter, const PlotPanel& panel, const QRectF& area,
                           const PlotSpan& values, double moreLegend) {
  m_painter = &painter;
  const double low = values.low;
  // Below a billionth of a unit there is only rounding to see.
  const double high = values.Length() < 1e-9 ? low + 1.0 : values.high;
  const double room = (high - low) * 0.06;
  const double end = m_data.end > m_data.start ? m_data.end : m_data.start + 1.0;
  const Axis t{m_data.start, end, area.left(), area.right()};
  const Axis v{low == 0.0 ? 0.0 : low - room, high + room, area.bottom(), area.top()};

  const double titleY = area.top() - 18.0 - moreLegend;
  Write(QRectF(area.left(), titleY - 10.0, 300.0, 20.0), Qt::AlignLeft | Qt::AlignVCenter,
        TitleOf(panel), PlotFont(14, true), kText);
  PanelLegend(panel).Draw(painter, titleY);
  DrawPanelAxes(area, t, v);
  for (std::size_t i = 0; i < panel.curves.size(); ++i)
    DrawCurve(panel.curves[i], panel.colours[i], area, t, v);
}

void PlotColumn::DrawPanelAxes(const QRectF& area, const Axis& t, const Axis& v) {
  m_painter->fillRect(area, kGround);
  const QFont f = PlotFont(12);
  const double timeStep = RoundStep(t.to - t.from, static_cast<int>(area.width() / 75.0));
  for (const double time : Ticks(t.from, t.to, timeStep)) {
    const double at = t.At(time);
    m_painter->setPen(QPen(kGrid, 1.0));
    m_painter->drawLine(QPointF(at, area.top()), QPointF(at, area.bottom()));
    Write(QRectF(at - 40.0, area.bottom() + 4.0, 80.0, 16.0), Qt::AlignCenter,
          TickText(time, timeStep) + QStringLiteral(" s"), f, kFaint);
  }
  const double step = RoundStep(v.to - v.from, 5);
  for (const double value : Ticks(v.from, v.to, step)) {
    const double at = v.At(value);
    m_painter->setPen(QPen(value == 0.0 ? kFrame : kGrid, 1.0));
    m_painter->drawLine(QPointF(area.left(), at), QPointF(area.right(), at));
    Write(QRectF(area.left() - 76.0, at - 8.0, 70.0, 16.0), Qt::AlignRight | Qt::AlignVCenter,
          TickText(value, step), f, kFaint);
  }
  m_painter->setPen(QPen(kFrame, 1.0));
  m_painter->setBrush(Qt::NoBrush);
  m_painter->drawRect(area);
}

void PlotColumn::DrawCurve(const PlotCurve& curve, int pen, const QRectF& area, const Axis& t,
                           const Axis& v) {
  QPolygonF line;
  for (std::size_t i = 0; i < curve.times.size(); ++i) {
    if (curve.times[i] < t.from - 1e-9 || curve.times[i] > t.to + 1e-9) continue;
    AppendVisible(line, QPointF(t.At(curve.times[i]), v.At(curve.values[i])),
                  i + 1 == curve.times.size());
  }
  m_painter->save();
  m_painter->setClipRect(area);
  m_painter->setPen(PenOf(pen, 1.6));
  m_painter->setBrush(Qt::NoBrush);
  m_painter->drawPolyline(line);
  m_painter->restore();
}

}  // namespace orv::app
