#include "app/studio/timeline/model/PlayClock.h"

#include <algorithm>
#include <cmath>

namespace orv::app::timeline {

namespace {

/// A frame is due that little part of itself early: a timer and the clock may differ by a rounding.
constexpr double kEarly = 1e-6;

}  // namespace

void PlayClock::Begin(double now, int frame, const PlaySettings& settings) {
  m_settings = settings;
  m_settings.last = std::max(m_settings.first, m_settings.last);
  const bool within = frame >= m_settings.first && frame <= m_settings.last;
  const int from = m_settings.backwards ? m_settings.last : m_settings.first;
  const int to = m_settings.backwards ? m_settings.first : m_settings.last;
  m_start = within && frame != to ? frame : from;
  m_begun = now;
  m_shown = 0;
}

double PlayClock::CountFrames(double now) const {
  return std::max(0.0, (now - m_begun) * m_settings.rate);
}

double PlayClock::PlaceOf(double count) const {
  const double length = GetLength();
  const double from = m_settings.backwards ? m_settings.last - m_start : m_start - m_settings.first;
  double place = from + count;
  if (m_settings.loop)
    place = std::fmod(place, length);
  else
    place = std::min(place, length - 1.0);
  return m_settings.backwards ? m_settings.last - place : m_settings.first + place;
}

PlayClock::Due PlayClock::Look(double now) {
  long due = static_cast<long>(std::floor(CountFrames(now) + kEarly));
  if (m_settings.everyFrame && due > m_shown + 1) {
    // What was late is not caught up.
    due = m_shown + 1;
    m_begun = now - static_cast<double>(due) / m_settings.rate;
  }
  m_shown = due;
  const double place = PlaceOf(static_cast<double>(due));
  Due result;
  result.frame = static_cast<int>(std::lround(place));
  const int end = m_settings.backwards ? m_settings.first : m_settings.last;
  result.isOver = !m_settings.loop && result.frame == end;
  return result;
}

double PlayClock::GetPlace(double now) const {
  return PlaceOf(CountFrames(now));
}

double PlayClock::GetWait(double now) const {
  return std::max(0.0, m_begun + static_cast<double>(m_shown + 1) / m_settings.rate - now);
}

}  // namespace orv::app::timeline
