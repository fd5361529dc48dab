// What the rail's helpers look like.
#pragma once

#include <vector>

#include "util/CMesh.h"

namespace orv::rws::addon {

util::CMesh CarriageMesh();        ///< a dolly whose nose points along -Z
util::CMesh ReferenceFrameMesh();  ///< three thin bars along the axes
util::CMesh DownDirectionMesh();   ///< an arrow along -Y
util::CMesh WaypointMesh();        ///< an octahedron
util::CMesh TargetMesh();          ///< a small cross

/// A four-sided marker at each of the points, as a single mesh. Their size follows the distance
/// between the second and the third point.
util::CMesh CurveMesh(const std::vector<util::Vector3<double>>& points);

}  // namespace orv::rws::addon
