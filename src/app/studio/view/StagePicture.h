// One of the pictures that a view shows.
#pragma once

#include <cstddef>

#include "app/studio/view/FrameSource.h"
#include "app/studio/view/packet/FramePacket.h"
#include "app/studio/view/packet/ViewCamera.h"

namespace orv::app::view {

/// An eye on a source, which is the user's own, travels with a node or is a camera's, and the
/// packet of what it sees.
class StagePicture {
 public:
  /// Of the user's own eye (degrees, vertical).
  static constexpr double kFieldOfView = 45.0;

  /// `number`: see FrameSource.
  explicit StagePicture(std::size_t number) : m_number(number) {}

  /// Of what the source has read. `aspect`: width over height.
  void Make(FrameSource& source, double aspect);

  /// All of it comes into the picture; false, and nothing happens, without any. Not while a camera
  /// is looked through.
  bool Frame(FrameSource& source, BoxOf what);
  /// As soon as there is something to see, the eye turns to it.
  void FrameNext() { m_framesNext = true; }
  void SetEye(const OrbitEye& eye);
  const OrbitEye& GetEye() const { return m_eye; }
  /// The user's own eye, to be moved.
  OrbitEye& UseEye() { return m_eye; }
  bool IsThroughCamera() const { return m_isThrough; }
  /// The eye becomes the user's own, where the camera stood.
  void LeaveCamera();

  /// World ray through a place: x and y in 0 to 1 from the bottom left corner (m).
  void GetRay(double x, double y, util::Vector3<double>& origin,
              util::Vector3<double>& direction) const;
  /// Of the latest picture's eye, in the world.
  const util::Matrix<double>& GetPose() const { return m_pose; }
  const Optics& GetOptics() const { return m_optics; }

  FramePacket packet;

 private:
  void Travel(FrameSource& source);
  void FrameFirst(const FrameSource& source);

  std::size_t m_number;
  OrbitEye m_eye;
  Optics m_optics;
  util::Matrix<double> m_pose;
  double m_aspect = 1.0;
  bool m_isThrough = false;  ///< through a camera
  bool m_framesNext = true;
  const void* m_guide = nullptr;    ///< whose place and heading these are; null for nobody's
  util::Vector3<double> m_guideAt;  ///< in the world (m)
  double m_guideHeading = 0.0;      ///< about +Y (radians)
};

}  // namespace orv::app::view
