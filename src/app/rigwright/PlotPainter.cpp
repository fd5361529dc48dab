#include "app/rigwright/PlotPainter.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QSvgGenerator>
#include <array>
#include <limits>
#include <numeric>

#include "app/rigwright/PlotData.h"
#include "app/rigwright/PlotScale.h"

namespace orv::app {

namespace {

using util::Vector3;

// Pixels of a page at 96 dpi.
constexpr double kPageWidth = 1200.0;
constexpr double kLeft = 84.0;
constexpr double kRight = 36.0;
constexpr double kHeader = 96.0;       ///< title, subtitle and one row of legend
constexpr double kLegendRow = 22.0;    ///< height of each further row
constexpr double kTopViewMin = 260.0;  ///< height of the top view; long paths get less
constexpr double kTopViewMax = 620.0;
constexpr double kPanelHeight = 130.0;
constexpr double kPanelGap = 58.0;  ///< above a panel: its title and legend
constexpr double kFooter = 56.0;

// Okabe and Ito's palette without its yellow: told apart by colour-blind people too.
const std::array<QColor, 7> kPalette = {QColor(0x00, 0x72, 0xB2), QColor(0xD5, 0x5E, 0x00),
                                        QColor(0x00, 0x9E, 0x73), QColor(0xCC, 0x79, 0xA7),
                                        QColor(0xE6, 0x9F, 0x00), QColor(0x56, 0xB4, 0xE9),
                                        QColor(0x55, 0x55, 0x55)};
const QColor kPaper(0xFF, 0xFF, 0xFF);
const QColor kGround(0xF8, 0xF9, 0xFA);
const QColor kGrid(0xE3, 0xE6, 0xE9);
const QColor kFrame(0xAE, 0xB4, 0xBA);
const QColor kText(0x21, 0x25, 0x29);
const QColor kFaint(0x5F, 0x66, 0x6D);

QColor colourOf(std::size_t i) {
  return kPalette[i % kPalette.size()];
}

/// Where the palette begins again the lines are dashed: in the n-th turn by so many long dashes and
/// then so many points. Both are without a common divisor, so that no pattern repeats another.
std::pair<int, int> dashesAndPoints(std::size_t turn) {
  for (int sum = 1;; ++sum) {
    for (int points = 0; points <= sum; ++points) {
      if (std::gcd(sum - points, points) != 1) continue;
      if (--turn == 0) return {sum - points, points};
    }
  }
}

/// The pen of the i-th line: no two look the same.
QPen penOf(std::size_t i, double thickness) {
  constexpr double kDash = 9.0, kPoint = 2.0, kSpace = 3.0;  // pixels
  const std::size_t turn = i / kPalette.size();
  QPen pen(colourOf(i), thickness, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  if (turn == 0) return pen;
  const auto [dashes, points] = dashesAndPoints(turn);
  QVector<qreal> pattern;  // in thicknesses
  for (int k = 0; k < dashes + points; ++k)
    pattern << (k < dashes ? kDash : kPoint) / thickness << kSpace / thickness;
  pen.setCapStyle(Qt::FlatCap);
  pen.setDashPattern(pattern);
  return pen;
}

/// Length of the piece of the i-th line in a legend (pixels): the whole of its pattern.
double sampleOf(std::size_t i) {
  constexpr double kSolid = 24.0;
  if (i < kPalette.size()) return kSolid;
  const QVector<qreal> pattern = penOf(i, 1.0).dashPattern();
  return std::max(kSolid, std::accumulate(pattern.begin(), pattern.end(), 0.0));
}

QFont font(int pixels, bool bold = false) {
  QFont f(QStringLiteral("DejaVu Sans"));
  f.setStyleHint(QFont::SansSerif);
  f.setPixelSize(pixels);
  f.setBold(bold);
  return f;
}

double textWidthOf(const QFont& f, const QString& text) {
  return QFontMetricsF(f).width(text);
}

QString text(const std::string& utf8) {
  return QString::fromUtf8(utf8.c_str());
}

/// A map from values to pixels along one axis.
struct Axis {
  double from = 0.0, to = 1.0;    ///< values
  double start = 0.0, end = 1.0;  ///< pixels

  double at(double value) const { return start + (value - from) / (to - from) * (end - start); }
};

/// Names of lines beside a piece of each, in as many rows as they need.
struct Legend {
  struct Entry {
    std::string name;
    std::size_t line;  ///< its number among the pens
    double thickness;
    double x;  ///< pixels
    int row;
  };

  /// `left` is where the first row begins (pixels); further rows begin at the page's edge.
  explicit Legend(double left) : m_x(left) {}

  void add(const std::string& name, std::size_t line, double thickness) {
    const double width = sampleOf(line) + kSpace + textWidthOf(font(13), text(name));
    if (m_x + width > kPageWidth - kRight && m_x > kLeft) {
      m_x = kLeft;
      ++m_row;
    }
    entries.push_back({name, line, thickness, m_x, m_row});
    m_x += width + kGap;
  }

  /// Height of the rows behind the first one.
  double moreHeight() const { return m_row * kLegendRow; }

  static constexpr double kSpace = 8.0;  ///< between the piece of line and its name
  static constexpr double kGap = 26.0;

  std::vector<Entry> entries;

 private:
  double m_x;
  int m_row = 0;
};

Legend pathLegend(const PlotData& data) {
  Legend legend(kLeft);
  for (std::size_t i = 0; i < data.paths.size(); ++i)
    legend.add(data.paths[i].name, i, data.chief[i] ? 3.0 : 1.6);
  return legend;
}

QString titleOf(const PlotPanel& panel) {
  return text(panel.title) + (panel.unit.empty() ? QString() : " (" + text(panel.unit) + ")");
}

Legend panelLegend(const PlotPanel& panel) {
  Legend legend(kLeft + textWidthOf(font(14, true), titleOf(panel)) + 30.0);
  for (std::size_t i = 0; i < panel.curves.size(); ++i)
    legend.add(panel.curves[i].name, static_cast<std::size_t>(panel.colours[i]), 2.4);
  return legend;
}

double heightOf(const PlotPanel& panel) {
  return kPanelGap + panelLegend(panel).moreHeight() + kPanelHeight;
}

/// Places of texts, so that none covers another.
class Labels {
 public:
  void block(const QRectF& area) { m_taken.push_back(area); }
  /// A line that texts keep off where they can.
  void avoid(const QPolygonF& line) { m_lines.push_back(line); }

  /// The first of eight places around `point` that is free, at a growing distance; one over a line
  /// only where there is no other.
  bool place(const QPointF& point, const QSizeF& size, const QRectF& inside, QRectF& found) {
    return placeOnce(point, size, inside, true, found) ||
           placeOnce(point, size, inside, false, found);
  }

 private:
  bool placeOnce(const QPointF& point, const QSizeF& size, const QRectF& inside, bool offLines,
                 QRectF& found) {
    for (const double distance : {7.0, 14.0, 24.0}) {
      for (int i = 0; i < 8; ++i) {
        const double angle = -0.25 * 3.14159265358979 + i * 0.25 * 3.14159265358979;
        const QPointF centre(point.x() + std::cos(angle) * (distance + size.width() / 2.0),
                             point.y() + std::sin(angle) * (distance + size.height() / 2.0));
        const QRectF area(centre.x() - size.width() / 2.0, centre.y() - size.height() / 2.0,
                          size.width(), size.height());
        if (!inside.contains(area) || isTaken(area) || (offLines && isOverLine(area))) continue;
        block(area);
        found = area;
        return true;
      }
    }
    return false;
  }

  bool isTaken(const QRectF& area) const {
    for (const QRectF& other : m_taken)
      if (other.intersects(area)) return true;
    return false;
  }

  bool isOverLine(const QRectF& area) const {
    for (const QPolygonF& line : m_lines) {
      for (int i = 1; i < line.size(); ++i)
        if (QRectF(line[i - 1], line[i])
                .normalized()
                .adjusted(-1.0, -1.0, 1.0, 1.0)
                .intersects(area))
          return true;
    }
    return false;
  }

  std::vector<QRectF> m_taken;
  std::vector<QPolygonF> m_lines;
};

class Page {
 public:
  explicit Page(const PlotData& data) : m_data(data) {
    findBounds();
    const double width = kPageWidth - kLeft - kRight;
    const double shape = (m_maxZ - m_minZ) / (m_maxX - m_minX);
    m_topView = QRectF(kLeft, kHeader + pathLegend(data).moreHeight(), width,
                       std::min(kTopViewMax, std::max(kTopViewMin, width * shape + 40.0)));
  }

  double height() const {
    double result = m_topView.bottom() + 30.0 + kFooter;
    for (const PlotPanel& panel : m_data.panels) result += heightOf(panel);
    return result;
  }

  void draw(QPainter& painter) {
    m_painter = &painter;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRectF(0.0, 0.0, kPageWidth, height()), kPaper);
    drawHeader();
    drawTopView();
    double y = m_topView.bottom() + 30.0;
    for (const PlotPanel& panel : m_data.panels) {
      y += heightOf(panel);
      drawPanel(panel, QRectF(kLeft, y - kPanelHeight, kPageWidth - kLeft - kRight, kPanelHeight));
    }
  }

 private:
  void findBounds();
  void drawHeader();
  void drawTopView();
  void drawGrid(const Axis& x, const Axis& z, double step);
  void drawScaleBar(double pixelsPerMetre, double metres, Labels& labels);
  void drawPath(const PlotPath& path, std::size_t index, const Axis& x, const Axis& z,
                Labels& labels);
  void drawTimeMarks(const PlotPath& path, std::size_t index, const Axis& x, const Axis& z,
                     Labels& labels);
  void drawEnds(const PlotPath& path, std::size_t index, const Axis& x, const Axis& z,
                Labels& labels);
  void drawPanel(const PlotPanel& panel, const QRectF& area);
  void drawPanelAxes(const QRectF& area, const Axis& t, const Axis& v);
  void drawCurve(const PlotCurve& curve, std::size_t pen, const QRectF& area, const Axis& t,
                 const Axis& v);
  void drawLegend(const Legend& legend, double y);
  void write(const QRectF& area, int flags, const QString& what, const QFont& f,
             const QColor& colour);
  void writeOnPaper(const QRectF& area, const QString& what, const QFont& f, const QColor& colour);

  const PlotData& m_data;
  QPainter* m_painter = nullptr;
  QRectF m_topView;
  double m_minX = 0.0, m_maxX = 0.0, m_minZ = 0.0, m_maxZ = 0.0;
};

void Page::findBounds() {
  const double infinity = std::numeric_limits<double>::infinity();
  m_minX = m_minZ = infinity;
  m_maxX = m_maxZ = -infinity;
  for (const PlotPath& path : m_data.paths) {
    for (const Vector3<double>& p : path.points) {
      m_minX = std::min(m_minX, p.x);
      m_maxX = std::max(m_maxX, p.x);
      m_minZ = std::min(m_minZ, p.z);
      m_maxZ = std::max(m_maxZ, p.z);
    }
  }
  if (!(m_minX <= m_maxX)) m_minX = m_maxX = m_minZ = m_maxZ = 0.0;
  const double room = std::max({m_maxX - m_minX, m_maxZ - m_minZ, 1e-3}) * 0.06;
  m_minX -= room;
  m_maxX += room;
  m_minZ -= room;
  m_maxZ += room;
}

void Page::write(const QRectF& area, int flags, const QString& what, const QFont& f,
                 const QColor& colour) {
  m_painter->setFont(f);
  m_painter->setPen(colour);
  m_painter->drawText(area, flags | Qt::TextDontClip, what);
}

/// A text with a light ground, readable over lines.
void Page::writeOnPaper(const QRectF& area, const QString& what, const QFont& f,
                        const QColor& colour) {
  m_painter->setPen(Qt::NoPen);
  m_painter->setBrush(QColor(255, 255, 255, 215));
  m_painter->drawRoundedRect(area, 2.0, 2.0);
  write(area, Qt::AlignCenter, what, f, colour);
}

void Page::drawLegend(const Legend& legend, double y) {
  for (const Legend::Entry& entry : legend.entries) {
    const double middle = y + entry.row * kLegendRow;
    const double length = sampleOf(entry.line);
    m_painter->setPen(penOf(entry.line, entry.thickness));
    m_painter->drawLine(QPointF(entry.x, middle), QPointF(entry.x + length, middle));
    write(QRectF(entry.x + length + Legend::kSpace, middle - 10.0, 10.0, 20.0),
          Qt::AlignLeft | Qt::AlignVCenter, text(entry.name), font(13), kText);
  }
}

void Page::drawHeader() {
  const QString subtitle = text(m_data.subtitle);
  const double room = kPageWidth - kLeft - kRight - textWidthOf(font(13), subtitle) - 30.0;
  const QString title =
      QFontMetricsF(font(20, true)).elidedText(text(m_data.title), Qt::ElideRight, room);
  write(QRectF(kLeft, 14.0, room, 28.0), Qt::AlignLeft | Qt::AlignVCenter, title, font(20, true),
        kText);
  write(QRectF(kPageWidth - kRight - 600.0, 14.0, 600.0, 28.0), Qt::AlignRight | Qt::AlignVCenter,
        subtitle, font(13), kFaint);
  drawLegend(pathLegend(m_data), 66.0);
}

void Page::drawTopView() {
  const double scale =
      std::min(m_topView.width() / (m_maxX - m_minX), m_topView.height() / (m_maxZ - m_minZ));
  const double middleX = (m_minX + m_maxX) / 2.0;
  const double middleZ = (m_minZ + m_maxZ) / 2.0;
  const double halfX = m_topView.width() / 2.0 / scale;
  const double halfZ = m_topView.height() / 2.0 / scale;
  const Axis x{middleX - halfX, middleX + halfX, m_topView.left(), m_topView.right()};
  const Axis z{middleZ - halfZ, middleZ + halfZ, m_topView.top(), m_topView.bottom()};
  const double step = roundStep(110.0 / scale, 1);

  drawGrid(x, z, step);
  Labels labels;
  drawScaleBar(scale, step, labels);
  m_painter->save();
  m_painter->setClipRect(m_topView);
  // The thin line of what is followed lies on the broad one of what follows it.
  for (const bool chief : {true, false})
    for (std::size_t i = 0; i < m_data.paths.size(); ++i)
      if (m_data.chief[i] == chief) drawPath(m_data.paths[i], i, x, z, labels);
  m_painter->restore();
  for (std::size_t i = 0; i < m_data.paths.size(); ++i)
    if (m_data.chief[i]) drawEnds(m_data.paths[i], i, x, z, labels);
  for (std::size_t i = 0; i < m_data.paths.size(); ++i)
    if (m_data.chief[i]) drawTimeMarks(m_data.paths[i], i, x, z, labels);
}

void Page::drawGrid(const Axis& x, const Axis& z, double step) {
  m_painter->fillRect(m_topView, kGround);
  const QFont f = font(12);
  for (const double value : ticks(x.from, x.to, step)) {
    const double at = x.at(value);
    m_painter->setPen(QPen(kGrid, 1.0));
    m_painter->drawLine(QPointF(at, m_topView.top()), QPointF(at, m_topView.bottom()));
    write(QRectF(at - 50.0, m_topView.bottom() + 4.0, 100.0, 16.0), Qt::AlignCenter,
          tickText(value, step), f, kFaint);
  }
  for (const double value : ticks(z.from, z.to, step)) {
    const double at = z.at(value);
    m_painter->setPen(QPen(kGrid, 1.0));
    m_painter->drawLine(QPointF(m_topView.left(), at), QPointF(m_topView.right(), at));
    write(QRectF(m_topView.left() - 76.0, at - 8.0, 70.0, 16.0), Qt::AlignRight | Qt::AlignVCenter,
          tickText(value, step), f, kFaint);
  }
  m_painter->setPen(QPen(kFrame, 1.0));
  m_painter->setBrush(Qt::NoBrush);
  m_painter->drawRect(m_topView);
  write(QRectF(m_topView.right() - 200.0, m_topView.bottom() + 20.0, 200.0, 16.0), Qt::AlignRight,
        QStringLiteral("x (m) \u2192"), f, kText);
  write(QRectF(8.0, m_topView.top() - 24.0, 72.0, 16.0), Qt::AlignRight,
        QStringLiteral("z (m) \u2193"), f, kText);
}

void Page::drawScaleBar(double pixelsPerMetre, double metres, Labels& labels) {
  const double width = metres * pixelsPerMetre;
  const double x = m_topView.right() - 18.0 - width;
  const double y = m_topView.bottom() - 18.0;
  m_painter->setPen(QPen(kText, 2.0, Qt::SolidLine, Qt::FlatCap));
  m_painter->drawLine(QPointF(x, y), QPointF(x + width, y));
  m_painter->drawLine(QPointF(x, y - 5.0), QPointF(x, y + 5.0));
  m_painter->drawLine(QPointF(x + width, y - 5.0), QPointF(x + width, y + 5.0));
  const QRectF area(x, y - 24.0, width, 16.0);
  write(area, Qt::AlignCenter, tickText(metres, metres) + QStringLiteral(" m"), font(12), kText);
  labels.block(area.adjusted(-8.0, -4.0, 8.0, 26.0));
}

void Page::drawPath(const PlotPath& path, std::size_t index, const Axis& x, const Axis& z,
                    Labels& labels) {
  if (path.points.empty()) return;
  // Points nearer than a third of a pixel to the last one drawn add nothing to see.
  QPolygonF line;
  for (std::size_t i = 0; i < path.points.size(); ++i) {
    const QPointF p(x.at(path.points[i].x), z.at(path.points[i].z));
    if (!line.isEmpty() && i + 1 < path.points.size() && (p - line.last()).manhattanLength() < 0.33)
      continue;
    line << p;
  }
  labels.avoid(line);
  const double thickness = m_data.chief[index] ? 3.2 : 1.1;
  m_painter->setBrush(Qt::NoBrush);
  m_painter->setPen(penOf(index, thickness));
  m_painter->drawPolyline(line);
}

void Page::drawTimeMarks(const PlotPath& path, std::size_t index, const Axis& x, const Axis& z,
                         Labels& labels) {
  const double step = roundStep(m_data.end - m_data.start, 10);
  const QFont f = font(12);
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
    if (labels.place(p, QSizeF(textWidthOf(f, what) + 6.0, 16.0), m_topView, area))
      writeOnPaper(area, what, f, kText);
  }
}

void Page::drawEnds(const PlotPath& path, std::size_t index, const Axis& x, const Axis& z,
                    Labels& labels) {
  if (path.points.empty()) return;
  const QFont f = font(12, true);
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
    if (labels.place(p, QSizeF(textWidthOf(f, end.name) + 8.0, 16.0), m_topView, area))
      writeOnPaper(area, end.name, f, colourOf(index).darker(120));
  }
}

void Page::drawPanel(const PlotPanel& panel, const QRectF& area) {
  double low = std::numeric_limits<double>::infinity();
  double high = -low;
  for (const PlotCurve& curve : panel.curves) {
    for (const double value : curve.values) {
      low = std::min(low, value);
      high = std::max(high, value);
    }
  }
  if (!(low <= high)) low = high = 0.0;
  if (panel.fromZero) {
    low = std::min(low, 0.0);
    high = std::max(high, 0.0);
  }
  // Below a billionth of a unit there is only rounding to see.
  if (high - low < 1e-9) high = low + 1.0;
  const double room = (high - low) * 0.06;
  const double end = m_data.end > m_data.start ? m_data.end : m_data.start + 1.0;
  const Axis t{m_data.start, end, area.left(), area.right()};
  const Axis v{low == 0.0 ? 0.0 : low - room, high + room, area.bottom(), area.top()};

  const Legend legend = panelLegend(panel);
  const double titleY = area.top() - 18.0 - legend.moreHeight();
  write(QRectF(area.left(), titleY - 10.0, 300.0, 20.0), Qt::AlignLeft | Qt::AlignVCenter,
        titleOf(panel), font(14, true), kText);
  drawLegend(legend, titleY);
  drawPanelAxes(area, t, v);
  for (std::size_t i = 0; i < panel.curves.size(); ++i)
    drawCurve(panel.curves[i], static_cast<std::size_t>(panel.colours[i]), area, t, v);
}

void Page::drawPanelAxes(const QRectF& area, const Axis& t, const Axis& v) {
  m_painter->fillRect(area, kGround);
  const QFont f = font(12);
  const double timeStep = roundStep(t.to - t.from, 14);
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

void Page::drawCurve(const PlotCurve& curve, std::size_t pen, const QRectF& area, const Axis& t,
                     const Axis& v) {
  QPolygonF line;
  for (std::size_t i = 0; i < curve.times.size(); ++i) {
    if (curve.times[i] < t.from - 1e-9 || curve.times[i] > t.to + 1e-9) continue;
    line << QPointF(t.at(curve.times[i]), v.at(curve.values[i]));
  }
  m_painter->save();
  m_painter->setClipRect(area);
  m_painter->setPen(penOf(pen, 1.6));
  m_painter->setBrush(Qt::NoBrush);
  m_painter->drawPolyline(line);
  m_painter->restore();
}

}  // namespace

std::string drawSvg(const PlotData& data) {
  Page page(data);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setResolution(96);
  const QSize size(static_cast<int>(kPageWidth), static_cast<int>(std::ceil(page.height())));
  generator.setSize(size);
  generator.setViewBox(QRect(QPoint(0, 0), size));
  generator.setTitle(text(data.title));
  QPainter painter(&generator);
  page.draw(painter);
  painter.end();
  return bytes.toStdString();
}

std::string drawPng(const PlotData& data) {
  constexpr double kZoom = 2.0;
  Page page(data);
  QImage image(static_cast<int>(kPageWidth * kZoom),
               static_cast<int>(std::ceil(page.height() * kZoom)), QImage::Format_RGB32);
  image.fill(kPaper);
  QPainter painter(&image);
  painter.scale(kZoom, kZoom);
  page.draw(painter);
  painter.end();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  return image.save(&buffer, "PNG") ? bytes.toStdString() : std::string();
}

}  // namespace orv::app
