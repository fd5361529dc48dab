#include "app/plot/PlotPainter.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>
#include <algorithm>
#include <cmath>

#include "app/plot/PlotColumn.h"
#include "app/plot/PlotData.h"
#include "app/plot/PlotStyle.h"

namespace orv::app {

namespace {

// Pixels of a page at 96 dpi.
constexpr double kLeft = 84.0;
constexpr double kRight = 36.0;
constexpr double kColumnGap = 96.0;    ///< between two scenes, with the numbers of the right one
constexpr double kHeader = 96.0;       ///< title, subtitle and one row of legend
constexpr double kHeading = 26.0;      ///< of a scene among several
constexpr double kTopViewMin = 260.0;  ///< height of the top view; long paths get less
constexpr double kTopViewMax = 620.0;
constexpr double kViewsGap = 36.0;  ///< above the side views: the axis of the top view
constexpr double kPanelHeight = 130.0;
constexpr double kPanelGap = 58.0;  ///< above a panel: its title and legend
constexpr double kFooter = 56.0;

/// Width of each of so many scenes.
double ColumnWidth(std::size_t count) {
  return count == 1 ? 1080.0 : count == 2 ? 620.0 : 440.0;
}

/// Panels of one title.
struct Row {
  std::string title;
  std::vector<const PlotPanel*> panels;  ///< per column; null where a scene has none
  PlotSpan values;
  double moreLegend = 0.0;  ///< height of the legends' rows behind the first
};

class Page {
 public:
  explicit Page(const PlotSheet& sheet) : m_sheet(sheet) {
    const double width = ColumnWidth(sheet.scenes.size());
    double left = kLeft;
    for (const PlotData& scene : sheet.scenes) {
      m_columns.emplace_back(scene, left, width);
      left += width + kColumnGap;
    }
    m_width = left - kColumnGap + kRight;
    FindBounds();
    PlaceTopViews();
    FindRows();
  }

  QSizeF Size() const { return {m_width, m_height}; }
  void Draw(QPainter& painter);

 private:
  void FindBounds();
  void PlaceTopViews();
  void FindRows();
  Row& RowFor(const std::string& title);
  double GetPanelsTop() const {
    return m_topViewBottom + std::max(30.0, kViewsGap + m_viewsHeight - 20.0);
  }
  double GetLegendY() const { return m_columns.size() > 1 ? 66.0 + kHeading : 66.0; }
  void DrawHeader(QPainter& painter);

  const PlotSheet& m_sheet;
  std::vector<PlotColumn> m_columns;
  std::vector<PlotBounds> m_bounds;  ///< per column
  std::vector<Row> m_rows;
  double m_topViewTop = 0.0, m_topViewBottom = 0.0;
  double m_viewsHeight = 0.0;  ///< of the side views
  double m_width = 0.0, m_height = 0.0;
};

/// Scenes show the same piece of ground, so that their paths can be compared, unless one of them
/// would get too small to see.
void Page::FindBounds() {
  constexpr double kSmallest = 0.3;  ///< share of the common piece
  PlotBounds common;
  double least = std::numeric_limits<double>::infinity();
  for (const PlotColumn& column : m_columns) {
    m_bounds.push_back(column.Bounds());
    common.x.Include(m_bounds.back().x);
    common.z.Include(m_bounds.back().z);
    least = std::min(least, m_bounds.back().LongerSide());
  }
  if (least >= kSmallest * common.LongerSide()) m_bounds.assign(m_columns.size(), common);
}

void Page::PlaceTopViews() {
  double wish = 0.0;
  double moreLegend = 0.0;
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    const PlotBounds& bounds = m_bounds[i];
    wish = std::max(wish, m_columns[i].GetWidth() * bounds.z.Length() / bounds.x.Length() + 40.0);
    moreLegend = std::max(moreLegend, m_columns[i].PathLegend().GetMoreHeight());
  }
  m_topViewTop = GetLegendY() + kHeader - 66.0 + moreLegend;
  m_topViewBottom = m_topViewTop + std::clamp(wish, kTopViewMin, kTopViewMax);
}

Row& Page::RowFor(const std::string& title) {
  for (Row& row : m_rows)
    if (row.title == title) return row;
  m_rows.push_back({title, std::vector<const PlotPanel*>(m_columns.size()), {}, 0.0});
  return m_rows.back();
}

void Page::FindRows() {
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    for (const PlotPanel& panel : m_columns[i].GetData().panels) {
      Row& its = RowFor(panel.title);
      its.panels[i] = &panel;
      its.values.Include(PlotColumn::ValuesOf(panel));
      its.moreLegend = std::max(its.moreLegend, m_columns[i].PanelLegend(panel).GetMoreHeight());
    }
  }
  for (const PlotColumn& column : m_columns)
    m_viewsHeight = std::max(m_viewsHeight, column.ViewsHeight());
  m_height = GetPanelsTop() + kFooter;
  for (const Row& row : m_rows) m_height += kPanelGap + row.moreLegend + kPanelHeight;
}

void Page::Draw(QPainter& painter) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(QRectF(QPointF(), Size()), kPaper);
  DrawHeader(painter);
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    PlotColumn& column = m_columns[i];
    column.PathLegend().Draw(painter, GetLegendY());
    column.DrawTopView(
        painter,
        QRectF(column.GetLeft(), m_topViewTop, column.GetWidth(), m_topViewBottom - m_topViewTop),
        m_bounds[i]);
    column.DrawViews(painter, m_topViewBottom + kViewsGap);
    double y = GetPanelsTop();
    for (const Row& row : m_rows) {
      y += kPanelGap + row.moreLegend + kPanelHeight;
      if (row.panels[i])
        column.DrawPanel(
            painter, *row.panels[i],
            QRectF(column.GetLeft(), y - kPanelHeight, column.GetWidth(), kPanelHeight), row.values,
            row.moreLegend);
    }
  }
}

void Page::DrawHeader(QPainter& painter) {
  const auto write = [&painter](const QRectF& area, int flags, const std::string& what,
                                const QFont& font, const QColor& colour) {
    painter.setFont(font);
    painter.setPen(colour);
    const QString fitting =
        QFontMetricsF(font).elidedText(FromUtf8(what), Qt::ElideRight, area.width());
    painter.drawText(area, flags | Qt::AlignVCenter | Qt::TextDontClip, fitting);
  };
  const double subtitle = TextWidthOf(PlotFont(13), FromUtf8(m_sheet.subtitle));
  write(QRectF(kLeft, 14.0, m_width - kLeft - kRight - subtitle - 30.0, 28.0), Qt::AlignLeft,
        m_sheet.title, PlotFont(20, true), kText);
  write(QRectF(m_width - kRight - subtitle - 1.0, 14.0, subtitle + 1.0, 28.0), Qt::AlignRight,
        m_sheet.subtitle, PlotFont(13), kFaint);
  for (const PlotColumn& column : m_columns)
    if (!column.GetData().heading.empty())
      write(QRectF(column.GetLeft(), 52.0, column.GetWidth(), 24.0), Qt::AlignLeft,
            column.GetData().heading, PlotFont(15, true), kText);
}

}  // namespace

std::string DrawSvg(const PlotSheet& sheet) {
  Page page(sheet);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setResolution(96);
  const QSize size(static_cast<int>(page.Size().width()),
                   static_cast<int>(std::ceil(page.Size().height())));
  generator.setSize(size);
  generator.setViewBox(QRect(QPoint(0, 0), size));
  generator.setTitle(FromUtf8(sheet.title));
  QPainter painter(&generator);
  page.Draw(painter);
  painter.end();
  return bytes.toStdString();
}

std::string DrawPng(const PlotSheet& sheet) {
  constexpr double kZoom = 2.0;
  Page page(sheet);
  QImage image(static_cast<int>(page.Size().width() * kZoom),
               static_cast<int>(std::ceil(page.Size().height() * kZoom)), QImage::Format_RGB32);
  image.fill(kPaper);
  QPainter painter(&image);
  painter.scale(kZoom, kZoom);
  page.Draw(painter);
  painter.end();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  return image.save(&buffer, "PNG") ? bytes.toStdString() : std::string();
}

}  // namespace orv::app
