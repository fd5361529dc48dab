// What a window paints and listens to in a view.
#pragma once

#include <QSize>
#include <QString>

#include "gui/componentinterface/View.h"

class QContextMenuEvent;
class QEvent;
class QKeyEvent;
class QMouseEvent;
class QPainter;
class QPoint;
class QWheelEvent;
class QWidget;

namespace orv::gui::component::qt {

/// Handed to a view by `SetHandler`. Positions and sizes are the widget's; use its palette and
/// font, and Scaled for lengths. A handler that takes keys says so, and then shows that it has the
/// focus.
class ViewHandler : public componentinterface::View::Handler {
 public:
  virtual void Paint(QPainter& painter, QWidget& widget) = 0;
  /// A widget of the handler's own that fills the view and takes its events, made when the view has
  /// one; the view's widget, which is `parent`, owns it. Null for none.
  virtual QWidget* MakeContent(QWidget* /*parent*/) { return nullptr; }
  /// Preferred and least size; invalid for the document's.
  virtual QSize GetSizeHint(const QWidget&) const { return {}; }
  virtual QSize GetMinimumSize(const QWidget&) const { return {}; }
  virtual bool TakesKeys() const { return false; }

  // Each gets its event accepted; `ignore()` hands it to the widget around.

  virtual void MousePressed(QMouseEvent& event);
  virtual void MouseMoved(QMouseEvent& event);  ///< also without a button
  virtual void MouseReleased(QMouseEvent& event);
  virtual void MouseDoubleClicked(QMouseEvent& event);
  virtual void MouseLeft() {}
  virtual void Wheel(QWheelEvent& event);
  virtual void KeyPressed(QKeyEvent& event);
  virtual void KeyReleased(QKeyEvent& event);
  virtual void FocusChanged(bool /*focus*/) {}
  virtual void Resized(const QWidget&) {}
  /// Tooltip at a place; empty for the component's.
  virtual QString GetTooltip(const QPoint&) const { return {}; }
  /// What is read aloud as its value.
  virtual QString GetAccessibleValue() const { return {}; }
};

}  // namespace orv::gui::component::qt
