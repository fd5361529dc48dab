// Coarser forms of meshes, for pictures in which they are small.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "app/studio/view/packet/FramePacket.h"
#include "util/Box.h"

namespace orv::app::view {

/// Index lists over the vertices of one mesh, which stays as it is. The mesh lies in pieces, whose
/// borders are the same at every level, so that pieces of different levels meet without a crack.
struct MeshLevels {
  /// Level 0 has all triangles; each further one half of those before, as far as that goes.
  static constexpr std::size_t kCount = 8;

  struct Range {
    std::uint32_t first = 0, count = 0;  ///< of the indices
    /// How far what is seen may lie from where it should (m of the mesh's space). Where normals,
    /// colours or places in a texture get lost, half the edge of a triangle: less than a pixel of
    /// that can't be told.
    float error = 0.0f;
    float shape = 0.0f;  ///< the same of the surface alone, whatever it looks like
  };
  struct Piece {
    util::Box box;
    std::array<Range, kCount> levels;
  };

  std::vector<std::uint32_t> indices;
  std::vector<Piece> pieces;
  std::array<Range, kCount> whole;  ///< all pieces, one behind the other
};

/// Makes the levels of one mesh, a few milliseconds a step. The result depends on the mesh alone.
class LevelMaker {
 public:
  explicit LevelMaker(std::shared_ptr<const MeshData> mesh);

  const std::shared_ptr<const MeshData>& GetMesh() const { return m_mesh; }
  /// False when it is done.
  bool Work();
  /// The result, once it is done; null for a mesh that has none.
  std::shared_ptr<const MeshLevels> Take() { return std::move(m_made); }

 private:
  struct Part {
    util::Box box;
    std::array<std::vector<std::uint32_t>, MeshLevels::kCount> levels;
    std::array<float, MeshLevels::kCount> errors{}, shapes{};
  };
  struct Span {
    std::size_t begin, end;  ///< of m_order
  };

  void Split(const Span& span);
  void Simplify(Part& part) const;
  bool LosesDetail(const std::vector<std::uint32_t>& fine, const std::vector<std::uint32_t>& coarse,
                   double reach) const;
  double MeanEdge(const std::vector<std::uint32_t>& indices) const;
  void Assemble();

  std::shared_ptr<const MeshData> m_mesh;
  std::vector<MeshData::Float3> m_middles;  ///< of the triangles
  std::vector<std::uint32_t> m_order;       ///< triangles
  std::vector<Span> m_open;                 ///< not small enough yet
  std::vector<Part> m_parts;
  std::size_t m_simplified = 0;  ///< of the parts
  std::shared_ptr<MeshLevels> m_made;
};

/// The levels of all meshes that packets show, made one after the other in steps.
class LevelStore {
 public:
  /// Notes the meshes of a packet, and forgets those that nobody holds any more.
  void Follow(const FramePacket& packet);
  /// One step; false when nothing is left to do.
  bool Work();
  /// Null for a mesh that has none, or none yet.
  const MeshLevels* Find(const MeshData& mesh) const;

 private:
  struct Held {
    std::weak_ptr<const MeshData> mesh;
    std::shared_ptr<const MeshLevels> levels;
  };
  std::unordered_map<std::uint64_t, Held> m_held;       ///< by the mesh's id
  std::vector<std::weak_ptr<const MeshData>> m_wanted;  ///< the one with most triangles last
  std::unique_ptr<LevelMaker> m_maker;
};

}  // namespace orv::app::view
