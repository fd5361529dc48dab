/// A closed cylinder as a mesh.
#pragma once

#include "util/CMesh.h"

namespace orv::util {

/// A cylinder around an axis through the origin, half of it on each side; counter-clockwise seen
/// from outside, no texture coordinates.
class CMesh_Cylinder : public CMesh {
 public:
  /// `axis` is 0 for X, 1 for Y, 2 for Z; lengths in metres; under three `segments` count as three.
  CMesh_Cylinder(double radius, double length, int segments = 24, int axis = 1);
};

}  // namespace orv::util
