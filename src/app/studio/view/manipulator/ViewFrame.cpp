#include "app/studio/view/manipulator/ViewFrame.h"

#include <algorithm>
#include <cmath>

namespace orv::app::view {

using util::Matrix;
using util::Vector3;

namespace {

constexpr double kLeastDepth = 1e-6;  ///< m
/// Sine of the least angle at which a ray and a plane or a line have a meeting that a hand can aim
/// at.
constexpr double kLeastSine = 1e-3;

}  // namespace

ViewFrame::ViewFrame(const Matrix<double>& eye, const Optics& optics, double width, double height)
    : m_eye(eye), m_optics(optics), m_width(std::max(width, 1.0)), m_height(std::max(height, 1.0)) {
  Vector3<double> origin, direction;
  RayThrough(m_eye, m_optics, m_width / m_height, 0.5, 1.0, origin, direction);
  m_half = direction.dot(GetUp());
}

double ViewFrame::DepthOf(const Vector3<double>& world) const {
  return (world - m_eye.translation()).dot(GetForward());
}

Vector3<double> ViewFrame::SightTo(const Vector3<double>& world) const {
  return (world - m_eye.translation()).normalized();
}

bool ViewFrame::Project(const Vector3<double>& world, Pixel& at) const {
  const double depth = DepthOf(world);
  if (!(depth > kLeastDepth)) return false;
  const Vector3<double> way = world - m_eye.translation();
  const double pixels = 0.5 * m_height / (m_half * depth);
  at = {0.5 * m_width + way.dot(GetRight()) * pixels, 0.5 * m_height - way.dot(GetUp()) * pixels};
  return true;
}

double ViewFrame::PixelSize(const Vector3<double>& world) const {
  return 2.0 * m_half * DepthOf(world) / m_height;
}

Ray ViewFrame::RayAt(const Pixel& at) const {
  Ray ray;
  RayThrough(m_eye, m_optics, m_width / m_height, at.x / m_width, 1.0 - at.y / m_height, ray.origin,
             ray.direction);
  ray.direction.normalize();
  return ray;
}

bool MeetPlane(const Ray& ray, const Vector3<double>& point, const Vector3<double>& normal,
               Vector3<double>& hit) {
  const double towards = ray.direction.dot(normal);
  if (std::abs(towards) < kLeastSine) return false;
  const double distance = (point - ray.origin).dot(normal) / towards;
  if (!(distance > 0.0)) return false;
  hit = ray.origin + ray.direction * distance;
  return true;
}

bool MeetLine(const Ray& ray, const Vector3<double>& point, const Vector3<double>& direction,
              double& along) {
  const Vector3<double> way = point - ray.origin;
  const double cosine = direction.dot(ray.direction), rest = 1.0 - cosine * cosine;
  if (rest < kLeastSine * kLeastSine) return false;
  const double place = (cosine * ray.direction.dot(way) - direction.dot(way)) / rest;
  if (!(ray.direction.dot(way) + place * cosine > 0.0)) return false;
  along = place;
  return true;
}

}  // namespace orv::app::view
