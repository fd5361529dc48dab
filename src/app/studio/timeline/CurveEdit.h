// What a hand makes of a recorded curve.
#pragma once

#include <set>
#include <utility>
#include <vector>

#include "app/session/anyhost/TrackEdit.h"

namespace orv::app {

/// Edits of one input's curve: each makes a new one of that from before the drag. Times in seconds,
/// values those of the control.
class CurveEdit {
 public:
  using Track = TrackEdit::Track;
  using Place = std::pair<double, double>;  ///< time and value

  /// `frame` is the frame duration.
  CurveEdit(const Track& base, double frame) : m_base(base), m_frame(frame) {}

  /// The samples at `times` so many frames later and so much higher. Those that change their time
  /// come to stand on frames, in the place of what was there. Values keep within what a control
  /// gives, or the curve had. `moved`, when given, gets the new times.
  Track Move(const std::set<double>& times, long frames, double by,
             std::set<double>* moved = nullptr) const;
  Track Remove(const std::set<double>& times) const;
  /// Straight lines through the frames next to where the hand came by, in any order.
  Track Draw(const std::vector<Place>& stroke) const;
  /// Smoothed where the brush came by, `radius` to both sides, the more the longer it stayed.
  Track Smooth(const std::vector<Place>& stroke, double radius) const;

  /// Samples within a box of times and values, in any order of corners.
  static std::set<double> FindIn(const Track& track, const Place& a, const Place& b);

 private:
  double Hold(double value) const;

  const Track& m_base;
  double m_frame;
};

}  // namespace orv::app
