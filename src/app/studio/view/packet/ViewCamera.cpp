#include "app/studio/view/packet/ViewCamera.h"

#include <algorithm>
#include <cmath>

namespace orv::app::view {

using util::Matrix;
using util::Vector3;

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kMostPitch = 0.5 * kPi;
constexpr double kOrbitSpeed = 3.0;  ///< radians for the picture's height
/// Parts of the picture's height or width that a gate leaves free around it.
constexpr double kGateMargin = 0.04;

double TanHalf(double degrees) {
  return std::tan(std::clamp(degrees, 0.1, 179.0) * kPi / 360.0);
}

}  // namespace

Matrix<double> OrbitEye::GetPose() const {
  const double cy = std::cos(yaw), sy = std::sin(yaw), cp = std::cos(pitch), sp = std::sin(pitch);
  const Vector3<double> back(sy * cp, sp, cy * cp), right(cy, 0.0, -sy);
  const Vector3<double> up(-sy * sp, cp, -cy * sp);
  Matrix<double> pose;
  pose.setAxisRow(0, right);
  pose.setAxisRow(1, up);
  pose.setAxisRow(2, back);
  pose.setTranslation(target + back * distance);
  return pose;
}

OrbitEye OrbitEye::FromPose(const Matrix<double>& pose, double distance) {
  Vector3<double> back = pose.axisRow(2);
  const double length = back.length();
  back = length > 0.0 ? back / length : Vector3<double>(0.0, 0.0, 1.0);
  OrbitEye eye;
  eye.distance = distance;
  eye.pitch = std::asin(std::clamp(back.y, -1.0, 1.0));
  // Straight up or down the picture's right tells.
  const Vector3<double> right = pose.axisRow(0);
  eye.yaw =
      std::abs(back.y) > 0.999999 ? std::atan2(-right.z, right.x) : std::atan2(back.x, back.z);
  eye.target = pose.translation() - back * distance;
  return eye;
}

void OrbitEye::Orbit(double x, double y) {
  yaw = std::remainder(yaw - kOrbitSpeed * x, 2.0 * kPi);
  pitch = std::clamp(pitch + kOrbitSpeed * y, -kMostPitch, kMostPitch);
}

void OrbitEye::Pan(double x, double y, double fieldOfView) {
  const Matrix<double> pose = GetPose();
  const double height = 2.0 * distance * TanHalf(fieldOfView);
  target += pose.axisRow(1) * (y * height) - pose.axisRow(0) * (x * height);
}

void OrbitEye::Dolly(double factor) {
  distance = std::clamp(distance * factor, kLeastDistance, kMostDistance);
}

void OrbitEye::Travel(const Vector3<double>& from, const Vector3<double>& to, double turn) {
  const Vector3<double> away = target - from;
  const double c = std::cos(turn), s = std::sin(turn);
  target = to + Vector3<double>(c * away.x + s * away.z, away.y, c * away.z - s * away.x);
  yaw = std::remainder(yaw + turn, 2.0 * kPi);
}

void OrbitEye::Frame(const util::Box& box, double fieldOfView, double aspect) {
  if (box.isEmpty()) return;
  target = box.middle();
  const double radius = std::max(0.5 * (box.high - box.low).length(), 0.05);
  const double half = std::atan(TanHalf(fieldOfView) * std::min(1.0, aspect));
  distance = std::clamp(1.05 * radius / std::sin(half), kLeastDistance, kMostDistance);
}

void ChooseClip(const Matrix<double>& eye, const util::Box& box, Optics& optics) {
  const Vector3<double> at = eye.translation();
  double farthest = 10.0 * std::abs(at.y) + 10.0;
  if (!box.isEmpty()) {
    Vector3<double> corner;
    for (int i = 0; i < 3; ++i)
      corner[i] = std::max(std::abs(box.low[i] - at[i]), std::abs(box.high[i] - at[i]));
    farthest = std::max(farthest, 1.01 * corner.length());
  }
  optics.farClip = farthest;
  // 24 bits of depth bear a hundred thousand to one.
  optics.nearClip = std::max(farthest * 1e-5, 0.005);
}

void SetEye(FramePacket& packet, const Matrix<double>& eye, const Optics& optics, double aspect) {
  packet.origin = eye.translation();
  auto& view = packet.camera.view;
  view.fill(0.0f);
  for (int row = 0; row < 3; ++row) {
    Vector3<double> axis = eye.axisRow(row);
    const double length = axis.length();
    if (length > 0.0) axis /= length;
    for (int column = 0; column < 3; ++column)
      view[static_cast<std::size_t>(4 * column + row)] = static_cast<float>(axis[column]);
  }
  view[15] = 1.0f;
  auto& projection = packet.camera.projection;
  projection.fill(0.0f);
  const double f = 1.0 / TanHalf(optics.fieldOfView), n = optics.nearClip, r = optics.farClip;
  projection[0] = static_cast<float>(f / aspect);
  projection[5] = static_cast<float>(f);
  projection[10] = static_cast<float>((r + n) / (n - r));
  projection[11] = -1.0f;
  projection[14] = static_cast<float>(2.0 * r * n / (n - r));
}

void RayThrough(const Matrix<double>& eye, const Optics& optics, double aspect, double x, double y,
                Vector3<double>& origin, Vector3<double>& direction) {
  const double half = TanHalf(optics.fieldOfView);
  origin = eye.translation();
  direction = eye.transformVector({(2.0 * x - 1.0) * half * aspect, (2.0 * y - 1.0) * half, -1.0});
}

void ChooseGrid(const OrbitEye& eye, GridLook& grid) {
  const double decades = std::log10(std::max(eye.distance, 1e-6) / 8.0);
  const double whole = std::floor(decades);
  grid.step = std::pow(10.0, whole);
  grid.fade = static_cast<float>(1.0 - (decades - whole));
  grid.focus[0] = eye.target.x;
  grid.focus[1] = eye.target.z;
}

Gate ChooseGate(double lensAspect, double pictureAspect, double& fieldOfView) {
  const double room = 1.0 - 2.0 * kGateMargin;
  Gate gate;
  gate.visible = true;
  const double height = std::min(room, room * pictureAspect / lensAspect);
  const double width = height * lensAspect / pictureAspect;
  gate.left = static_cast<float>(0.5 * (1.0 - width));
  gate.bottom = static_cast<float>(0.5 * (1.0 - height));
  gate.width = static_cast<float>(width);
  gate.height = static_cast<float>(height);
  fieldOfView = 360.0 / kPi * std::atan(TanHalf(fieldOfView) / height);
  return gate;
}

}  // namespace orv::app::view
