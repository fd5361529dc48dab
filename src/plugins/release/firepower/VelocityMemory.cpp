#include "plugins/release/firepower/VelocityMemory.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "plugins/common/FrameGrid.h"
#include "plugins/common/SaveChunk.h"
#include "plugins/release/firepower/FirepowerSettings.h"

namespace orv::rws::addon {

using Vector = util::Vector3<double>;

namespace {

/// Frame durations that a host can have (s), by which saved data is checked.
constexpr double kShortestFrame = 1e-3, kLongestFrame = 10.0;

}  // namespace

void VelocityMemory::Mark(double time, const Vector& velocity, const FlightRules& rules,
                          double duration) {
  m_marks.push_back({time, velocity, rules, duration});
  m_last = time;
}

bool VelocityMemory::Covers(const FlightRules& rules, double duration) const {
  return !m_marks.empty() && m_marks.back().rules == rules && m_marks.back().duration == duration;
}

Vector VelocityMemory::At(double time) const {
  const double until = std::min(time, m_last) + kFrameTolerance;
  auto mark = std::upper_bound(m_marks.begin(), m_marks.end(), until,
                               [](double t, const Sample& sample) { return t < sample.time; });
  if (mark == m_marks.begin()) return {};
  --mark;
  Flight flight{{}, mark->velocity};
  for (auto frames = std::lround((until - kFrameTolerance - mark->time) / mark->duration);
       frames > 0; --frames)
    flight.Free(mark->rules, mark->duration);
  return flight.velocity;
}

void VelocityMemory::CutBehind(double time) {
  while (!m_marks.empty() && m_marks.back().time > time + kFrameTolerance) m_marks.pop_back();
  m_last = std::min(m_last, time);
}

void VelocityMemory::Save(util::DataChunk& chunk, const char* key) const {
  static_assert(sizeof(Sample) == 7 * sizeof(double), "plain numbers");
  std::vector<double> numbers(m_marks.size() * 7 + 1, m_last);
  if (!m_marks.empty())
    std::memcpy(numbers.data() + 1, m_marks.data(), m_marks.size() * sizeof(Sample));
  chunk.addBytes(key, numbers.data(), numbers.size() * sizeof(double));
}

void VelocityMemory::Load(SaveReader& reader, const util::DataChunk& chunk, const char* key) {
  const std::vector<unsigned char>& bytes = chunk.getBytes(key);
  if (bytes.size() % sizeof(Sample) != sizeof(double)) return reader.Refuse();
  std::vector<Sample> marks(bytes.size() / sizeof(Sample));
  double last = 0.0;
  std::memcpy(&last, bytes.data(), sizeof last);
  if (!marks.empty())
    std::memcpy(marks.data(), bytes.data() + sizeof last, marks.size() * sizeof(Sample));
  double before = -1e18;
  for (const Sample& mark : marks) {
    const bool good = mark.time > before && IsFinite(mark.time) && IsFinite(mark.velocity) &&
                      IsFinite(mark.rules.gravity) && IsFinite(mark.rules.airResistance) &&
                      mark.rules.airResistance >= 0.0 && mark.duration >= kShortestFrame &&
                      mark.duration <= kLongestFrame;
    if (!good) return reader.Refuse();
    before = mark.time;
  }
  // A read goes through the frames, so their number has an end.
  if (!IsFinite(last) ||
      (!marks.empty() && !(last - marks.front().time <= kMostLifeTime + kLongestFrame)))
    return reader.Refuse();
  m_marks = std::move(marks);
  m_last = last;
}

}  // namespace orv::rws::addon
