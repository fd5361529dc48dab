// A box along the axes.
#pragma once

#include <algorithm>
#include <limits>

#include "util/Vector3.h"

namespace orv::util {

/// A closed box; empty until something is added.
struct Box {
  static constexpr double kInfinity = std::numeric_limits<double>::infinity();

  Vector3<double> low{kInfinity, kInfinity, kInfinity};
  Vector3<double> high{-kInfinity, -kInfinity, -kInfinity};

  void add(const Vector3<double>& p) {
    for (int i = 0; i < 3; ++i) {
      low[i] = std::min(low[i], p[i]);
      high[i] = std::max(high[i], p[i]);
    }
  }
  void add(const Box& other) {
    for (int i = 0; i < 3; ++i) {
      low[i] = std::min(low[i], other.low[i]);
      high[i] = std::max(high[i], other.high[i]);
    }
  }
  bool isEmpty() const { return !(low.x <= high.x); }
  /// Whether the two share a point.
  bool meets(const Box& other) const {
    for (int i = 0; i < 3; ++i)
      if (low[i] > other.high[i] || high[i] < other.low[i]) return false;
    return true;
  }
  bool holds(const Box& other) const {
    for (int i = 0; i < 3; ++i)
      if (other.low[i] < low[i] || other.high[i] > high[i]) return false;
    return true;
  }
  Vector3<double> middle() const { return low * 0.5 + high * 0.5; }
};

}  // namespace orv::util
