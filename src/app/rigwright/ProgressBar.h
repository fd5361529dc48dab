// Progress of long work on stderr.
#pragma once

#include <chrono>
#include <string>

#include "app/session/anyhost/Monitor.h"

namespace orv::app {

class Output;

/// A bar with the time left where stderr is a terminal; else plain lines, never more than one a
/// second. Nothing under --quiet. Cheap enough to be told of every frame.
class ProgressBar {
 public:
  /// `title` says what is going on, such as "resim".
  ProgressBar(Output& output, std::string title);
  /// Takes the bar off the terminal.
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  /// Shows how far the work is that gets it. Ctrl-C cancels that work.
  const Monitor& GetMonitor() const { return m_monitor; }
  /// A text in place of the bar, such as a countdown.
  void Say(const std::string& text);
  /// Takes the bar off the terminal, so that another line can be printed; the next `Set` shows it
  /// again.
  void Clear();

 private:
  using Clock = std::chrono::steady_clock;

  bool IsDue(double interval);
  void Set(long done, long total, double seconds);
  void ShowBar(long done, long total, const std::string& left);
  void ShowLine(long done, long total, const std::string& left);

  const bool m_silent;
  const std::string m_title;
  const Monitor m_monitor;
  Clock::time_point m_shownAt = Clock::now();
  std::string m_said;
  bool m_visible = false;
};

/// Seconds as people read them, such as "0:07" or "1:02:03".
std::string ClockText(double seconds);

}  // namespace orv::app
