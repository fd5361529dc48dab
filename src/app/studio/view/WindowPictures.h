// Pictures past the window that a widget lies in.
#pragma once

class QOpenGLWidget;
class QWidget;

namespace orv::app::view {

/// A picture of a QOpenGLWidget is put together with all other widgets of its window before it is
/// seen, and the program waits until it is drawn. Where hands wait for each picture that is too
/// late: here it is drawn straight into a native window of the widget's own, and seen when the
/// driver is done, while the program goes on. Both ways may take turns.
class WindowPictures {
 public:
  /// The widget gets its native window, where the platform is known to bear that. It outlives this.
  explicit WindowPictures(QOpenGLWidget& widget);

  /// So that a widget within it is seen above such pictures too.
  static void Raise(QWidget& child);

  /// The widget's context is current, and what is drawn next goes to its window; false where that
  /// can't be had now, as while it isn't seen.
  bool Begin();
  /// All is drawn: on to the driver. The context stays current.
  void End();
  /// Between `End` and the picture that is seen.
  bool IsPending() const { return m_fence != nullptr; }
  /// Whether the picture has come to be seen with this call.
  bool Poll();
  /// The picture will not be seen; the context is current.
  void Drop();

 private:
  bool IsCovered() const;

  QOpenGLWidget& m_widget;
  void* m_fence = nullptr;  ///< of the driver
  bool m_isRefused = false;
};

}  // namespace orv::app::view
