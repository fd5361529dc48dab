// Animation curves: their tangents and values between keys.
#include <algorithm>
#include <cmath>

#include "State.h"

namespace mayahost {
namespace {
using Fn = int;
constexpr Fn kFixed = 1, kLinear = 2, kFlat = 3, kSmooth = 4, kStep = 5, kClamped = 8, kPlateau = 9, kStepNext = 10, kAuto = 11;

double Slope(const Key& a, const Key& b) { return (b.value - a.value) / Seconds(b.ticks - a.ticks); }

double OwnSlope(const Curve& curve, std::size_t i, int side) {
  const auto& keys = curve.keys;
  const Key& k = keys[i];
  const bool first = i == 0, last = i + 1 == keys.size();
  const int type = k.type[side];
  if (type == kLinear) {
    if (side == 0) return first ? last ? 0 : Slope(k, keys[1]) : Slope(keys[i - 1], k);
    return last ? first ? 0 : Slope(keys[i - 1], k) : Slope(k, keys[i + 1]);
  }
  if (type == kFlat || type == kStep || type == kStepNext || keys.size() == 1) return 0;
  if (first || last) {
    if (type == kPlateau || type == kAuto) return 0;
    return first ? Slope(k, keys[1]) : Slope(keys[i - 1], k);
  }
  const Key &before = keys[i - 1], &after = keys[i + 1];
  const double mean = Slope(before, after);
  if (type == kClamped && (std::fabs(k.value - before.value) < 1e-3 || std::fabs(after.value - k.value) < 1e-3)) return 0;
  if (type == kPlateau || type == kAuto) {
    if ((k.value - before.value) * (after.value - k.value) <= 0) return 0;
    const double most = 3 * std::min(std::fabs(Slope(before, k)), std::fabs(Slope(k, after)));
    return std::copysign(std::min(std::fabs(mean), most), mean);
  }
  return mean;
}

double Bezier(double a, double b, double c, double d, double t) {
  const double u = 1 - t;
  return u * u * u * a + 3 * u * u * t * b + 3 * u * t * t * c + t * t * t * d;
}

double Between(const Curve& curve, const Key& a, const Key& b, double seconds) {
  if (a.type[1] == kStep || Pretends(Wrong::kCurveLinear)) return a.value;
  if (a.type[1] == kStepNext) return b.value;
  const double from = Seconds(a.ticks), span = Seconds(b.ticks - a.ticks), at = seconds - from;
  if (a.type[1] == kLinear && b.type[0] == kLinear) return a.value + (b.value - a.value) * (at / span);
  double x1 = span / 3, x2 = span / 3, y1 = a.x[1] != 0 ? a.y[1] / a.x[1] * x1 : 0, y2 = b.x[0] != 0 ? b.y[0] / b.x[0] * x2 : 0;
  if (curve.weighted) x1 = a.x[1] / 3, y1 = a.y[1] / 3, x2 = b.x[0] / 3, y2 = b.y[0] / 3;
  double low = 0, high = 1, t = at / span;
  for (int i = 0; curve.weighted && i < 60; ++i) {
    t = (low + high) / 2;
    (Bezier(0, x1, span - x2, span, t) < at ? low : high) = t;
  }
  return Bezier(a.value, a.value + y1, b.value - y2, b.value, t);
}

double Beyond(const Curve& curve, double seconds, bool before) {
  const auto& keys = curve.keys;
  const Key &end = before ? keys.front() : keys.back(), &other = before ? keys.back() : keys.front();
  const int type = before ? curve.pre : curve.post;
  const double at = seconds - Seconds(end.ticks), span = Seconds(keys.back().ticks - keys.front().ticks);
  if (type == 1) return end.value + at * (end.x[!before] != 0 ? end.y[!before] / end.x[!before] : 0);
  if (type == 0 || span == 0) return end.value;
  const double first = Seconds(keys.front().ticks), turns = std::floor((seconds - first) / span), within = seconds - first - turns * span;
  const bool back = type == 5 && std::fmod(std::fabs(turns), 2) == 1;
  const double value = Evaluate(curve, first + (back ? span - within : within));
  return type == 4 ? value + turns * (before ? other.value - end.value : end.value - other.value) : value;
}
}  // namespace

void SetTangents(Curve& curve, std::size_t from, std::size_t to) {
  for (std::size_t i = from; i < to && i < curve.keys.size(); ++i)
    for (int side = 0; side < 2; ++side) {
      Key& key = curve.keys[i];
      if (key.type[side] == kFixed) continue;
      const auto other = side ? i + 1 : i - 1;
      key.x[side] = other < curve.keys.size() ? std::fabs(Seconds(curve.keys[other].ticks - key.ticks)) : 1;
      key.y[side] = OwnSlope(curve, i, side) * key.x[side];
    }
}

double Evaluate(const Curve& curve, double seconds) {
  const auto& keys = curve.keys;
  if (keys.empty()) return 0;
  const double ticks = seconds * MTime::ticksPerSecond();
  const auto after = std::upper_bound(keys.begin(), keys.end(), ticks + 0.01, [](double t, const Key& k) { return t < static_cast<double>(k.ticks); });
  if (after == keys.begin()) return Beyond(curve, seconds, true);
  const Key& key = *(after - 1);
  if (std::fabs(ticks - static_cast<double>(key.ticks)) < 0.02) return key.value;
  if (after == keys.end()) return Beyond(curve, seconds, false);
  return Between(curve, key, *after, seconds);
}

}  // namespace mayahost
