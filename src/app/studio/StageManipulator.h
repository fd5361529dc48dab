// The manipulator in a view of the scene.
#pragma once

#include <QLabel>
#include <QPointer>
#include <QRect>
#include <QTimer>
#include <functional>
#include <string>

#include "app/studio/NodeManipulation.h"
#include "app/studio/view/StageInteractor.h"
#include "app/studio/view/manipulator/Manipulator.h"
#include "app/studio/view/packet/Lines.h"

class QMenu;

namespace orv::app {

namespace view {
class StageView;
}

/// A view's mouse and keys as a manipulator wants them, and its numbers beside the pointer. The
/// handles stand in the active pane.
class StageManipulator : public view::StageInteractor {
 public:
  /// All outlive this one, but for the view.
  StageManipulator(rws::core::CoreImplementation& core, NodeManipulation& nodes,
                   view::StageView& view);
  ~StageManipulator() override;

  /// Where the user's choices are kept, by key; an empty value is the default.
  std::function<std::string(const char* key)> kept;
  std::function<void(const char* key, const std::string& value)> keep;
  void TakeChoices();
  /// The entries of the view's menu.
  void AddTo(QMenu& menu);

  // StageInteractor
  bool IsBusy() const override { return m_manipulator.IsDragging(); }
  bool OnPress(QMouseEvent& event) override;
  bool OnMove(QMouseEvent& event) override;
  bool OnRelease(QMouseEvent& event) override;
  bool OnWheel(QWheelEvent& event) override;
  bool OnKey(QKeyEvent& event) override;
  bool WantsKey(const QKeyEvent& event) const override;
  void OnFocusLost() override;
  void Draw(view::FramePacket& packet) override;

 private:
  struct Entry;

  void Choose(const char* key, const std::string& value);
  view::Tool ToolOf(int key) const;
  bool IsOurs(const QKeyEvent& event) const;
  void BeginAnywhere(view::Tool tool);
  void DragKey(const QKeyEvent& event);
  void DragModifier(const QKeyEvent& event, bool isPress);
  bool TakeArrow(const QKeyEvent& event);
  void Drop();
  void Finish();
  void Cancel();
  void End();
  view::Manipulator::Hand HandAt(const QPointF& at, Qt::KeyboardModifiers keys);
  QRect GetPane() const;
  void ShowNumbers();
  std::string GetNumbers() const;
  std::string GetHint() const;
  /// In the picture's corner; for a while, unless a drag goes on.
  void ShowStatus(const std::string& text);

  rws::core::CoreImplementation& m_core;
  NodeManipulation& m_nodes;
  view::StageView& m_view;
  view::Manipulator m_manipulator;
  view::LineSet m_lines;
  QPointer<QLabel> m_numbers, m_status;
  QTimer m_statusTime;
  QPointF m_at;  ///< of the pointer, as far as the view knows
  QPointF m_pressed;
  bool m_isHeld = false;    ///< a handle is, by the left button
  bool m_isBeyond = false;  ///< the pointer has left where it was pressed
  bool m_wasDragging = false;
};

}  // namespace orv::app
