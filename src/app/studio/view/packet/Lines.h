// Lines, points and triangles of one colour that are drawn over a scene.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "util/Vector3.h"

namespace orv::app::view {

/// Red, green, blue as a screen shows them (not linear), and alpha.
using Rgba = std::array<std::uint8_t, 4>;

/// Marks over a scene, of one way to be hidden by it. Whoever shows some keeps a set of its own,
/// fills it anew for each picture and hangs it into FramePacket::lines; once it has been as large
/// as it becomes, nothing is allocated. Neither depth nor ids are written. Sets are drawn in the
/// packet's order; of one the triangles come first, and each kind as it was added.
struct LineSet {
  /// A line with flat ends, or, where both ends are the same, a round point. Positions in the
  /// packet's space.
  struct Stroke {
    float from[3];
    Rgba fromColour;
    float to[3];
    Rgba toColour;
    float width;  ///< or diameter (pixels of the desktop)
  };
  static_assert(sizeof(Stroke) == 36);
  struct Corner {
    float at[3];
    Rgba colour;
  };
  static_assert(sizeof(Corner) == 16);

  bool onTop = false;            ///< nothing hides it
  float hidden = 0.25f;          ///< else: its alpha times this shows through what is before it
  util::Vector3<double> origin;  ///< the packet's, of this picture
  std::vector<Stroke> strokes;
  std::vector<Corner> corners;  ///< three a triangle, which is seen from both sides

  /// Empties it for a picture with this FramePacket::origin.
  void Begin(const util::Vector3<double>& packetOrigin) {
    origin = packetOrigin;
    strokes.clear();
    corners.clear();
  }
  bool IsEmpty() const { return strokes.empty() && corners.empty(); }

  // World positions (m); what is not finite is left out. Widths in pixels of the desktop.

  void AddLine(const util::Vector3<double>& from, const util::Vector3<double>& to,
               const Rgba& fromColour, const Rgba& toColour, float width) {
    Stroke stroke{{}, fromColour, {}, toColour, width};
    if (Place(from, stroke.from) && Place(to, stroke.to)) strokes.push_back(stroke);
  }
  void AddLine(const util::Vector3<double>& from, const util::Vector3<double>& to,
               const Rgba& colour, float width = 1.5f) {
    AddLine(from, to, colour, colour, width);
  }
  void AddPoint(const util::Vector3<double>& at, const Rgba& colour, float diameter = 5.0f) {
    AddLine(at, at, colour, colour, diameter);
  }
  void AddTriangle(const util::Vector3<double>& a, const util::Vector3<double>& b,
                   const util::Vector3<double>& c, const Rgba& colour) {
    Corner three[3] = {{{}, colour}, {{}, colour}, {{}, colour}};
    if (Place(a, three[0].at) && Place(b, three[1].at) && Place(c, three[2].at))
      corners.insert(corners.end(), three, three + 3);
  }

 private:
  bool Place(const util::Vector3<double>& world, float (&at)[3]) const {
    for (int i = 0; i < 3; ++i) at[i] = static_cast<float>(world[i] - origin[i]);
    return std::isfinite(at[0] + at[1] + at[2]);
  }
};

}  // namespace orv::app::view
