#include "core/take/InputHistory.h"

#include <algorithm>

#include "unidevice/Control.h"
#include "unidevice/Device.h"
#include "unidevice/Driver.h"
#include "unidevice/DriverManager.h"
#include "unidevice/DummyDriver.h"
#include "util/FrameGrid.h"

namespace orv::rws::core {

namespace {

constexpr std::size_t kMostMoves = 4096;

}  // namespace

InputHistory::AsOf::AsOf(const InputHistory& history, double clock) {
  for (const Track& track : history.m_tracks) {
    const double then = track.moments[MomentAt(track, clock)].value;
    if (then == track.control->current) continue;
    m_now.emplace_back(track.control, track.control->current);
    track.control->current = then;
  }
}

InputHistory::AsOf::~AsOf() {
  for (const auto& [control, value] : m_now) control->current = value;
}

void InputHistory::Clear() {
  m_tracks.clear();
  m_moves.clear();
  m_isEmpty = true;
}

/// The last one at or before `clock`; the first where all are later.
std::size_t InputHistory::MomentAt(const Track& track, double clock) {
  std::size_t at = track.moments.size() - 1;
  while (at > 0 && track.moments[at].clock > clock + util::kFrameTolerance) --at;
  return at;
}

void InputHistory::Note(double clock) {
  m_latest = m_isEmpty ? clock : std::max(clock, m_latest);
  m_isEmpty = false;
  const unidevice::DriverManager& drivers = unidevice::DriverManager::instance();
  const std::uint64_t generation = unidevice::DriverManager::generation();
  if (generation != m_generation) m_tracks.clear();
  m_generation = generation;
  std::size_t next = 0;
  bool moved = false;
  for (int i = 0; i < drivers.count(); ++i) {
    const unidevice::Driver& driver = *drivers.driver(i);
    if (&driver == &drivers.dummyDriver()) continue;
    for (const unidevice::Device* device : driver.devices) {
      if (device->isPlayed()) continue;
      for (int c = 0; c < device->controlCount(); ++c)
        moved = NoteControl(next++, *device->control(c), m_latest) || moved;
    }
  }
  m_tracks.resize(next);
  if (!moved) return;
  if (m_moves.size() >= kMostMoves) m_moves.erase(m_moves.begin());
  m_moves.push_back(m_latest);
}

/// True where a mapped one has moved.
bool InputHistory::NoteControl(std::size_t index, unidevice::Control& control, double clock) {
  // A device may get more controls while it is there.
  if (index >= m_tracks.size() || m_tracks[index].control != &control) {
    const auto at = m_tracks.begin() + static_cast<std::ptrdiff_t>(index);
    m_tracks.insert(at, Track{&control, {{clock, control.current}}});
    return false;
  }
  std::vector<Moment>& moments = m_tracks[index].moments;
  if (moments.back().value == control.current) return false;
  moments.push_back({clock, control.current});
  return !control.targets.empty();
}

void InputHistory::DropBefore(double clock) {
  for (Track& track : m_tracks) {
    if (track.moments.size() == 1) continue;
    const auto kept = static_cast<std::ptrdiff_t>(MomentAt(track, clock));
    track.moments.erase(track.moments.begin(), track.moments.begin() + kept);
  }
}

std::vector<double> InputHistory::TakeMoves(double clock) {
  const auto end = std::upper_bound(m_moves.begin(), m_moves.end(), clock + util::kFrameTolerance);
  std::vector<double> moves(m_moves.begin(), end);
  m_moves.erase(m_moves.begin(), end);
  return moves;
}

}  // namespace orv::rws::core
