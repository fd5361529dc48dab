// `graph`: curves over two axes.
#pragma once

#include <optional>

#include "gui/GuiMessages.h"
#include "gui/StdComponent.h"
#include "gui/componentinterface/Graph.h"

namespace orv::gui::component {

class Graph : public Element<componentinterface::Graph> {
 public:
  explicit Graph(const util::xml::Element& tag);
  const char* GetElement() const override { return "graph"; }

  void SetAxes(const Axis& x, const Axis& y) override;
  const Axis& GetXAxis() const override { return m_x; }
  const Axis& GetYAxis() const override { return m_y; }
  void SetCurves(std::vector<Curve> curves) override;
  const std::vector<Curve>& GetCurves() const override { return m_curves; }
  void SetLivePoint(const Point& point) override;
  void HideLivePoint() override;
  const Point* GetLivePoint() const override { return m_live ? &*m_live : nullptr; }
  void SetHandles(std::vector<Handle> handles) override;
  const std::vector<Handle>& GetHandles() const override { return m_handles; }
  Point GetDragged() const override { return m_dragged; }

  /// The toolkit's words. Each returns false when a listener destroyed the component.
  bool BeginDrag() { return Post(kMsgEditBegin); }
  bool DragHandle(int handle, Point to);
  bool EndDrag(bool cancelled) { return Post(kMsgEditEnd, cancelled); }

 private:
  Axis m_x, m_y;
  std::vector<Curve> m_curves;
  std::vector<Handle> m_handles;
  std::optional<Point> m_live;
  Point m_dragged;
};

}  // namespace orv::gui::component
