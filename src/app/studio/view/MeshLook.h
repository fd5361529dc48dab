// What a node with a mesh looks like, for who draws it when it may have gone.
#pragma once

#include <memory>

#include "adaptor/headless/SceneNode.h"

namespace orv::app::view {

/// Keeps it alive. One of the two: a file's mesh, or one that a rig has made.
struct MeshLook {
  std::shared_ptr<const rws::adaptor::headless::GltfDocument> file;
  int number = 0;  ///< among the file's meshes
  std::shared_ptr<const util::CMesh> mesh;

  static MeshLook Of(const rws::adaptor::headless::SceneNode& node) {
    MeshLook look;
    look.file = node.GetFileMesh(look.number);
    if (!look.file) look.mesh = node.SharedMesh();
    return look;
  }
};

}  // namespace orv::app::view
