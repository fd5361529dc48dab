#include "gui/component/Graph.h"

#include <algorithm>
#include <utility>

namespace orv::gui::component {

Graph::Graph(const util::xml::Element& tag) : Element(tag) {}

void Graph::SetAxes(const Axis& x, const Axis& y) {
  m_x = x;
  m_y = y;
  Changed(kRangeChange);
}

void Graph::SetCurves(std::vector<Curve> curves) {
  m_curves = std::move(curves);
  Changed(kItemsChange);
}

void Graph::SetLivePoint(const Point& point) {
  m_live = point;
  Changed(kValueChange);
}

void Graph::HideLivePoint() {
  m_live.reset();
  Changed(kValueChange);
}

void Graph::SetHandles(std::vector<Handle> handles) {
  m_handles = std::move(handles);
  Changed(kItemsChange);
}

bool Graph::DragHandle(int handle, Point to) {
  if (handle < 0 || handle >= static_cast<int>(m_handles.size())) return true;
  const auto within = [](const Axis& axis, double value) {
    return std::clamp(value, std::min(axis.from, axis.to), std::max(axis.from, axis.to));
  };
  const Handle& held = m_handles[handle];
  m_dragged.x = held.horizontal ? within(m_x, to.x) : held.at.x;
  m_dragged.y = held.vertical ? within(m_y, to.y) : held.at.y;
  return Post(kMsgHandleMoved, handle);
}

}  // namespace orv::gui::component
