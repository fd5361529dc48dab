#include "adaptor/headless/Channel.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "util/Quat.h"

namespace orv::rws::adaptor::headless {

namespace {

using util::Quat;

/// Above this cosine the arc is so short that the chord serves better than a division by its sine.
constexpr double kNearlyParallel = 0.9995;

bool WellFormed(const std::vector<double>& times, const std::vector<double>& values,
                std::size_t perKey) {
  if (values.size() != times.size() * perKey) return false;
  for (std::size_t i = 0; i < times.size(); ++i) {
    if (!std::isfinite(times[i]) || (i > 0 && !(times[i] > times[i - 1]))) return false;
  }
  return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

Quat<double> QuatAt(const double* v) {
  return {v[0], v[1], v[2], v[3]};
}

void Store(const Quat<double>& q, double* v) {
  v[0] = q.x;
  v[1] = q.y;
  v[2] = q.z;
  v[3] = q.w;
}

void Slerp(const double* a, const double* b, double s, double* out) {
  if (std::equal(a, a + 4, b)) {  // what stands still does so to the bit
    std::copy_n(a, 4, out);
    return;
  }
  const Quat<double> from = QuatAt(a).normalized();
  Quat<double> to = QuatAt(b).normalized();
  double cosine = from.x * to.x + from.y * to.y + from.z * to.z + from.w * to.w;
  if (cosine < 0.0) {
    to = -to;
    cosine = -cosine;
  }
  double p = 1.0 - s;
  double q = s;
  if (cosine < kNearlyParallel) {
    const double angle = std::acos(cosine);
    const double sine = std::sin(angle);
    p = std::sin(p * angle) / sine;
    q = std::sin(q * angle) / sine;
  }
  Quat<double> r(p * from.x + q * to.x, p * from.y + q * to.y, p * from.z + q * to.z,
                 p * from.w + q * to.w);
  r.normalize();
  Store(r, out);
}

}  // namespace

Channel::Channel(ChannelPath path, Interpolation mode) : m_path(path), m_mode(mode) {
  static const auto none = std::make_shared<std::vector<double>>();
  m_times = none;
}

/// The times, copied where another channel holds them too.
std::vector<double>& Channel::OwnTimes() {
  if (m_times.use_count() > 1) m_times = std::make_shared<std::vector<double>>(*m_times);
  return *m_times;
}

void Channel::ShareTimes(const Channel& other) {
  const std::vector<double>& theirs = other.GetTimes();
  // Bits count: an exact save tells 0 from -0.
  if (m_times != other.m_times && GetKeyCount() == theirs.size() && !IsEmpty() &&
      std::memcmp(m_times->data(), theirs.data(), GetKeyCount() * sizeof(double)) == 0)
    m_times = other.m_times;
}

int Channel::ValuesPerKey() const {
  return ComponentCount(m_path) * (m_mode == Interpolation::kCubicSpline ? 3 : 1);
}

bool Channel::SetKeys(std::vector<double> times, std::vector<double> values) {
  if (!WellFormed(times, values, static_cast<std::size_t>(ValuesPerKey()))) return false;
  m_times = std::make_shared<std::vector<double>>(std::move(times));
  m_values = std::move(values);
  m_cursor = 0;
  return true;
}

bool Channel::SetKey(double time, const double* value, double frameDuration) {
  const std::size_t n = static_cast<std::size_t>(ComponentCount(m_path));
  if (!std::isfinite(time) ||
      !std::all_of(value, value + n, [](double v) { return std::isfinite(v); }))
    return false;
  if (m_mode != Interpolation::kLinear && !Bake(frameDuration)) return false;
  const auto at = std::lower_bound(m_times->begin(), m_times->end(), time - kSameTime);
  const auto index = at - m_times->begin();
  const auto first = m_values.begin() + index * static_cast<std::ptrdiff_t>(n);
  if (at != m_times->end() && *at <= time + kSameTime) {
    std::copy(value, value + n, first);
    return true;
  }
  m_values.insert(first, value, value + n);
  std::vector<double>& times = OwnTimes();
  times.insert(times.begin() + index, time);
  m_cursor = 0;
  return true;
}

bool Channel::ReplaceKeys(double start, double end, const std::vector<double>& times,
                          const std::vector<double>& values, double frameDuration) {
  const std::size_t n = static_cast<std::size_t>(ComponentCount(m_path));
  if (!(start <= end) || !WellFormed(times, values, n)) return false;
  const bool partStays =
      !IsEmpty() && (m_times->front() < start - kSameTime || m_times->back() > end + kSameTime);
  Channel next(m_path);
  if (partStays) {
    next = *this;
    if (!next.Bake(frameDuration)) return false;
  }
  std::vector<double>& nextTimes = next.OwnTimes();
  const auto from = std::lower_bound(nextTimes.begin(), nextTimes.end(), start - kSameTime);
  const auto to = std::upper_bound(from, nextTimes.end(), end + kSameTime);
  const std::ptrdiff_t first = from - nextTimes.begin();
  const std::ptrdiff_t last = to - nextTimes.begin();
  const auto width = static_cast<std::ptrdiff_t>(n);
  next.m_values.erase(next.m_values.begin() + first * width, next.m_values.begin() + last * width);
  nextTimes.erase(from, to);
  next.m_values.insert(next.m_values.begin() + first * width, values.begin(), values.end());
  nextTimes.insert(nextTimes.begin() + first, times.begin(), times.end());
  // The take's own keys may leave its bounds; then they must still fit between what stays.
  if (!WellFormed(nextTimes, next.m_values, n)) return false;
  next.m_cursor = 0;
  *this = std::move(next);
  return true;
}

bool Channel::Bake(double frameDuration) {
  if (m_mode == Interpolation::kLinear) return true;
  const auto n = static_cast<std::size_t>(ComponentCount(m_path));
  std::vector<double> times;
  if (!IsEmpty()) {
    const double first = m_times->front();
    const double last = m_times->back();
    if (!(frameDuration > 0.0) || (last - first) / frameDuration > kMostBakedKeys) return false;
    times.push_back(first);
    for (double frame = std::floor(first / frameDuration);; frame += 1.0) {
      const double time = frame * frameDuration;
      if (time >= last - kSameTime) break;
      if (time > first + kSameTime) times.push_back(time);
    }
    if (last > first) times.push_back(last);
  }
  std::vector<double> values(times.size() * n);
  for (std::size_t i = 0; i < times.size(); ++i) Evaluate(times[i], &values[i * n]);
  m_mode = Interpolation::kLinear;
  m_times = std::make_shared<std::vector<double>>(std::move(times));
  m_values = std::move(values);
  m_cursor = 0;
  return true;
}

void Channel::Evaluate(double time, double* value) const {
  const std::vector<double>& times = *m_times;
  // A time that is no number holds the first key.
  if (!(time > times.front())) return KeyValue(0, value);
  if (time >= times.back()) return KeyValue(times.size() - 1, value);
  const std::size_t key = IntervalAt(time);
  const double t0 = times[key];
  if (time == t0 || m_mode == Interpolation::kStep) return KeyValue(key, value);
  const double dt = times[key + 1] - t0;
  const double s = (time - t0) / dt;
  if (m_mode == Interpolation::kLinear)
    InterpolateLinear(key, s, value);
  else
    InterpolateCubic(key, s, dt, value);
}

/// The key at or before `time`, which lies between the first and the last key.
std::size_t Channel::IntervalAt(double time) const {
  const std::vector<double>& times = *m_times;
  const std::size_t i = m_cursor;
  if (i + 1 < times.size() && times[i] <= time) {
    if (time < times[i + 1]) return i;
    if (i + 2 < times.size() && time < times[i + 2]) return m_cursor = i + 1;
  }
  const auto next = std::upper_bound(times.begin(), times.end(), time);
  m_cursor = static_cast<std::size_t>(next - times.begin()) - 1;
  return m_cursor;
}

void Channel::KeyValue(std::size_t key, double* value) const {
  const auto n = static_cast<std::size_t>(ComponentCount(m_path));
  const auto width = static_cast<std::size_t>(ValuesPerKey());
  const std::size_t skip = m_mode == Interpolation::kCubicSpline ? n : 0;
  std::memcpy(value, &m_values[key * width + skip], n * sizeof(double));
}

void Channel::InterpolateLinear(std::size_t key, double s, double* value) const {
  const auto n = static_cast<std::size_t>(ComponentCount(m_path));
  const double* a = &m_values[key * n];
  const double* b = a + n;
  if (m_path == ChannelPath::kRotation) return Slerp(a, b, s, value);
  for (std::size_t i = 0; i < n; ++i) value[i] = a[i] + (b[i] - a[i]) * s;
}

void Channel::InterpolateCubic(std::size_t key, double s, double dt, double* value) const {
  const auto n = static_cast<std::size_t>(ComponentCount(m_path));
  const double* a = &m_values[key * 3 * n];
  const double* b = a + 3 * n;
  const double s2 = s * s;
  const double s3 = s2 * s;
  for (std::size_t i = 0; i < n; ++i) {
    value[i] = (2.0 * s3 - 3.0 * s2 + 1.0) * a[n + i] + dt * (s3 - 2.0 * s2 + s) * a[2 * n + i] +
               (3.0 * s2 - 2.0 * s3) * b[n + i] + dt * (s3 - s2) * b[i];
  }
  if (m_path == ChannelPath::kRotation) Store(QuatAt(value).normalized(), value);
}

}  // namespace orv::rws::adaptor::headless
