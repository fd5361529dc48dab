#include "app/studio/timeline/CurveEdit.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace orv::app {

double CurveEdit::Hold(double value) const {
  double least = -1.0, most = 1.0;
  for (const auto& sample : m_base.samples) {
    least = std::min(least, sample.value);
    most = std::max(most, sample.value);
  }
  return std::clamp(value, least, most);
}

CurveEdit::Track CurveEdit::Move(const std::set<double>& times, long frames, double by,
                                 std::set<double>* moved) const {
  Track result;
  result.defaultValue = m_base.defaultValue;
  for (const auto& sample : m_base.samples)
    if (times.count(sample.time) == 0) result.samples.push_back(sample);
  for (const auto& sample : m_base.samples) {
    if (times.count(sample.time) == 0) continue;
    const double time =
        frames == 0 ? sample.time
                    : static_cast<double>(std::lround(sample.time / m_frame) + frames) * m_frame;
    result.set(time, by == 0.0 ? sample.value : Hold(sample.value + by));
    if (moved) moved->insert(time);
  }
  return result;
}

CurveEdit::Track CurveEdit::Remove(const std::set<double>& times) const {
  Track result = m_base;
  auto& samples = result.samples;
  samples.erase(std::remove_if(samples.begin(), samples.end(),
                               [&](const auto& sample) { return times.count(sample.time) != 0; }),
                samples.end());
  return result;
}

CurveEdit::Track CurveEdit::Draw(const std::vector<Place>& stroke) const {
  std::map<long, double> frames;
  for (const auto& [time, value] : stroke) frames[std::lround(time / m_frame)] = Hold(value);
  TrackEdit edit;
  edit.kind = TrackEdit::Kind::kDraw;
  for (const auto& [frame, value] : frames)
    edit.points.emplace_back(static_cast<double>(frame) * m_frame, value);
  if (edit.points.empty()) return m_base;
  edit.span = {edit.points.front().first, edit.points.back().first};
  return EditTrack(m_base, edit, m_frame);
}

CurveEdit::Track CurveEdit::Smooth(const std::vector<Place>& stroke, double radius) const {
  Track result = m_base;
  TrackEdit edit;
  edit.kind = TrackEdit::Kind::kSmooth;
  edit.amount = edit.fade = 0.5 * radius;
  for (const Place& place : stroke) {
    edit.span = {place.first - radius, place.first + radius};
    // Outside of what was recorded there is nothing to smooth.
    if (m_base.samples.empty()) break;
    edit.span.from = std::max(edit.span.from, m_base.samples.front().time);
    edit.span.to = std::min(edit.span.to, m_base.samples.back().time);
    if (edit.span.from < edit.span.to) result = EditTrack(result, edit, m_frame);
  }
  return result;
}

std::set<double> CurveEdit::FindIn(const Track& track, const Place& a, const Place& b) {
  std::set<double> found;
  const auto [from, to] = std::minmax(a.first, b.first);
  const auto [low, high] = std::minmax(a.second, b.second);
  for (const auto& sample : track.samples)
    if (sample.time >= from && sample.time <= to && sample.value >= low && sample.value <= high)
      found.insert(sample.time);
  return found;
}

}  // namespace orv::app
