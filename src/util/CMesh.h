/// The plain mesh that passes between the host and the rigs.
#pragma once

#include <cstdint>
#include <vector>

#include "util/Vector3.h"

namespace orv::util::xml {
class Element;
class Tag;
}  // namespace orv::util::xml

namespace orv::util {

class DataChunk;

/// Triangles with shared vertices, in the space of whoever hands them over (m). A value: meshes are
/// held and passed by value and never deleted through this base.
class CMesh {
 public:
  CMesh() = default;
  CMesh(const CMesh&) = default;
  CMesh(CMesh&&) noexcept = default;
  virtual CMesh& operator=(const CMesh&) = default;
  CMesh& operator=(CMesh&&) noexcept = default;

  /// True when each index array holds whole triangles and no index leaves its array.
  bool isConsistent() const;

  /// A tag "CMesh" whose text is the base64 form of `toChunk`.
  xml::Tag toTag() const;
  /// Reads what `toTag` writes, and the older form with one child tag per item, which counts where
  /// the text is empty or its chunk lacks a key. A chunk that lacks the four keys of the texture
  /// and has no older form beside it is a mesh without one. A tag of another name or with damaged
  /// content leaves the mesh as it is and gives false.
  bool fromTag(const xml::Element& tag);

  /// Counts and arrays as children of a chunk named "CMesh".
  DataChunk toChunk() const;
  /// False, with the mesh as it was, when a key is missing (but for all four of the texture), an
  /// array does not have the size that its count claims, or an index leaves its array.
  bool fromChunk(const DataChunk& chunk);

  std::vector<Vector3<double>> vertices;
  std::vector<Vector3<double>> texCoords;
  std::vector<std::int32_t> faces;     ///< three indices into `vertices` per triangle
  std::vector<std::int32_t> texFaces;  ///< three indices into `texCoords` per triangle

 private:
  bool readOldForm(const xml::Element& tag);
};

bool operator==(const CMesh& a, const CMesh& b);
inline bool operator!=(const CMesh& a, const CMesh& b) {
  return !(a == b);
}

}  // namespace orv::util
