// Edits of recorded inputs.
#pragma once

#include <utility>
#include <vector>

#include "app/session/anyhost/TimeSpan.h"
#include "util/AVar_Linear.h"

namespace orv::app {

/// What happens to a recorded input within a stretch of time. Values are those of the control,
/// before dead zone and curve.
struct TrackEdit {
  enum class Kind {
    kSmooth,  ///< the mean of what is around, weighted by a bell
    kShift,   ///< the same movement later; what is next to the stretch is held
    kScale,   ///< away from `about`
    kCut,     ///< at rest, which is 0
    kBlend,   ///< another track
    kDraw     ///< straight lines through points, held before the first and behind the last
  };
  using Track = util::AVar_Linear<double>;

  Kind kind = Kind::kSmooth;
  TimeSpan span;        ///< s; nothing changes outside
  double amount = 0.0;  ///< the bell's standard deviation (s), the shift (s), the factor
  double about = 0.0;
  double fade = 0.0;  ///< s at either end, within `span`, over which the edit comes and goes
  const Track* other = nullptr;                     ///< of kBlend
  std::vector<std::pair<double, double>> points{};  ///< of kDraw: times (s), rising, and values
};

/// The edited track. Within the stretch it has a sample at each frame (`frame` s apart) beside
/// those that it had; those outside stay to the bit, and so does what frames outside read.
TrackEdit::Track EditTrack(const TrackEdit::Track& track, const TrackEdit& edit, double frame);

}  // namespace orv::app
