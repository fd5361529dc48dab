// A ground of many meshes below one node, as race tracks come.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "adaptor/headless/Scene.h"
#include "util/CMesh_Box.h"

namespace orv::tests {

/// Cuts `whole` into 520 tiles below nested groups and adds 24 instances of a box beside them, of
/// which 8 move by keys: 753 nodes, 544 meshes, together the triangles of `whole` and the boxes'.
/// The node "Track" is above them all.
inline rws::adaptor::headless::SceneNode& AddRaceTrack(rws::adaptor::headless::Scene& scene,
                                                       const util::CMesh& whole) {
  namespace hl = rws::adaptor::headless;
  using Vector = util::Vector3<double>;
  constexpr int kColumns = 20, kRows = 26, kBoxes = 24, kMoving = 8, kNodes = 753;
  Vector low = whole.vertices.front(), high = low;
  for (const Vector& v : whole.vertices)
    for (int i = 0; i < 3; ++i) {
      low[i] = std::min(low[i], v[i]);
      high[i] = std::max(high[i], v[i]);
    }
  const auto cell = [&](double at, int axis, int count) {
    return std::clamp(static_cast<int>((at - low[axis]) / (high[axis] - low[axis]) * count), 0,
                      count - 1);
  };
  std::vector<util::CMesh> tiles(kColumns * kRows);
  const Vector offset(3.0, -2.0, 5.0), aside(0.5, 0.0, -8.0);
  for (std::size_t i = 0; i + 2 < whole.faces.size(); i += 3) {
    const auto corner = [&](std::size_t k) {
      return whole.vertices[static_cast<std::size_t>(whole.faces[i + k])];
    };
    const Vector middle = (corner(0) + corner(1) + corner(2)) / 3.0;
    util::CMesh& tile = tiles[static_cast<std::size_t>(cell(middle.x, 0, kColumns) * kRows +
                                                       cell(middle.z, 2, kRows))];
    for (std::size_t k = 0; k < 3; ++k) {
      tile.faces.push_back(static_cast<int>(tile.vertices.size()));
      tile.vertices.push_back(corner(k) - offset - aside);
    }
  }
  hl::SceneNode& track = scene.AddNode("Track");
  for (int x = 0; x < kColumns; ++x) {
    hl::SceneNode& column = scene.AddNode("Column" + std::to_string(x), &track);
    column.SetPose({offset, {}, {1, 1, 1}});
    for (int z = 0; z < kRows; ++z) {
      hl::SceneNode& tile = scene.AddNode("Tile" + std::to_string(x * kRows + z), &column);
      tile.SetPose({aside, {}, {1, 1, 1}});
      tile.SetMesh(tiles[static_cast<std::size_t>(x * kRows + z)]);
    }
  }
  const auto box = rws::adaptor::MakeSharedMesh(util::CMesh_Box(1.0, 1.0, 1.0));
  for (int i = 0; i < kBoxes; ++i) {
    hl::SceneNode& stand = scene.AddNode("Stand" + std::to_string(i), &track);
    const Vector place(high.x + 5.0, 0.0, low.z + 4.0 * i);
    stand.SetPose({place, {}, {1, 1, 1}});
    scene.AddNode("Box" + std::to_string(i), &stand).SetMesh(box);
    if (i >= kMoving) continue;
    hl::Channel way(hl::ChannelPath::kTranslation);
    way.SetKeys({0.0, 100.0}, {place.x, 0.0, place.z, place.x, 50.0, place.z});
    stand.SetChannel(std::move(way));
  }
  for (int i = 1 + kColumns + kColumns * kRows + 2 * kBoxes; i < kNodes; ++i)
    scene.AddNode("Empty" + std::to_string(i), &track);
  return track;
}

}  // namespace orv::tests
