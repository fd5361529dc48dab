// What a mesh is to the renderer.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "util/Box.h"

namespace orv::util {
class CMesh;
}

namespace orv::app::view {

/// Triangles or lines with shared vertices, in the space of the nodes that show them (m). Immutable
/// once it is shared. Attributes other than positions are there for all vertices or for none.
struct MeshData {
  using Float3 = std::array<float, 3>;
  using Float2 = std::array<float, 2>;
  using Bytes4 = std::array<std::uint8_t, 4>;

  std::vector<Float3> positions;
  std::vector<Float3> normals;  ///< unit; empty: each triangle is flat
  std::vector<Bytes4> colours;  ///< linear red, green, blue, alpha; 255 is 1
  std::vector<Float2> texCoords;
  std::vector<std::uint32_t> indices;  ///< three a triangle, two a line
  bool lines = false;

  /// Never that of another mesh; what the renderer keeps it by.
  std::uint64_t id = NextId();
  util::Box box;
  float edge = 0.0f;  ///< of a triangle, as long as they are on average (m)

  /// Fills `box` and `edge`; points that are not finite do not count.
  void Measure();
  /// Whether the two look the same.
  bool IsEqual(const MeshData& other) const;
  /// Equal for meshes that look the same.
  std::uint64_t Hash() const;

  static std::uint64_t NextId();
};

/// At each vertex that of the surface around it; vertices at one place count as many.
std::vector<MeshData::Float3> SmoothNormals(const MeshData& mesh);
/// Positions and triangles alone.
MeshData MakeMeshData(const util::CMesh& mesh);
/// A line from point to point.
MeshData MakeLineData(const std::vector<util::Vector3<double>>& points, bool closed);
/// The eye of a camera: a frame of half a metre in front of it, and which side is up.
MeshData MakeCameraSign();

}  // namespace orv::app::view
