// The least value of a function with one minimum.
#pragma once

namespace orv::util {

/// Where `f` is least between `low` and `high`, within which it has one minimum: the middle of what
/// is left after leaving a third out `times` times.
template <class Function>
double leastBetween(double low, double high, int times, Function f) {
  for (int i = 0; i < times; ++i) {
    const double a = low + (high - low) / 3, b = high - (high - low) / 3;
    if (f(a) <= f(b))
      high = b;
    else
      low = a;
  }
  return (low + high) / 2;
}

}  // namespace orv::util
