// Hands in a view that are no navigation and no selection.
#pragma once

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace orv::app::view {

struct FramePacket;

/// Is told of a view's events before the view takes them for itself. True: the event was for this
/// one. A mouse button that moves the eye or selects stays the view's until it is let go.
class StageInteractor {
 public:
  virtual ~StageInteractor() = default;
  /// Whether something goes on that all events belong to.
  virtual bool IsBusy() const = 0;
  virtual bool OnPress(QMouseEvent& event) = 0;
  virtual bool OnMove(QMouseEvent& event) = 0;
  virtual bool OnRelease(QMouseEvent& event) = 0;
  virtual bool OnWheel(QWheelEvent& event) = 0;
  /// Pressed or, by the event's type, released.
  virtual bool OnKey(QKeyEvent& event) = 0;
  /// Whether a key comes as one, and not as a shortcut of some menu.
  virtual bool WantsKey(const QKeyEvent& event) const = 0;
  /// The keyboard has gone elsewhere.
  virtual void OnFocusLost() = 0;
  /// Adds to a picture whose eye stands.
  virtual void Draw(FramePacket& packet) = 0;
};

}  // namespace orv::app::view
