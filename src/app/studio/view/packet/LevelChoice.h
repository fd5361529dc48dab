// Which triangles of its meshes a picture needs.
#pragma once

#include <array>
#include <vector>

#include "app/studio/view/packet/FramePacket.h"
#include "app/studio/view/packet/MeshLevels.h"

namespace orv::app::view {

/// For one eye: leaves out what lies beside the picture, and takes the coarsest level that can't be
/// told from the mesh.
class LevelChoice {
 public:
  LevelChoice() = default;
  /// `height` of the picture in pixels. Rough: coarser ones, that can be told but don't mislead.
  LevelChoice(const FramePacket& packet, int height, bool isRough = false);

  /// Pixels that a metre takes up at a distance of one.
  double GetFocus() const { return m_focus; }
  /// The index ranges to draw of a batch with these instances, merged where they touch; of the
  /// mesh's own indices where `levels` is null, else of theirs. Equal meshes get one level, as one
  /// draw shows them all. True when all triangles are but a few pixels large.
  bool Choose(const Instance* instances, const Batch& batch, const MeshLevels* levels,
              std::vector<MeshLevels::Range>& ranges) const;

 private:
  struct Seen {
    bool isInside = false;
    double perMetre = 0.0;  ///< pixels that a metre of the mesh's space takes up at most
  };
  Seen Look(const Instance& instance, const util::Box& box) const;

  std::array<std::array<double, 4>, 5> m_planes{};  ///< of the picture's pyramid, inwards, unit
  double m_leastAhead = 1.0;  ///< depth of what the picture's corners show, a metre from the eye
  double m_focus = 0.0;
  bool m_isRough = false;
};

}  // namespace orv::app::view
