// Paths and marks as lines.
#pragma once

#include "app/studio/view/overlay/OverlayKinds.h"
#include "app/studio/view/packet/FramePacket.h"

namespace orv::rws {
struct RigMarks;
}

namespace orv::app::view {

class NodePaths;

/// How large something is on the screen.
struct ScreenScale {
  util::Vector3<double> eye;  ///< world (m)
  double perPixel = 0.0;      ///< width of a pixel of the desktop, a metre from the eye (m)

  /// Of a picture that is `height` pixels of the desktop high.
  static ScreenScale Of(const FramePacket& packet, int height);
  /// Metres of a pixel there.
  double At(const util::Vector3<double>& place) const { return perPixel * (place - eye).length(); }
};

/// The way until `time` (s) is brighter than what comes; frames are dots where there is room.
void DrawPaths(const NodePaths& paths, double time, const ScreenScale& scale, LineSet& lines);
/// Of one rig. Loads are arrows along the normal: at rest all of a car's together are as long as
/// its wheels lie apart. A speed or slip is as long as the way of a tenth of a second.
void DrawMarks(const rws::RigMarks& marks, const OverlayChoice& choice, const ScreenScale& scale,
               LineSet& lines);

}  // namespace orv::app::view
