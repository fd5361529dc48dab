#include "plugins/release/firepower/GunMemory.h"

#include <algorithm>
#include <tuple>

#include "plugins/common/SaveChunk.h"
#include "util/AVar_Latest.h"
#include "util/FrameGrid.h"

namespace orv::rws::addon {

namespace {

/// A part of the state and its key in save data.
template <class T>
struct HistoryRow {
  const char* key;
  T GunState::*part;
};

constexpr auto kHistories = std::make_tuple(
    HistoryRow<double>{"fireTimer", &GunState::fireTimer},
    HistoryRow<double>{"fire", &GunState::fire}, HistoryRow<bool>{"okToFire", &GunState::okToFire},
    HistoryRow<int>{"nrFirePressed", &GunState::nrFirePressed},
    HistoryRow<bool>{"firstFired", &GunState::firstFired},
    HistoryRow<bool>{"timeDelayActivated", &GunState::timeDelayActivated},
    HistoryRow<double>{"timeDelayStart", &GunState::timeDelayStart},
    HistoryRow<bool>{"delayed", &GunState::delayed},
    HistoryRow<double>{"recoil", &GunState::recoil},
    HistoryRow<double>{"currentRecoil", &GunState::currentRecoil},
    HistoryRow<double>{"barrelBack", &GunState::barrelBack},
    HistoryRow<int>{"nrDischarges", &GunState::nrDischarges},
    HistoryRow<int>{"nrBullets", &GunState::nrBullets});

template <class Visit>
void ForEachRow(Visit visit) {
  std::apply([&](const auto&... row) { (visit(row), ...); }, kHistories);
}

/// Far from where counting on would leave the numbers that there are.
constexpr int kMostCounted = 1000000000;

const char kHasRest[] = "barrelHasRest";
const char kRest[] = "barrelRest";

}  // namespace

void GunMemory::Cut(double time) {
  const auto first = std::lower_bound(m_frames.begin(), m_frames.end(), time,
                                      [](const Frame& frame, double t) { return frame.time < t; });
  m_frames.erase(first, m_frames.end());
}

void GunMemory::Store(double time, const GunState& state) {
  m_frames.push_back({time, state});
}

GunState GunMemory::Resume(double before) const {
  if (m_frames.empty()) return {};
  GunState state = m_frames.back().state;
  const double gap = before - m_frames.back().time;
  if (gap <= util::kFrameTolerance) return state;
  state.fireTimer += gap;
  state.fire = 0.0;
  state.timeDelayActivated = state.delayed = false;
  state.recoil = -1.0;
  state.currentRecoil = 0.0;
  return state;
}

void GunMemory::Save(util::DataChunk& chunk) const {
  ForEachRow([&](const auto& row) {
    util::AVar_Latest<std::decay_t<decltype(GunState().*row.part)>> history;
    for (const Frame& frame : m_frames) history.set(frame.time, frame.state.*row.part);
    AddHistory(chunk, row.key, history);
  });
  chunk.addValue(kHasRest, hasRest);
  chunk.addValue(kRest, rest);
}

void GunMemory::Load(SaveReader& reader) {
  std::vector<Frame> frames;
  bool first = true;
  ForEachRow([&](const auto& row) {
    util::AVar_Latest<std::decay_t<decltype(GunState().*row.part)>> history;
    reader.ReadHistory(row.key, history);
    if (first) frames.resize(history.samples.size());
    first = false;
    // The parts of a frame are of one time.
    if (history.samples.size() != frames.size()) return reader.Refuse();
    for (std::size_t i = 0; i < frames.size(); ++i) {
      frames[i].time = history.samples[i].time;
      frames[i].state.*row.part = history.samples[i].value;
    }
  });
  for (std::size_t i = 1; i < frames.size(); ++i)
    if (!(frames[i - 1].time < frames[i].time)) reader.Refuse();
  for (const Frame& frame : frames)
    for (const int count :
         {frame.state.nrBullets, frame.state.nrDischarges, frame.state.nrFirePressed})
      if (count < 0 || count > kMostCounted) reader.Refuse();
  reader.Read(kHasRest, hasRest);
  reader.ReadStruct(kRest, rest);
  if (!IsFinite(rest)) reader.Refuse();
  if (reader.IsGood()) m_frames = std::move(frames);
}

}  // namespace orv::rws::addon
