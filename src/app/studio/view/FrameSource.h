// Where a view has its pictures from.
#pragma once

#include "app/studio/view/packet/FramePacket.h"
#include "util/Box.h"
#include "util/Matrix.h"

namespace orv::app::view {

/// A camera of the scene.
struct SourceLens {
  util::Matrix<double> pose;   ///< of the world; it looks along its -Z, +Y up
  double fieldOfView = 45.0;   ///< vertical (degrees)
  double aspect = 16.0 / 9.0;  ///< width over height
};

/// For each picture a view calls Read, chooses the eye by what that came to, and has the packet
/// written.
class FrameSource {
 public:
  virtual ~FrameSource() = default;
  /// Takes a look at the scene as it is at its present time.
  virtual void Read() = 0;
  /// What the latest Read has seen, in the world (m); empty without anything.
  virtual util::Box GetBox(bool ofSelection) const = 0;
  /// The camera to look through; false without one.
  virtual bool GetLens(SourceLens& lens) = 0;
  /// Fills instances, materials, batches and structure; `packet.origin` is given. Always the same
  /// packet.
  virtual void Write(FramePacket& packet) = 0;
};

}  // namespace orv::app::view
