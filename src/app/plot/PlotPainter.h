// Draws a plot.
#pragma once

#include <string>

namespace orv::app {

struct PlotSheet;

/// Draws `sheet` as SVG. Needs a QGuiApplication. The same data gives the same bytes on one
/// machine.
std::string DrawSvg(const PlotSheet& sheet);
/// The same picture as PNG, at twice the resolution. Empty when the encoder failed.
std::string DrawPng(const PlotSheet& sheet);

}  // namespace orv::app
