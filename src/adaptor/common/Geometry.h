// What nodes show that no pose tells.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "util/CMesh.h"
#include "util/Vector3.h"

namespace orv::rws::adaptor {

/// Polyline of a curve node in the node's own space (the lengths of that space).
struct Curve {
  std::vector<util::Vector3<double>> points;
  bool closed = false;  ///< a last line leads back to the first point
};

/// Red, green, blue in [0, 1], linear light.
using Colour = std::array<float, 3>;

/// A mesh on the heap that several may hold.
std::shared_ptr<const util::CMesh> MakeSharedMesh(util::CMesh mesh);

}  // namespace orv::rws::adaptor
