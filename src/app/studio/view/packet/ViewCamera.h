// The eye of a view and how the user moves it.
#pragma once

#include "app/studio/view/packet/FramePacket.h"
#include "util/Box.h"
#include "util/Matrix.h"
#include "util/Vector3.h"

namespace orv::app::view {

/// Perspective of a picture.
struct Optics {
  double fieldOfView = 45.0;  ///< vertical (degrees)
  double nearClip = 0.1;      ///< m
  double farClip = 1000.0;    ///< m
};

/// An eye on a sphere around what it looks at; +Y of the world is up. All in world space (m,
/// radians).
struct OrbitEye {
  util::Vector3<double> target;
  double distance = 10.0;
  double yaw = 0.6;    ///< about +Y, 0 looks along -Z
  double pitch = 0.4;  ///< above the horizon

  static constexpr double kLeastDistance = 1e-3, kMostDistance = 1e7;

  /// World pose of the eye: it looks along its -Z, +Y up.
  util::Matrix<double> GetPose() const;
  /// An eye with this pose, at `distance` from its target; a roll is lost.
  static OrbitEye FromPose(const util::Matrix<double>& pose, double distance);

  /// Moves of the pointer in parts of the picture's height, right and down positive.
  void Orbit(double x, double y);
  /// What lies at the target's distance follows the pointer. `fieldOfView` in degrees.
  void Pan(double x, double y, double fieldOfView);
  /// Above 1 goes away.
  void Dolly(double factor);
  /// Goes along with what has moved `from` here `to` there and turned by so much about +Y
  /// (radians).
  void Travel(const util::Vector3<double>& from, const util::Vector3<double>& to, double turn);
  /// All of `box` comes into a picture of this width over height. Nothing happens for an empty box.
  void Frame(const util::Box& box, double fieldOfView, double aspect);
};

/// Near and far plane for an eye that must see all of `box` (empty: nothing but the grid).
void ChooseClip(const util::Matrix<double>& eye, const util::Box& box, Optics& optics);

/// Fills camera and origin: the packet's space begins at the eye, so that numbers stay small
/// wherever in the world it is. Instances are to be written after this.
void SetEye(FramePacket& packet, const util::Matrix<double>& eye, const Optics& optics,
            double aspect);

/// World ray through a place of the picture: x, y in 0 to 1 from the bottom left corner.
void RayThrough(const util::Matrix<double>& eye, const Optics& optics, double aspect, double x,
                double y, util::Vector3<double>& origin, util::Vector3<double>& direction);

/// Steps of the grid for an eye so far (m) from what it looks at: a power of ten, of which some ten
/// to a hundred lie in the picture.
void ChooseGrid(const OrbitEye& eye, GridLook& grid);

/// The picture's part that a camera of this width over height sees, and the field of view (degrees)
/// of the whole picture around it.
Gate ChooseGate(double lensAspect, double pictureAspect, double& fieldOfView);

}  // namespace orv::app::view
