// Draws a plot.
#pragma once

#include <string>

namespace orv::app {

struct PlotData;

/// Draws `data` as SVG. Needs a QGuiApplication. The same data gives the same bytes on one machine.
std::string drawSvg(const PlotData& data);
/// The same picture as PNG, at twice the resolution. Empty when the encoder failed.
std::string drawPng(const PlotData& data);

}  // namespace orv::app
