#include "app/session/anyhost/TrackEdit.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "app/session/anyhost/FrameTimes.h"

namespace orv::app {

namespace {

using EditedTrack = TrackEdit::Track;

constexpr double kBellEnds = 4.0;  // standard deviations beyond which a bell is nothing

/// The mean around `time`, of frames: what was recorded in between no rig has seen.
double BellMean(const EditedTrack& track, double time, double deviation, double frame) {
  if (!(deviation > 0.0)) return track.value(time);
  const auto reach = static_cast<long>(std::ceil(kBellEnds * deviation / frame));
  double sum = 0.0, weights = 0.0;
  for (long i = -reach; i <= reach; ++i) {
    const double away = static_cast<double>(i) * frame;
    const double weight = std::exp(-0.5 * away * away / (deviation * deviation));
    sum += weight * track.value(time + away);
    weights += weight;
  }
  return sum / weights;
}

double Drawn(const std::vector<std::pair<double, double>>& points, double time) {
  if (time <= points.front().first) return points.front().second;
  for (std::size_t i = 1; i < points.size(); ++i) {
    const auto& [from, a] = points[i - 1];
    const auto& [to, b] = points[i];
    if (time <= to) return a + (b - a) * (time - from) / (to - from);
  }
  return points.back().second;
}

double Edited(const EditedTrack& track, const TrackEdit& edit, double time, double frame) {
  switch (edit.kind) {
    case TrackEdit::Kind::kSmooth:
      return BellMean(track, time, edit.amount, frame);
    case TrackEdit::Kind::kShift:
      return track.value(std::clamp(time - edit.amount, edit.span.from, edit.span.to));
    case TrackEdit::Kind::kScale:
      return edit.about + (track.value(time) - edit.about) * edit.amount;
    case TrackEdit::Kind::kCut:
      return 0.0;
    case TrackEdit::Kind::kBlend:
      return edit.other->value(time);
    case TrackEdit::Kind::kDraw:
      return Drawn(edit.points, time);
  }
  return track.value(time);
}

/// How much of the edit counts: 1 but for the fades.
double ShareAt(const TrackEdit& edit, double time) {
  if (!(edit.fade > 0.0)) return 1.0;
  const double near = std::min(time - edit.span.from, edit.span.to - time);
  return std::clamp(near / edit.fade, 0.0, 1.0);
}

/// Times of the edited stretch: its frames, and where the track has samples of its own.
std::vector<double> EditedTimes(const EditedTrack& track, const TrackEdit& edit,
                                const FrameTimes& frames) {
  std::vector<double> times;
  for (long i = frames.first; i <= frames.last; ++i) times.push_back(frames.Time(i));
  for (const auto& sample : track.samples)
    if (sample.time >= edit.span.from && sample.time <= edit.span.to) times.push_back(sample.time);
  std::sort(times.begin(), times.end());
  times.erase(std::unique(times.begin(), times.end()), times.end());
  return times;
}

}  // namespace

EditedTrack EditTrack(const EditedTrack& track, const TrackEdit& edit, double frame) {
  const FrameTimes frames(edit.span.from, edit.span.to, frame);
  const std::vector<double> times = EditedTimes(track, edit, frames);
  if (times.empty()) return track;
  EditedTrack result = track;
  auto& samples = result.samples;
  const auto first = std::find_if(samples.begin(), samples.end(),
                                  [&](const auto& sample) { return sample.time >= times.front(); });
  const auto last = std::find_if(first, samples.end(),
                                 [&](const auto& sample) { return sample.time > times.back(); });
  EditedTrack fresh;
  // Frames beside the stretch keep what they read: those up to the next sample have one of their
  // own.
  const auto keep = [&](long i) { fresh.set(frames.Time(i), track.value(frames.Time(i))); };
  long before = frames.first - 1;
  while (first != samples.begin() && frames.Time(before - 1) > std::prev(first)->time) --before;
  for (; before < frames.first; ++before)
    if (first == samples.begin() || frames.Time(before) > std::prev(first)->time) keep(before);
  for (const double time : times) {
    const double old = track.value(time);
    const double share = ShareAt(edit, time);
    const double edited = share > 0.0 ? Edited(track, edit, time, frame) : old;
    fresh.set(time, share < 1.0 ? old + (edited - old) * share : edited);
  }
  for (long i = frames.last + 1;
       last == samples.end() ? i == frames.last + 1 : frames.Time(i) < last->time; ++i)
    keep(i);
  samples.insert(samples.erase(first, last), fresh.samples.begin(), fresh.samples.end());
  return result;
}

}  // namespace orv::app
