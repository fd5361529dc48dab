// Curves over two axes.
#pragma once

#include <string>
#include <vector>

#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

/// Points are in data space. A handle that the user drags, or moves by the arrow keys, posts
/// kMsgEditBegin, kMsgHandleMoved and kMsgEditEnd; it stands where the window puts it.
class Graph : public Interface {
 public:
  struct Axis {
    double from = 0.0, to = 1.0;
    std::string label;  ///< shown as it is
    bool grid = true;   ///< lines at round numbers, with these
  };
  struct Point {
    double x = 0.0, y = 0.0;
  };
  enum class Role { kAccent, kText, kWeak };
  struct Curve {
    std::vector<Point> points;
    Role role = Role::kAccent;
    bool dashed = false;
  };
  struct Handle {
    Point at;
    std::string name;                         ///< shown as tooltip and read aloud
    bool horizontal = true, vertical = true;  ///< ways that it may be dragged
  };

  virtual void SetAxes(const Axis& x, const Axis& y) = 0;
  virtual const Axis& GetXAxis() const = 0;
  virtual const Axis& GetYAxis() const = 0;
  virtual void SetCurves(std::vector<Curve> curves) = 0;
  virtual const std::vector<Curve>& GetCurves() const = 0;
  /// A dot with lines to the axes.
  virtual void SetLivePoint(const Point& point) = 0;
  virtual void HideLivePoint() = 0;
  /// Null when it is hidden.
  virtual const Point* GetLivePoint() const = 0;
  virtual void SetHandles(std::vector<Handle> handles) = 0;
  virtual const std::vector<Handle>& GetHandles() const = 0;
  /// Where the user wants the handle of a kMsgHandleMoved; kept inside the axes.
  virtual Point GetDragged() const = 0;
};

}  // namespace orv::gui::componentinterface
