// Curves, a live point and handles over two axes.
#pragma once

#include <QPixmap>
#include <QWidget>

#include "gui/component/Graph.h"

namespace orv::gui::component::qt {

class GraphView : public QWidget {
 public:
  GraphView(Graph& graph, QWidget* parent);

  /// The component is gone.
  void Release() { m_graph = nullptr; }
  Graph* GetGraph() const { return m_graph; }
  /// `still`: more than the live point has changed.
  void Refresh(bool still);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool event(QEvent* event) override;

 private:
  using Point = Graph::Point;

  QRectF Area() const;
  QPointF ToWidget(const Point& point) const;
  Point ToData(const QPointF& place) const;
  int HandleAt(const QPointF& place) const;
  void PaintAxis(QPainter& painter, const Graph::Axis& axis, bool across) const;
  void PaintCurves(QPainter& painter) const;
  void PaintStill();
  void PaintLive(QPainter& painter) const;
  void PaintHandles(QPainter& painter) const;
  void Nudge(double x, double y);
  void End(bool cancelled);

  Graph* m_graph;
  QPixmap m_still;   ///< all but live point and handles; null when it is to be painted anew
  int m_handle = 0;  ///< that the keyboard moves
  int m_hover = -1;
  bool m_dragging = false, m_nudging = false;
  QPointF m_grip;  ///< from the mouse to the handle
  Point m_before;  ///< the handle's place when the drag began
};

}  // namespace orv::gui::component::qt
