// The meshes of glTF files as pictures show them.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "app/studio/view/packet/FramePacket.h"

namespace orv::rws::adaptor::headless {
class GltfDocument;
}

namespace orv::app::view {

/// What a node shows: meshes that move as one, each of one material.
struct Model {
  struct Part {
    std::shared_ptr<const MeshData> mesh;
    Material material;
  };
  std::vector<Part> parts;
  util::Box box;
};

/// One object for all meshes that look the same, as long as somebody holds it.
class MeshPool {
 public:
  std::shared_ptr<const MeshData> Share(MeshData data);

 private:
  std::unordered_multimap<std::uint64_t, std::weak_ptr<const MeshData>> m_meshes;  ///< by hash
};

/// Reads primitives, materials and pictures. What it can't read is left out, and told once.
class FileMeshes {
 public:
  using Document = std::shared_ptr<const rws::adaptor::headless::GltfDocument>;

  explicit FileMeshes(MeshPool& pool) : m_pool(pool) {}

  Model Read(const Document& document, int mesh);
  /// Hands over, and forgets, what was odd in the last calls.
  std::vector<std::string> TakeOdd() { return std::exchange(m_odd, {}); }
  /// Forgets pictures that nobody shows.
  void DropUnused();

 private:
  class Reader;

  MeshPool& m_pool;
  struct HeldTexture {
    std::weak_ptr<const rws::adaptor::headless::GltfDocument> document;
    std::weak_ptr<const Texture> texture;
  };
  /// By document and number; another document may have come to lie at the same address.
  std::map<std::pair<const void*, std::size_t>, HeldTexture> m_textures;
  std::vector<std::string> m_odd;
};

}  // namespace orv::app::view
