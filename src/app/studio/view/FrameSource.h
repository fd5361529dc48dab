// Where a view has its pictures from.
#pragma once

#include <cstddef>

#include "app/studio/view/packet/FramePacket.h"
#include "util/Box.h"
#include "util/Matrix.h"

namespace orv::app::view {

/// A camera of the scene.
struct SourceLens {
  util::Matrix<double> pose;   ///< of the world; it looks along its -Z, +Y up
  double fieldOfView = 45.0;   ///< vertical (degrees)
  double aspect = 16.0 / 9.0;  ///< width over height
  BackdropLook backdrop;
};

/// A node that an eye travels with.
struct SourceGuide {
  const void* node = nullptr;  ///< tells it from others
  util::Matrix<double> pose;   ///< of the world
  bool turns = false;          ///< the eye keeps its side of the node
};

/// A view shows several pictures at once, each with an eye of its own: two panes and, in a corner,
/// a camera's picture.
inline constexpr std::size_t kPictures = 3;
inline constexpr std::size_t kInset = 2;

/// What a box is to hold.
enum class BoxOf {
  kAll,
  kSelection,
  kMatter  ///< what one wants to see at first: rigs, else what is no ground
};

/// For each update a view calls Read, chooses the eyes by what that came to, and has the packet of
/// each picture written.
class FrameSource {
 public:
  virtual ~FrameSource() = default;
  /// Takes a look at the scene as it is at its present time.
  virtual void Read() = 0;
  /// What the latest Read has seen, in the world (m); empty without anything.
  virtual util::Box GetBox(BoxOf what) const = 0;
  /// The camera that a picture looks through; false without one.
  virtual bool GetLens(std::size_t picture, SourceLens& lens) = 0;
  /// The node that a picture's eye travels with; false without one.
  virtual bool GetGuide(std::size_t picture, SourceGuide& guide) = 0;
  /// Fills instances, materials, batches and structure; `packet.origin` is given. Always the same
  /// packet for a picture.
  virtual void Write(std::size_t picture, FramePacket& packet) = 0;
};

}  // namespace orv::app::view
