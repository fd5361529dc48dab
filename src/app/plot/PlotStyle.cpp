#include "app/plot/PlotStyle.h"

#include <QFontMetricsF>
#include <array>
#include <numeric>

#include "app/plot/PlotData.h"

namespace orv::app {

namespace {

// Okabe and Ito's palette without its yellow: told apart by colour-blind people too.
const std::array<QColor, 7> kPalette = {QColor(0x00, 0x72, 0xB2), QColor(0xD5, 0x5E, 0x00),
                                        QColor(0x00, 0x9E, 0x73), QColor(0xCC, 0x79, 0xA7),
                                        QColor(0xE6, 0x9F, 0x00), QColor(0x56, 0xB4, 0xE9),
                                        QColor(0x55, 0x55, 0x55)};
/// Where the palette begins again the lines are dashed: in the n-th turn by so many long dashes and
/// then so many points. Both are without a common divisor, so that no pattern repeats another.
std::pair<int, int> DashesAndPoints(std::size_t turn) {
  for (int sum = 1;; ++sum) {
    for (int points = 0; points <= sum; ++points) {
      if (std::gcd(sum - points, points) != 1) continue;
      if (--turn == 0) return {sum - points, points};
    }
  }
}

}  // namespace

QColor ColourOf(std::size_t i) {
  return kPalette[i % kPalette.size()];
}

QPen PenOf(int line, double thickness) {
  if (line < 0) return QPen(line == PlotLine::kSurface ? kFaint : kFrame, thickness);
  const auto i = static_cast<std::size_t>(line);
  constexpr double kDash = 9.0, kPoint = 2.0, kSpace = 3.0;  // pixels
  const std::size_t turn = i / kPalette.size();
  QPen pen(ColourOf(i), thickness, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  if (turn == 0) return pen;
  const auto [dashes, points] = DashesAndPoints(turn);
  QVector<qreal> pattern;  // in thicknesses
  for (int k = 0; k < dashes + points; ++k)
    pattern << (k < dashes ? kDash : kPoint) / thickness << kSpace / thickness;
  pen.setCapStyle(Qt::FlatCap);
  pen.setDashPattern(pattern);
  return pen;
}

double SampleOf(int i) {
  constexpr double kSolid = 24.0;
  if (i < static_cast<int>(kPalette.size())) return kSolid;
  const QVector<qreal> pattern = PenOf(i, 1.0).dashPattern();
  return std::max(kSolid, std::accumulate(pattern.begin(), pattern.end(), 0.0));
}

QFont PlotFont(int pixels, bool bold) {
  QFont f(QStringLiteral("DejaVu Sans"));
  f.setStyleHint(QFont::SansSerif);
  f.setPixelSize(pixels);
  f.setBold(bold);
  return f;
}

double TextWidthOf(const QFont& font, const QString& text) {
  return QFontMetricsF(font).width(text);
}

}  // namespace orv::app
