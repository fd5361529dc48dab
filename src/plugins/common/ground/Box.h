// A box along the axes.
#pragma once

#include <algorithm>
#include <limits>

#include "util/Matrix.h"
#include "util/Vector3.h"

namespace orv::rws::addon {

/// A closed box; empty until something is added.
struct Box {
  using Vector = util::Vector3<double>;
  static constexpr double kInfinity = std::numeric_limits<double>::infinity();

  Vector low{kInfinity, kInfinity, kInfinity};
  Vector high{-kInfinity, -kInfinity, -kInfinity};

  void Add(const Vector& p) {
    for (int i = 0; i < 3; ++i) {
      low[i] = std::min(low[i], p[i]);
      high[i] = std::max(high[i], p[i]);
    }
  }
  void Add(const Box& other) {
    for (int i = 0; i < 3; ++i) {
      low[i] = std::min(low[i], other.low[i]);
      high[i] = std::max(high[i], other.high[i]);
    }
  }
  bool IsEmpty() const { return !(low.x <= high.x); }
  bool Meets(const Box& other) const {
    for (int i = 0; i < 3; ++i)
      if (low[i] > other.high[i] || high[i] < other.low[i]) return false;
    return true;
  }
  Vector Middle() const { return low * 0.5 + high * 0.5; }
};

/// The box round a box that a matrix moves, with room for the rounding of whoever looks into it by
/// other sums.
inline Box MovedBox(const Box& box, const util::Matrix<double>& by) {
  constexpr double kRounding = 1e-9;
  Box moved;
  if (box.IsEmpty()) return moved;
  for (int corner = 0; corner < 8; ++corner)
    moved.Add(
        by.transformPoint({corner & 1 ? box.high.x : box.low.x, corner & 2 ? box.high.y : box.low.y,
                           corner & 4 ? box.high.z : box.low.z}));
  const double slack = kRounding * (1.0 + moved.low.length() + moved.high.length());
  moved.low -= Box::Vector(slack, slack, slack);
  moved.high += Box::Vector(slack, slack, slack);
  return moved;
}

}  // namespace orv::rws::addon
