#include "plugins/release/firepower/VelocityMemory.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "plugins/common/SaveChunk.h"
#include "plugins/release/firepower/GunSettings.h"
#include "util/FrameGrid.h"

namespace orv::rws::addon {

using Vector = util::Vector3<double>;

namespace {

/// Frame durations that a host can have (s), by which saved data is checked.
constexpr double kShortestFrame = 1e-3, kLongestFrame = 10.0;

template <class T>
void Append(std::vector<unsigned char>& bytes, const std::vector<T>& rows) {
  const auto* first = reinterpret_cast<const unsigned char*>(rows.data());
  bytes.insert(bytes.end(), first, first + rows.size() * sizeof(T));
}

/// Whether the times of the rows rise.
template <class T>
bool IsRising(const std::vector<T>& rows) {
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (!IsFinite(rows[i].time) || (i > 0 && !(rows[i - 1].time < rows[i].time))) return false;
  return true;
}

/// The last row at or before `time`, or the end.
template <class T>
auto LatestAt(const std::vector<T>& rows, double time) {
  const auto behind = std::upper_bound(rows.begin(), rows.end(), time,
                                       [](double t, const T& row) { return t < row.time; });
  return behind == rows.begin() ? rows.end() : behind - 1;
}

}  // namespace

void VelocityMemory::Mark(double time, const Vector& velocity, const FlightRules& rules,
                          double duration) {
  if (!Covers(rules, duration)) m_spans.push_back({time, rules, duration});
  m_marks.push_back({time, velocity});
  m_last = time;
}

bool VelocityMemory::Covers(const FlightRules& rules, double duration) const {
  return !m_spans.empty() && m_spans.back().rules == rules && m_spans.back().duration == duration;
}

Vector VelocityMemory::At(double time) const {
  const double until = std::min(time, m_last);
  const auto mark = LatestAt(m_marks, until + util::kFrameTolerance);
  if (mark == m_marks.end()) return {};
  const Span& span = *LatestAt(m_spans, mark->time);
  Flight flight{{}, mark->velocity};
  for (auto frames = util::nearestFrame(until - mark->time, span.duration); frames > 0; --frames)
    flight.Free(span.rules, span.duration);
  return flight.velocity;
}

bool VelocityMemory::IsTurnedUntil(double time) const {
  for (std::size_t i = 1; i < m_marks.size(); ++i) {
    const Sample& last = m_marks[i - 1];
    const Sample& mark = m_marks[i];
    if (mark.time > time + util::kFrameTolerance) break;
    // Other rules act in the frame that ends at their mark.
    const Span& until = *LatestAt(m_spans, mark.time);
    Flight flight{{}, last.velocity};
    flight.Free(LatestAt(m_spans, last.time)->rules,
                std::max(mark.time - last.time - until.duration, 0.0));
    flight.Free(until.rules, std::min(until.duration, mark.time - last.time));
    const double most = 1e-6 * (1.0 + last.velocity.length());
    if ((flight.velocity - mark.velocity).length() > most) return true;
  }
  return false;
}

void VelocityMemory::CutBehind(double time) {
  const double last = time + util::kFrameTolerance;
  while (!m_marks.empty() && m_marks.back().time > last) m_marks.pop_back();
  while (!m_spans.empty() && m_spans.back().time > last) m_spans.pop_back();
  m_last = std::min(m_last, time);
}

void VelocityMemory::Save(util::DataChunk& chunk, const char* key) const {
  static_assert(sizeof(Sample) == 4 * sizeof(double) && sizeof(Span) == sizeof(Sample));
  std::vector<unsigned char> bytes;
  bytes.reserve((m_spans.size() + m_marks.size()) * sizeof(Span) + 2 * sizeof(double));
  Append(bytes, std::vector<double>{m_last, static_cast<double>(m_spans.size())});
  Append(bytes, m_spans);
  Append(bytes, m_marks);
  chunk.addBytes(key, bytes.data(), bytes.size());
}

void VelocityMemory::Load(SaveReader& reader, const util::DataChunk& chunk, const char* key) {
  const std::vector<unsigned char>& bytes = chunk.getBytes(key);
  double head[2] = {};
  if (bytes.size() < sizeof head || (bytes.size() - sizeof head) % sizeof(Span) != 0)
    return reader.Refuse();
  std::memcpy(head, bytes.data(), sizeof head);
  const std::size_t rows = (bytes.size() - sizeof head) / sizeof(Span);
  if (!(head[1] >= 1.0 && head[1] < static_cast<double>(rows))) return reader.Refuse();
  std::vector<Span> spans(static_cast<std::size_t>(head[1]));
  std::vector<Sample> marks(rows - spans.size());
  const unsigned char* from = bytes.data() + sizeof head;
  std::memcpy(spans.data(), from, spans.size() * sizeof(Span));
  std::memcpy(marks.data(), from + spans.size() * sizeof(Span), marks.size() * sizeof(Sample));
  bool good = IsRising(spans) && IsRising(marks) && spans.front().time == marks.front().time;
  for (const Span& span : spans)
    good = good && IsFinite(span.rules.gravity) && IsFinite(span.rules.airResistance) &&
           span.rules.airResistance >= 0.0 && span.duration >= kShortestFrame &&
           span.duration <= kLongestFrame;
  for (const Sample& mark : marks) good = good && IsFinite(mark.velocity);
  // A read goes through the frames, so their number has an end.
  if (!good || !(head[0] - marks.front().time <= kMostLifeTime + kLongestFrame))
    return reader.Refuse();
  m_spans = std::move(spans);
  m_marks = std::move(marks);
  m_last = head[0];
}

}  // namespace orv::rws::addon
