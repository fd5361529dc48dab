#include "adaptor/headless/GltfKeys.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orv::rws::adaptor::headless {

FloatKeys ToFloatKeys(const Channel& channel) {
  const std::vector<double>& times = channel.GetTimes();
  const std::vector<double>& values = channel.GetValues();
  const auto width = static_cast<std::size_t>(channel.ValuesPerKey());
  const auto n = static_cast<std::size_t>(ComponentCount(channel.GetPath()));
  auto first =
      static_cast<std::size_t>(std::lower_bound(times.begin(), times.end(), 0.0) - times.begin());
  const auto toFloat = [](double v) { return static_cast<float>(v); };
  FloatKeys keys;
  keys.times.reserve(times.size() - first + 1);
  keys.values.reserve((times.size() - first + 1) * width);
  if (first > 0 && (first == times.size() || times[first] > 0.0)) {
    double value[4];
    channel.Evaluate(0.0, value);
    keys.times.push_back(0.0f);
    // A spline's tangents at the cut stay level.
    keys.values.resize(width, 0.0f);
    std::transform(value, value + n, keys.values.begin() + (width == n ? 0 : n), toFloat);
  }
  for (std::size_t i = first; i < times.size(); ++i) {
    float time = static_cast<float>(times[i]);
    if (!keys.times.empty() && time <= keys.times.back())
      time = std::nextafter(keys.times.back(), std::numeric_limits<float>::infinity());
    keys.times.push_back(time);
  }
  const std::size_t from = keys.values.size();
  keys.values.resize(keys.times.size() * width);
  std::transform(values.begin() + static_cast<std::ptrdiff_t>(first * width), values.end(),
                 keys.values.begin() + static_cast<std::ptrdiff_t>(from), toFloat);
  return keys;
}

bool FitsFloats(const Channel& channel, const FloatKeys& keys) {
  const auto same = [](float a, double b) { return static_cast<double>(a) == b; };
  return std::equal(keys.times.begin(), keys.times.end(), channel.GetTimes().begin(),
                    channel.GetTimes().end(), same) &&
         std::equal(keys.values.begin(), keys.values.end(), channel.GetValues().begin(),
                    channel.GetValues().end(), same);
}

}  // namespace orv::rws::adaptor::headless
