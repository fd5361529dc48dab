// Grounds made in code.
#pragma once

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

#include "util/CMesh.h"

namespace orv::tests {

/// Height of a ground (m) over a place (m).
using Height = std::function<double(double x, double z)>;

/// `count` + 1 numbers from one to the other.
inline std::vector<double> Rows(double from, double to, int count) {
  std::vector<double> rows;
  for (int i = 0; i <= count; ++i) rows.push_back(from + (to - from) * i / count);
  return rows;
}

inline double Flat(double, double) {
  return 0.0;
}
/// Gentle hills, some 1.5 m high.
inline double Hills(double x, double z) {
  return 0.9 * std::sin(0.037 * x + 0.3) * std::cos(0.029 * z) +
         0.6 * std::sin(0.081 * x - 0.053 * z);
}
/// A ramp that ends 1.2 m up, 68 m ahead.
inline double Ramp(double, double z) {
  const double d = -z - 60.0;
  return d < 0.0 || d > 8.1 ? 0.0 : 1.2 * std::pow(std::min(d / 8.0, 1.0), 2);
}
inline Height Slope(double degreesAhead, double degreesToTheRight = 0.0) {
  const double ahead = std::tan(degreesAhead * M_PI / 180.0);
  const double right = std::tan(degreesToTheRight * M_PI / 180.0);
  return [=](double x, double z) { return -z * ahead + x * right; };
}

/// A grid over the columns `xs` and the rows `zs`, both rising, seen from above.
inline util::CMesh GridMesh(const Height& height, const std::vector<double>& xs,
                            const std::vector<double>& zs, double scale = 1.0) {
  util::CMesh mesh;
  for (const double z : zs)
    for (const double x : xs) mesh.vertices.push_back({x * scale, height(x, z) * scale, z * scale});
  const int n = static_cast<int>(xs.size()), rows = static_cast<int>(zs.size());
  for (int j = 0; j + 1 < rows; ++j) {
    for (int i = 0; i + 1 < n; ++i) {
      const int a = j * n + i;
      for (const int index : {a, a + n, a + 1, a + 1, a + n, a + n + 1})
        mesh.faces.push_back(index);
    }
  }
  return mesh;
}

}  // namespace orv::tests
