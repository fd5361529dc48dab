// Display meshes put together of parts.
#pragma once

#include <vector>

#include "util/CMesh.h"

namespace orv::rws::addon {

/// Adds the triangles of `part` to `mesh`; texture coordinates are left out.
inline void AppendMesh(util::CMesh& mesh, const util::CMesh& part) {
  const auto first = static_cast<std::int32_t>(mesh.vertices.size());
  mesh.vertices.insert(mesh.vertices.end(), part.vertices.begin(), part.vertices.end());
  for (const std::int32_t index : part.faces) mesh.faces.push_back(first + index);
}

inline util::CMesh JoinedMesh(const std::vector<util::CMesh>& parts) {
  util::CMesh mesh;
  for (const util::CMesh& part : parts) AppendMesh(mesh, part);
  return mesh;
}

}  // namespace orv::rws::addon
