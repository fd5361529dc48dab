// Which of many boxes a ray crosses.
#pragma once

#include <cstdint>
#include <vector>

#include "util/Box.h"

namespace orv::rws::addon {

/// A tree over boxes that are known by their index. Built once; boxes that move change its own
/// boxes and not its shape. The same boxes always give the same tree.
class BoxTree {
 public:
  using Vector = util::Vector3<double>;
  using Box = util::Box;

  /// A box that a ray crosses, and the way of the ray up to it (in lengths of its direction, 0 from
  /// within).
  struct Crossing {
    double enter;
    std::int32_t index;
  };

  void Build(const std::vector<Box>& boxes);
  /// The boxes have moved.
  void Refit(const std::vector<Box>& boxes);
  /// Replaces what is in `out` by the boxes that the ray crosses up to `limit`, nearest first and
  /// of equals by index.
  void Cross(const Vector& origin, const Vector& direction, double limit,
             std::vector<Crossing>& out) const;
  /// Appends the indices of the boxes that meet `place`.
  void FindNear(const Box& place, std::vector<std::int32_t>& out) const;

  /// Way of a ray up to a box; below 0 when the ray misses it or it lies beyond `limit`.
  static double Enter(const Box& box, const Vector& origin, const Vector& inverse, double limit);
  /// What Enter wants of a direction.
  static Vector Inverse(const Vector& direction);

 private:
  struct Node {
    Box box;
    std::int32_t child;  ///< the first of two, behind their parent; -1 for a leaf
    std::int32_t index;  ///< of a leaf's box
  };
  std::vector<Node> m_nodes;  ///< the root first
};

}  // namespace orv::rws::addon
