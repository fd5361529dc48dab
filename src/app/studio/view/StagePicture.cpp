#include "app/studio/view/StagePicture.h"

#include <algorithm>
#include <cmath>

namespace orv::app::view {

using util::Matrix;
using util::Vector3;

namespace {

/// From the eye to the ground of a scene with nothing on it (m).
constexpr double kFirstDistance = 14.0;

/// Turns about +Y of the first axis, which of what drives stays level, and which wheels turn about.
/// One that points up or down has none: it is then `last`.
double HeadingOf(const Matrix<double>& pose, double last) {
  constexpr double kLeast = 0.1;
  Vector3<double> axis = pose.axisRow(0);
  const double length = axis.length();
  if (!(length > 0.0)) return last;
  axis /= length;
  return std::hypot(axis.x, axis.z) < kLeast ? last : std::atan2(-axis.z, axis.x);
}

}  // namespace

void StagePicture::Make(FrameSource& source, double aspect) {
  m_aspect = aspect;
  m_optics.fieldOfView = kFieldOfView;
  if (m_framesNext && !source.GetBox(BoxOf::kAll).isEmpty()) FrameFirst(source);
  Travel(source);
  SourceLens lens;
  m_isThrough = source.GetLens(m_number, lens);
  packet.gate.visible = false;
  packet.backdrop = m_isThrough ? lens.backdrop : BackdropLook();
  OrbitEye eye = m_eye;
  if (m_isThrough) {
    m_pose = lens.pose;
    m_pose.normalizeRows();
    m_optics.fieldOfView = lens.fieldOfView;
    // The inset is as wide and as high as what the camera sees.
    if (m_number != kInset) packet.gate = ChooseGate(lens.aspect, aspect, m_optics.fieldOfView);
    eye = OrbitEye::FromPose(m_pose, m_eye.distance);
  } else {
    m_pose = m_eye.GetPose();
  }
  ChooseClip(m_pose, source.GetBox(BoxOf::kAll), m_optics);
  ChooseGrid(eye, packet.grid);
  view::SetEye(packet, m_pose, m_optics, aspect);
  source.Write(m_number, packet);
}

void StagePicture::Travel(FrameSource& source) {
  SourceGuide guide;
  if (!source.GetGuide(m_number, guide)) {
    m_guide = nullptr;
    return;
  }
  const Vector3<double> at = guide.pose.translation();
  const double heading = HeadingOf(guide.pose, m_guide == guide.node ? m_guideHeading : 0.0);
  if (m_guide == guide.node)
    m_eye.Travel(m_guideAt, at, guide.turns ? heading - m_guideHeading : 0.0);
  m_guide = guide.node;
  m_guideAt = at;
  m_guideHeading = heading;
}

void StagePicture::FrameFirst(const FrameSource& source) {
  m_framesNext = false;
  if (const util::Box matter = source.GetBox(BoxOf::kMatter); !matter.isEmpty())
    return m_eye.Frame(matter, kFieldOfView, m_aspect);
  // A ground alone: where the next node will stand.
  const util::Box ground = source.GetBox(BoxOf::kAll);
  for (int i = 0; i < 3; ++i) m_eye.target[i] = std::clamp(0.0, ground.low[i], ground.high[i]);
  m_eye.distance = kFirstDistance;
}

bool StagePicture::Frame(FrameSource& source, BoxOf what) {
  const util::Box box = source.GetBox(what);
  if (box.isEmpty()) return false;
  m_framesNext = false;
  m_eye.Frame(box, kFieldOfView, m_aspect);
  return true;
}

void StagePicture::SetEye(const OrbitEye& eye) {
  m_eye = eye;
  m_framesNext = false;
}

void StagePicture::LeaveCamera() {
  m_isThrough = false;
  m_eye = OrbitEye::FromPose(m_pose, m_eye.distance);
}

void StagePicture::GetRay(double x, double y, Vector3<double>& origin,
                          Vector3<double>& direction) const {
  RayThrough(m_pose, m_optics, m_aspect, x, y, origin, direction);
}

}  // namespace orv::app::view
