// Round numbers for axes.
#pragma once

#include <QString>
#include <algorithm>
#include <cmath>
#include <vector>

namespace orv::app {

/// 1, 2 or 5 times a power of ten, near `length / count` and not below it.
inline double RoundStep(double length, int count) {
  const double raw = std::max(length, 1e-12) / count;
  const double power = std::pow(10.0, std::floor(std::log10(raw)));
  for (const double factor : {1.0, 2.0, 5.0})
    if (factor * power >= raw * 0.999999) return factor * power;
  return 10.0 * power;
}

/// Multiples of `step` within [from, to].
inline std::vector<double> Ticks(double from, double to, double step) {
  std::vector<double> values;
  for (double n = std::ceil(from / step - 1e-9); n * step <= to + step * 1e-9; n += 1.0)
    values.push_back(n == 0.0 ? 0.0 : n * step);
  return values;
}

/// A tick's number with no more digits than its step needs.
inline QString TickText(double value, double step) {
  if (step >= 1e5 || step < 1e-4) return QString::number(value, 'g', 6);
  const int decimals = std::max(0, static_cast<int>(-std::floor(std::log10(step) + 1e-9)));
  return QString::number(value, 'f', decimals);
}

}  // namespace orv::app
