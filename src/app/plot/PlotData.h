// What a plot shows, without how it looks.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "util/Vector3.h"

namespace orv::app {

/// The path of a node through the world: one point (m) per time of the plot.
struct PlotPath {
  std::string name;
  std::vector<util::Vector3<double>> points;
};

/// A line through the world that is no path of a node: a shot's flight, or where a plane cuts a
/// mesh (m).
struct PlotLine {
  // Pens of a scene's own meshes, which need no room in a picture.
  static constexpr int kSurface = -1;  ///< where a plane cuts them, and their edges
  static constexpr int kHeight = -2;   ///< where they are equally high

  std::vector<util::Vector3<double>> points;
  int pen = kSurface;
  double thickness = 1.4;
  bool closed = false;
  std::string name;  ///< in the legend of the top view; empty: none

  bool NeedsRoom() const { return pen >= 0; }
};

/// Lines seen from the side, to scale.
struct PlotView {
  std::string title;
  util::Vector3<double> across{1.0, 0.0, 0.0};  ///< unit, level: to the right
  std::vector<PlotLine> lines;
  std::vector<util::Vector3<double>> marks;  ///< small rings (m)
};

/// A value over time (s).
struct PlotCurve {
  std::string name;
  std::vector<double> times;
  std::vector<double> values;
};

/// Curves on one pair of axes.
struct PlotPanel {
  std::string title;
  std::string unit;  ///< of the values; may be empty
  std::vector<PlotCurve> curves;
  std::vector<int> colours;  ///< of the curves: numbers of the pens
  bool fromZero = true;      ///< the axis of the values shows 0

  void Add(PlotCurve curve, int colour) {
    curves.push_back(std::move(curve));
    colours.push_back(colour);
  }
};

/// One scene. Paths and curves of one node share a pen: that of the path's place.
struct PlotData {
  std::string heading;  ///< over the scene's column; may be empty
  double start = 0.0;   ///< s
  double end = 0.0;
  std::vector<double> times;                 ///< of all points of the paths, rising
  std::vector<PlotPath> paths;               ///< chief nodes first, each before what it follows
  std::vector<bool> chief;                   ///< which of the paths carry time marks
  std::vector<PlotLine> lines;               ///< of the top view, beside the paths
  std::vector<util::Vector3<double>> marks;  ///< of the top view: small rings (m)
  std::vector<PlotView> views;               ///< below the top view
  std::vector<PlotPanel> panels;
};

/// A whole page: scenes side by side. Panels of one title stand in one row and show the same
/// values.
struct PlotSheet {
  std::string title;
  std::string subtitle;
  std::vector<PlotData> scenes;  ///< at least one
};

}  // namespace orv::app
