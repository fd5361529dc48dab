// The ground that cars of the benchmarks drive on, and the way they take.
#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

#include "util/Angles.h"
#include "util/CMesh.h"
#include "util/Vector3.h"

namespace orv::bench {

using Vector = util::Vector3<double>;

inline constexpr double kFrame = 0.04;         ///< s
inline constexpr double kTerrainSize = 400.0;  ///< m a side, about the origin
inline constexpr int kQuads100k = 224;         ///< along a side: 100,352 triangles
inline constexpr int kQuads1M = 707;           ///< 999,698 triangles

/// Height of the rolling ground (m).
inline double GroundHeight(double x, double z) {
  return 0.90 * std::sin(0.037 * x + 0.3) * std::cos(0.029 * z) +
         0.60 * std::sin(0.081 * x - 0.053 * z) + 0.35 * std::sin(0.190 * z + 0.110 * x) +
         0.15 * std::sin(0.410 * x) * std::sin(0.370 * z);
}

inline util::CMesh RollingTerrain(int quads) {
  util::CMesh mesh;
  const int row = quads + 1;
  const double step = kTerrainSize / quads, half = kTerrainSize / 2.0;
  for (int j = 0; j < row; ++j)
    for (int i = 0; i < row; ++i) {
      const double x = i * step - half, z = j * step - half;
      mesh.vertices.emplace_back(x, GroundHeight(x, z), z);
    }
  for (int j = 0; j < quads; ++j)
    for (int i = 0; i < quads; ++i) {
      const std::int32_t a = j * row + i, c = a + row;
      mesh.faces.insert(mesh.faces.end(), {a, c, a + 1, a + 1, c, c + 1});
    }
  return mesh;
}

/// Angle of the front wheels at `time` (rad), the same for all cars.
inline double FrontWheels(double time) {
  return 0.12 * std::sin(util::kPi * time);
}

/// Where car `index` of `count` starts: a grid with room between the cars.
inline Vector StartPlace(int index, int count) {
  if (count == 1) return {0.0, GroundHeight(0.0, 50.0), 50.0};
  const int side = static_cast<int>(std::ceil(std::sqrt(count)));
  const double x = (index % side - (side - 1) * 0.5) * 18.0, z = 180.0 - (index / side) * 18.0;
  return {x, GroundHeight(x, z), z};
}

/// Origins of the downward rays of four wheels of one car on its way, some centimetres a frame.
inline std::vector<Vector> PathOrigins(int count) {
  std::vector<Vector> origins;
  for (int k = 0; k < count; ++k) {
    const double u = (k / 4) * 0.05 / 170.0;
    const double cx = 170.0 * std::sin(u), cz = 170.0 * std::sin(1.31 * u + 0.5);
    double fx = std::cos(u), fz = 1.31 * std::cos(1.31 * u + 0.5);
    const double length = std::hypot(fx, fz);
    fx /= length;
    fz /= length;
    const double a = k % 4 < 2 ? 1.3 : -1.3, b = k % 2 ? -0.8 : 0.8;
    const double x = cx + a * fx + b * fz, z = cz + a * fz - b * fx;
    origins.emplace_back(x, GroundHeight(x, z) + 3.0, z);
  }
  return origins;
}

}  // namespace orv::bench
