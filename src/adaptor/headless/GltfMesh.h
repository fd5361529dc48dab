/// Triangles and curves of glTF meshes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "adaptor/headless/SceneNode.h"
#include "util/CMesh.h"

namespace orv::rws::adaptor::headless {

class GltfDocument;

/// Modes of a glTF primitive.
enum class PrimitiveMode {
  kPoints = 0,
  kLines = 1,
  kLineLoop = 2,
  kLineStrip = 3,
  kTriangles = 4,
  kTriangleStrip = 5,
  kTriangleFan = 6
};

/// What a glTF mesh is to the scene.
struct MeshContent {
  bool hasTriangles = false;
  std::shared_ptr<const Curve> curve;  ///< null when it has none
  Colour colour{1.0f, 1.0f, 1.0f};     ///< base colour of the first primitive's material
  std::vector<std::string> warnings;
};

/// Checks all that `BuildTriangles` will read, and builds the curve. Throws GltfError.
MeshContent CheckMesh(const GltfDocument& document, int mesh);

/// All triangle primitives of a checked mesh as one. Vertices that primitives share are there once;
/// texture coordinates are there when all primitives have them. A triangle with a vertex that is no
/// number is left out.
util::CMesh BuildTriangles(const GltfDocument& document, int mesh);

}  // namespace orv::rws::adaptor::headless
