// The scene as a manipulator sees it.
#pragma once

#include <string>
#include <vector>

#include "app/studio/view/manipulator/Placing.h"
#include "app/studio/view/manipulator/ViewFrame.h"

namespace orv::app::view {

/// Poses are read, shown while they are tried, and set as one step of undo. Trying changes nothing
/// of the scene. Main thread only.
class ManipulatedScene {
 public:
  virtual ~ManipulatedScene() = default;
  /// What is selected, as it stands now; costs little enough for every picture.
  virtual void Read(Selection& selection) = 0;
  /// Pictures show these poses of `selection`'s targets, and what hangs below them with them.
  virtual void Preview(const Selection& selection, const std::vector<NewPose>& poses) = 0;
  virtual void EndPreview() = 0;
  /// One step of undo, named by the tool. An empty answer means success; any other says why nothing
  /// has changed, for the user.
  virtual std::string Commit(Tool tool, const Selection& selection,
                             const std::vector<NewPose>& poses) = 0;

  // What there is to snap to: all that is seen and does not move along.

  /// The nearest surface that a ray meets.
  virtual bool Meet(const Selection& selection, const Ray& ray, util::Vector3<double>& point) = 0;
  /// The node at a place of the picture: one whose origin is shown near to it, else one whose
  /// surface is.
  virtual bool FindNode(const Selection& selection, const ViewFrame& view, const Pixel& at,
                        util::Matrix<double>& world) = 0;
  /// How far (m) the targets reach below the active one's origin; 0 when they don't.
  virtual double GetDepth(const Selection& selection) = 0;
};

}  // namespace orv::app::view
