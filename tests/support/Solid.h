// What makes a mesh a body.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <utility>

#include "util/CMesh.h"

namespace orv::tests {

/// The volume inside, by the divergence theorem; above 0, it faces outward. Each edge must be
/// shared by two triangles that run along it in opposite directions: then the surface is closed.
inline double ClosedVolume(const util::CMesh& mesh) {
  EXPECT_TRUE(mesh.isConsistent() && !mesh.faces.empty());
  std::map<std::pair<int, int>, int> edges;
  double volume = 0.0;
  for (std::size_t i = 0; i + 2 < mesh.faces.size(); i += 3) {
    util::Vector3<double> p[3];
    for (std::size_t k = 0; k < 3; ++k) {
      p[k] = mesh.vertices.at(static_cast<std::size_t>(mesh.faces[i + k]));
      ++edges[{mesh.faces[i + k], mesh.faces[i + (k + 1) % 3]}];
    }
    EXPECT_GT((p[1] - p[0]).cross(p[2] - p[0]).length(), 1e-12) << "triangle " << i / 3;
    volume += p[0].dot(p[1].cross(p[2])) / 6;
  }
  for (const auto& [edge, count] : edges)
    EXPECT_TRUE(count == 1 && edges.count({edge.second, edge.first})) << "an open edge";
  return volume;
}

}  // namespace orv::tests
