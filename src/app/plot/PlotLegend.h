// The legend of a top view or a panel.
#pragma once

#include <string>
#include <vector>

class QPainter;

namespace orv::app {

/// Names of lines beside a piece of each, in as many rows as they need.
class PlotLegend {
 public:
  /// The first row begins at `first`, further rows at `left`; none goes beyond `right` (pixels)
  /// unless a single name is longer.
  PlotLegend(double first, double left, double right) : m_x(first), m_left(left), m_right(right) {}

  /// `line` is its number among the pens, `thickness` that of the piece.
  void Add(const std::string& name, int line, double thickness);
  /// Height of the rows behind the first one (pixels).
  double GetMoreHeight() const { return m_row * kRow; }
  /// `y` is the middle of the first row.
  void Draw(QPainter& painter, double y) const;

 private:
  struct Entry {
    std::string name;
    int line;
    double thickness;
    double x;  ///< pixels
    int row;
  };

  static constexpr double kRow = 22.0;   ///< height of a row
  static constexpr double kSpace = 8.0;  ///< between the piece of line and its name
  static constexpr double kGap = 26.0;   ///< between two entries

  std::vector<Entry> m_entries;
  double m_x, m_left, m_right;
  int m_row = 0;
};

}  // namespace orv::app
