// Progress of long work on stderr.
#pragma once

#include <chrono>
#include <string>

namespace orv::app {

class Output;

/// A bar with the time left where stderr is a terminal; else plain lines, never more than one a
/// second. Nothing under --quiet. Cheap enough to be told of every frame.
class ProgressBar {
 public:
  /// `title` says what is going on, such as "resim"; `total` is the number of steps.
  ProgressBar(Output& output, std::string title, long total);
  /// Takes the bar off the terminal.
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  void set(long done);
  /// A text in place of the bar, such as a countdown.
  void say(const std::string& text);
  /// Takes the bar off the terminal, so that another line can be printed; the next `set` shows it
  /// again.
  void clear();

  double seconds() const;  ///< since construction

 private:
  using Clock = std::chrono::steady_clock;

  bool isDue(double interval);
  void showBar(long done);
  void showLine(long done);
  std::string timeLeft(long done) const;

  const bool m_silent;
  const std::string m_title;
  const long m_total;
  const Clock::time_point m_start;
  Clock::time_point m_shownAt;
  std::string m_said;
  bool m_visible = false;
};

/// Seconds as people read them, such as "0:07" or "1:02:03".
std::string clockText(double seconds);

}  // namespace orv::app
