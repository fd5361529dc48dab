/// A box as a mesh.
#pragma once

#include "util/CMesh.h"

namespace orv::util {

/// Twelve triangles, counter-clockwise seen from outside, no texture coordinates.
class CMesh_Box : public CMesh {
 public:
  /// A box of edge lengths `x`, `y`, `z` (m) around `centre`.
  CMesh_Box(double x, double y, double z, const Vector3<double>& centre = Vector3<double>(0, 0, 0));
};

}  // namespace orv::util
