// Whoever plays by what our windows hear.
#pragma once

namespace orv::gui {

/// What a window is told of a pen.
struct PenEvent {
  double left = 0.0, top = 0.0;              ///< in the window, 0 to 1
  double screenLeft = 0.0, screenTop = 0.0;  ///< on all screens, and so on the tablet, 0 to 1
  double pressure = 0.0;                     ///< 0 to 1
  double tiltRight = 0.0, tiltNear = 0.0;    ///< degrees from upright; towards the user
  double twist = 0.0;                        ///< degrees, clockwise
  bool tip = false, firstButton = false, secondButton = false;
};

/// Hears what windows are told of keys and pens, ahead of their widgets. A toolkit's watch calls
/// it.
class InputSink {
 public:
  virtual ~InputSink() = default;

  /// A key by its place went down or up; the code is that of Linux' input events. True when widgets
  /// are not to get it.
  virtual bool OnKey(int code, bool down) = 0;
  /// One of the program's windows has become the active one, or none is any more.
  virtual void OnActive(bool active) = 0;
  /// Keys have become text, or choose in a menu, or no longer do.
  virtual void OnTyping(bool typing) = 0;
  /// A pen has moved over one of the windows, touching or hovering. Widgets get it as well.
  virtual void OnPen(const PenEvent& /*pen*/) {}
  /// It is out of reach of the tablet.
  virtual void OnPenGone() {}
};

}  // namespace orv::gui
