// Values that change by themselves, as bars around 0.
#pragma once

#include <array>
#include <string>

#include "gui/component/qt/ViewHandler.h"

namespace orv::rws::core::windows {

/// With two decimals, and no minus before a 0.
std::string BarNumber(double value);

/// One bar, or two below each other of which the lower is the accented one, and a text behind them.
class LiveBar : public gui::component::qt::ViewHandler {
 public:
  /// In shares of the half of the bar, -1 to 1; beyond, it is full.
  struct Line {
    double value = 0.0;
    double low = 0.0, high = 0.0;  ///< where it has been lately; the same for nothing
  };

  explicit LiveBar(int lines) : m_count(lines) {}

  /// True when it looks other than before and is to be painted anew.
  bool Set(const std::array<Line, 2>& lines, const std::string& text);

  void Paint(QPainter& painter, QWidget& widget) override;
  QString GetAccessibleValue() const override { return m_text; }

 private:
  const int m_count;
  std::array<Line, 2> m_lines;
  QString m_text;
};

}  // namespace orv::rws::core::windows
