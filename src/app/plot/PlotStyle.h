// How plots look: colours, pens and letters.
#pragma once

#include <QColor>
#include <QFont>
#include <QPen>
#include <QString>
#include <string>

namespace orv::app {

inline const QColor kPaper(0xFF, 0xFF, 0xFF);
inline const QColor kGround(0xF8, 0xF9, 0xFA);
inline const QColor kGrid(0xE3, 0xE6, 0xE9);
inline const QColor kFrame(0xAE, 0xB4, 0xBA);
inline const QColor kText(0x21, 0x25, 0x29);
inline const QColor kFaint(0x5F, 0x66, 0x6D);

/// Colour of the i-th line.
QColor ColourOf(std::size_t i);
/// The pen of the i-th line: no two look the same. Below 0 it is one of PlotLine's for meshes,
/// grey.
QPen PenOf(int i, double thickness);
/// Length of the piece of the i-th line in a legend (pixels): the whole of its pattern.
double SampleOf(int i);

QFont PlotFont(int pixels, bool bold = false);
double TextWidthOf(const QFont& font, const QString& text);
inline QString FromUtf8(const std::string& utf8) {
  return QString::fromUtf8(utf8.c_str());
}

}  // namespace orv::app
