#include "util/CMesh_Cylinder.h"

#include <algorithm>
#include <cmath>

#include "util/Angles.h"

namespace orv::util {

namespace {

/// The point whose coordinate along `axis` is `along`; `u` and `v` lie along the two axes after it.
Vector3<double> pointAround(int axis, double along, double u, double v) {
  Vector3<double> point;
  point[axis] = along;
  point[(axis + 1) % 3] = u;
  point[(axis + 2) % 3] = v;
  return point;
}

}  // namespace

CMesh_Cylinder::CMesh_Cylinder(double radius, double length, int segments, int axis) {
  const int n = std::max(segments, 3);
  axis = std::clamp(axis, 0, 2);
  for (int i = 0; i < n; ++i) {
    const double angle = 2 * kPi * i / n;
    const double u = radius * std::cos(angle);
    const double v = radius * std::sin(angle);
    vertices.push_back(pointAround(axis, -length / 2, u, v));
    vertices.push_back(pointAround(axis, length / 2, u, v));
  }
  vertices.push_back(pointAround(axis, -length / 2, 0, 0));
  vertices.push_back(pointAround(axis, length / 2, 0, 0));
  for (int i = 0; i < n; ++i) {
    const int low = 2 * i;
    const int nextLow = 2 * ((i + 1) % n);
    const int high = low + 1;
    const int nextHigh = nextLow + 1;
    faces.insert(faces.end(), {low, nextLow, nextHigh, low, nextHigh, high});
    faces.insert(faces.end(), {2 * n, nextLow, low, 2 * n + 1, high, nextHigh});
  }
}

}  // namespace orv::util
