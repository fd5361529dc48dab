// How places of a picture and of the world go together.
#pragma once

#include "app/studio/view/packet/ViewCamera.h"
#include "util/Matrix.h"
#include "util/Vector3.h"

namespace orv::app::view {

/// A place of a picture in pixels of the desktop, from the top left corner.
struct Pixel {
  double x = 0.0, y = 0.0;

  friend Pixel operator+(const Pixel& a, const Pixel& b) { return {a.x + b.x, a.y + b.y}; }
  friend Pixel operator-(const Pixel& a, const Pixel& b) { return {a.x - b.x, a.y - b.y}; }
  double Dot(const Pixel& o) const { return x * o.x + y * o.y; }
  double Length() const { return std::sqrt(Dot(*this)); }
};

struct Ray {
  util::Vector3<double> origin;     ///< world (m)
  util::Vector3<double> direction;  ///< unit
};

/// One picture's perspective. World space (m).
class ViewFrame {
 public:
  ViewFrame() = default;
  /// `eye` has no scale; width and height in pixels of the desktop.
  ViewFrame(const util::Matrix<double>& eye, const Optics& optics, double width, double height);

  /// How far ahead of the eye a place is (m); below 0 behind it.
  double DepthOf(const util::Vector3<double>& world) const;
  util::Vector3<double> GetEye() const { return m_eye.translation(); }
  util::Vector3<double> GetRight() const { return m_eye.axisRow(0); }
  util::Vector3<double> GetUp() const { return m_eye.axisRow(1); }
  util::Vector3<double> GetForward() const { return -m_eye.axisRow(2); }
  /// From the eye to a place; unit.
  util::Vector3<double> SightTo(const util::Vector3<double>& world) const;
  /// False for what does not lie in front of the eye.
  bool Project(const util::Vector3<double>& world, Pixel& at) const;
  /// Length (m) of a pixel across the picture, as far away as a place is; at or below 0 behind the
  /// eye.
  double PixelSize(const util::Vector3<double>& world) const;
  Ray RayAt(const Pixel& at) const;

 private:
  util::Matrix<double> m_eye;
  Optics m_optics;
  double m_half = 0.4;  ///< height of the picture's half at a depth of one
  double m_width = 1.0, m_height = 1.0;
};

/// Where a ray meets a plane in front of its origin; false where it runs along it or away from it.
bool MeetPlane(const Ray& ray, const util::Vector3<double>& point,
               const util::Vector3<double>& normal, util::Vector3<double>& hit);
/// The place (m from `point`) along a line where it comes nearest to a ray; false where that lies
/// behind the ray's origin or the two run side by side.
bool MeetLine(const Ray& ray, const util::Vector3<double>& point,
              const util::Vector3<double>& direction, double& along);

}  // namespace orv::app::view
