#include "app/sweep/SweepSheet.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "app/plot/PlotColumn.h"
#include "app/plot/PlotScale.h"
#include "app/plot/PlotStyle.h"
#include "app/sweep/SweepPlan.h"
#include "app/sweep/SweepRow.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

constexpr int kCellsAcross = 16, kCellsDown = 20;
constexpr int kPicture = 120, kLine = 13, kCellGap = 10, kSheetEdge = 20, kSheetHead = 34;
constexpr int kMostValueLines = 4;

/// Ground to pixels: one scale for all, X to the right and Z down, in the middle of a square.
class GroundScale {
 public:
  GroundScale(const std::vector<SweepRow>& rows, double pixels) {
    PlotBounds bounds;
    for (const SweepRow& row : rows)
      for (const auto& [x, z] : row.path) bounds.Include(x, z);
    bounds.x.Settle();
    bounds.z.Settle();
    m_scale = pixels / std::max(bounds.LongerSide() * 1.05, 1e-3);
    m_x = (bounds.x.low + bounds.x.high) / 2.0;
    m_z = (bounds.z.low + bounds.z.high) / 2.0;
  }
  double PixelsOf(double metres) const { return metres * m_scale; }
  double MetresOf(double pixels) const { return pixels / m_scale; }
  QPolygonF Line(const SweepRow& row, const QPointF& middle) const {
    QPolygonF line;
    for (const auto& [x, z] : row.path)
      line << middle + QPointF((x - m_x) * m_scale, (z - m_z) * m_scale);
    return line;
  }

 private:
  double m_scale, m_x, m_z;
};

QImage NewPage(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(kPaper);
  return image;
}

std::string PngOf(const QImage& image) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  return image.save(&buffer, "PNG") ? bytes.toStdString() : std::string();
}

void WriteText(QPainter& painter, const QRectF& area, const std::string& text, const QFont& font,
               const QColor& colour) {
  painter.setFont(font);
  painter.setPen(colour);
  const QString whole = FromUtf8(text);
  painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter,
                   QFontMetricsF(font).elidedText(whole, Qt::ElideMiddle, area.width()));
}

/// The axis whose values the colours of all paths tell.
std::size_t ColourAxis(const SweepPlan& plan) {
  std::size_t most = 0;
  for (std::size_t i = 0; i < plan.axes.size(); ++i)
    if (plan.axes[i].values.size() > plan.axes[most].values.size()) most = i;
  return most;
}

/// From blue by green to red.
QColor ColourOfValue(std::size_t index, std::size_t count) {
  const double part = count > 1 ? static_cast<double>(index) / static_cast<double>(count - 1) : 0.0;
  return QColor::fromHsvF((1.0 - part) * 0.64, 0.85, 0.8);
}

/// "Car:Mass Multiplier" without the rig where the plan has one rig alone.
std::string ShortName(const SweepPlan& plan, const SweepAxis& axis) {
  const bool alone = std::all_of(plan.axes.begin(), plan.axes.end(), [&](const SweepAxis& each) {
    return each.rig.empty() || each.rig == plan.rig;
  });
  const bool cut = alone && axis.name.compare(0, axis.rig.size() + 1, axis.rig + ":") == 0;
  return cut && !axis.rig.empty() ? axis.name.substr(axis.rig.size() + 1) : axis.name;
}

std::string ValueText(const SweepAxis& axis, const std::string& value) {
  const std::size_t slash = value.rfind('/');
  const bool file = axis.kind == SweepAxis::Kind::kInputs && slash != std::string::npos;
  return file ? value.substr(slash + 1) : value;
}

std::string MeasureText(const SweepRow& row) {
  if (!row.error.empty()) return row.error;
  const auto text = [&](SweepMeasure measure, const char* unit) {
    const auto& value = row.measures[measure];
    return value ? QString::number(*value, 'f', 1).toStdString() + unit : std::string();
  };
  const std::string air = text(kSweepAir, " s air");
  return text(kSweepLength, " m, ") + text(kSweepLean, "\u00B0") + (air.empty() ? "" : ", " + air);
}

void DrawScale(QPainter& painter, const GroundScale& scale, const QPointF& at, double most) {
  const double metres = RoundStep(scale.MetresOf(most) / 2.0, 1);
  const double pixels = scale.PixelsOf(metres);
  painter.setPen(QPen(kText, 1.5));
  painter.drawLine(at, at + QPointF(pixels, 0.0));
  WriteText(painter, QRectF(at.x() + pixels + 6.0, at.y() - 8.0, 80.0, 16.0),
            QString::number(metres).toStdString() + " m", PlotFont(11), kText);
}

void DrawLegend(QPainter& painter, const SweepPlan& plan, const QRectF& area) {
  if (plan.axes.empty()) return;
  const SweepAxis& axis = plan.axes[ColourAxis(plan)];
  double y = area.top();
  WriteText(painter, QRectF(area.left(), y, area.width(), 18.0), ShortName(plan, axis),
            PlotFont(12, true), kText);
  // Where there are more values than lines, every so manieth.
  const auto room = static_cast<std::size_t>((area.height() - 20.0) / 16.0);
  const std::size_t step = (axis.values.size() + room - 1) / room;
  for (std::size_t i = 0; i < axis.values.size(); i += step) {
    y += 16.0;
    painter.fillRect(QRectF(area.left(), y + 6.0, 18.0, 4.0), ColourOfValue(i, axis.values.size()));
    WriteText(painter, QRectF(area.left() + 24.0, y, area.width() - 24.0, 16.0),
              ValueText(axis, axis.values[i]), PlotFont(11), kText);
  }
}

void DrawCell(QPainter& painter, const SweepPlan& plan, const SweepRow& row,
              const GroundScale& scale, const QPointF& corner) {
  const QRectF picture(corner, QSizeF(kPicture, kPicture));
  painter.fillRect(picture, kGround);
  painter.setPen(QPen(kGrid, 1.0));
  painter.drawRect(picture);
  const QPolygonF line = scale.Line(row, picture.center());
  const QColor colour = row.picked ? ColourOf(0) : kFrame;
  painter.setPen(QPen(colour, 1.6));
  painter.drawPolyline(line);
  if (!line.isEmpty()) {
    painter.setBrush(colour);
    painter.drawEllipse(line.first(), 2.0, 2.0);
    painter.setBrush(Qt::NoBrush);
  }
  double y = picture.bottom() + 2.0;
  const auto write = [&](const std::string& text, bool bold, const QColor& ink) {
    WriteText(painter, QRectF(corner.x(), y, kPicture, kLine), text, PlotFont(9, bold), ink);
    y += kLine;
  };
  write(std::to_string(row.number), true, row.picked ? kText : kFaint);
  const auto values = plan.ValuesOf(row.number);
  int lines = 0;
  for (std::size_t i = 0; i < values.size() && lines < kMostValueLines; ++i) {
    if (plan.axes[i].values.size() < 2) continue;
    write(ValueText(plan.axes[i], values[i]) + "  " + ShortName(plan, plan.axes[i]), false, kText);
    ++lines;
  }
  write(MeasureText(row), false, row.error.empty() ? kFaint : QColor(Qt::red));
}

int ValueLines(const SweepPlan& plan) {
  const auto varied = std::count_if(plan.axes.begin(), plan.axes.end(),
                                    [](const SweepAxis& axis) { return axis.values.size() > 1; });
  return std::min<int>(kMostValueLines, static_cast<int>(varied));
}

}  // namespace

std::string DrawSweepPaths(const SweepPlan& plan, const std::vector<SweepRow>& rows) {
  constexpr int kSide = 1100, kLegend = 240;
  QImage page = NewPage(kSide + kLegend + 2 * kSheetEdge, kSide + kSheetHead + kSheetEdge);
  QPainter painter(&page);
  painter.setRenderHint(QPainter::Antialiasing);
  WriteText(painter, QRectF(kSheetEdge, 4, kSide, kSheetHead - 6),
            plan.rig + ", " + util::counted(rows.size(), "variant") + " from above",
            PlotFont(15, true), kText);
  const QRectF area(kSheetEdge, kSheetHead, kSide, kSide);
  painter.fillRect(area, kGround);
  const GroundScale scale(rows, kSide);
  const std::size_t axis = ColourAxis(plan);
  for (const bool picked : {false, true}) {
    for (const SweepRow& row : rows) {
      if (row.picked != picked) continue;
      const auto choice = plan.ChoiceOf(row.number);
      const std::size_t value = choice.empty() ? 0 : choice[axis];
      const std::size_t count = choice.empty() ? 1 : plan.axes[axis].values.size();
      painter.setPen(QPen(picked ? ColourOfValue(value, count) : kFrame, picked ? 1.6 : 1.0));
      painter.drawPolyline(scale.Line(row, area.center()));
    }
  }
  DrawScale(painter, scale, area.bottomLeft() + QPointF(16.0, -16.0), kSide / 4.0);
  DrawLegend(painter, plan,
             QRectF(kSide + 2 * kSheetEdge, kSheetHead, kLegend - kSheetEdge, kSide));
  painter.end();
  return PngOf(page);
}

int SweepSheetCount(const std::vector<SweepRow>& rows) {
  constexpr int kCells = kCellsAcross * kCellsDown;
  return (static_cast<int>(rows.size()) + kCells - 1) / kCells;
}

std::string DrawSweepSheet(const SweepPlan& plan, const std::vector<SweepRow>& rows, int sheet) {
  constexpr std::size_t kCells = kCellsAcross * kCellsDown;
  const std::size_t first = static_cast<std::size_t>(sheet) * kCells;
  const std::size_t count = std::min(kCells, rows.size() - first);
  const int across = static_cast<int>(std::min<std::size_t>(
      kCellsAcross, static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(count))))));
  const int down = (static_cast<int>(count) + across - 1) / across;
  const int width = kPicture + kCellGap;
  const int height = kPicture + (ValueLines(plan) + 2) * kLine + kCellGap;
  QImage page = NewPage(std::max(across * width, 420) + 2 * kSheetEdge,
                        down * height + kSheetHead + kSheetEdge);
  QPainter painter(&page);
  painter.setRenderHint(QPainter::Antialiasing);
  WriteText(
      painter, QRectF(kSheetEdge, 4, 300, kSheetHead - 6),
      plan.rig + ", rows " + std::to_string(first + 1) + " to " + std::to_string(first + count),
      PlotFont(15, true), kText);
  const GroundScale scale(rows, kPicture - 8.0);
  DrawScale(painter, scale, QPointF(page.width() - kSheetEdge - 130.0, kSheetHead / 2.0), kPicture);
  for (std::size_t i = 0; i < count; ++i)
    DrawCell(painter, plan, rows[first + i], scale,
             QPointF(kSheetEdge + static_cast<int>(i) % across * width,
                     kSheetHead + static_cast<int>(i) / across * height));
  painter.end();
  return PngOf(page);
}

}  // namespace orv::app
