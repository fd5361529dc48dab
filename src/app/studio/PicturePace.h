// When the pictures of a take are drawn, and how they came.
#pragma once

#include <deque>
#include <vector>

namespace orv::app {

/// How the pictures have come since the latest take began, or without one the program.
struct PictureFigures {
  long painted = 0;
  long dropped = 0;        ///< frames of the take that no picture has shown
  double perSecond = 0.0;  ///< of the last second
  long latencies = 0;      ///< how many the next two are of; they are 0 without any
  double medianMs = 0.0;   ///< from the poll that found a mapped control moved to the picture
  double p95Ms = 0.0;      ///< 19 of 20 came at least as fast
};

/// A picture holds its take up for as long as it takes to draw. So it waits while the take has
/// frames to catch up on, but not for ever: some five come a second where they can be drawn in half
/// of the time, and else the take has nearly as much of it. Times are seconds of any clock that
/// runs on.
class PicturePace {
 public:
  /// From the begin of one picture to that of the next, where a tick of the take may come between.
  static constexpr double kLongestPause = 0.14;
  /// From its end, when it has taken so long.
  static constexpr double kLongestRest = 0.15;

  /// `frame` is the one that the take begins at.
  void BeginTake(int frame);
  bool MayDraw(double now, bool isBehind) const {
    return !isBehind || (GetPause(now) >= kLongestPause && now - m_ended >= m_rest);
  }
  /// Since the latest picture was begun.
  double GetPause(double now) const { return now - m_begun; }
  void NoteBegin(double now);
  /// A picture can be seen now that shows the take's frames up to `frame`. `latencies` are those
  /// (ms) of the moves that it is the first to show.
  void NotePicture(double now, int frame, const std::vector<double>& latencies);
  PictureFigures GetFigures(double now) const;

 private:
  PictureFigures m_figures;
  std::deque<double> m_seen;       ///< when, for the last second
  std::deque<double> m_latencies;  ///< ms, the latest
  double m_begun = -1.0, m_ended = -1.0;
  double m_rest = 0.0;  ///< that the take has behind the latest picture (s)
  bool m_isBegun = false;
  int m_frame = 0;  ///< newest that has been shown
};

}  // namespace orv::app
