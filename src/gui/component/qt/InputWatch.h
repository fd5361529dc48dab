// Keys and pens of our windows ahead of their widgets.
#pragma once

#include <QObject>
#include <set>

class QKeyEvent;
class QTabletEvent;
class QWindow;

namespace orv::gui {
class InputSink;
}

namespace orv::gui::component::qt {

/// Tells a sink of all keys and pens that reach any window of the process. Filters that are
/// installed later come first, and what they take is not told.
class InputWatch : public QObject {
 public:
  /// `sink` must outlive it.
  explicit InputWatch(InputSink& sink);

  /// Tells where focus and typing stand now.
  void TellState();
  /// Takes the focus off a text field, so that keys are keys.
  static void LeaveTextField();

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  bool OnKey(QKeyEvent& event);
  void OnPen(const QWindow& window, const QTabletEvent& event);

  InputSink& m_sink;
  std::set<int> m_taken;  ///< codes of keys whose press widgets did not get
};

/// The place of a key, as Key codes of Linux' input events: by its scan code; where the platform
/// tells none, as that of a US keyboard. -1 for a key that is not known.
int KeyCodeOf(const QKeyEvent& event);

}  // namespace orv::gui::component::qt
