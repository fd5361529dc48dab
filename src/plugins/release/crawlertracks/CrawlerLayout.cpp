// How the belt lies round its wheels.
#include <algorithm>
#include <cmath>

#include "core/interface/CNode.h"
#include "plugins/release/crawlertracks/CrawlerActions.h"
#include "plugins/release/crawlertracks/CrawlerTrack.h"
#include "plugins/release/crawlertracks/CrawlerWheel.h"
#include "util/Angles.h"

namespace orv::rws::addon {

using Matrix = CrawlerTracks::Matrix;
using Vector = CrawlerTracks::Vector;

namespace {

/// Wheels this close, in units of the Frame, stand at the same place.
constexpr double kSamePlace = 1e-6;
/// Room between the driveWheel and a wheel that was moved out of it, as a part of their radii.
constexpr double kRoom = 0.1;

}  // namespace

double CrawlerTracks::FrameScale(double time) const {
  const double scale = m_frame.ReadMatrix(time).rowLengths().z;
  return std::isnormal(scale) ? scale : 1.0;
}

CrawlerTracks::WheelList CrawlerTracks::TrackWheels() const {
  WheelList list;
  for (const auto& wheel : m_wheels)
    if (wheel->kind.trackWheel) list.push_back(wheel);
  return list;
}

/// A mirrored belt would run inside out, and no body of the physics can be mirrored.
bool CrawlerTracks::RefuseMirrored(double time) const {
  const Matrix frame = m_frame.ReadMatrix(time);
  if (frame.axisRow(0).cross(frame.axisRow(1)).dot(frame.axisRow(2)) > 0.0) return false;
  Tell("Error",
       "The Frame is mirrored or has a scale of 0. Give it a positive scale, and turn it instead.",
       kIconCritical);
  return true;
}

void CrawlerTracks::WarnOfUnevenFrame(double time) const {
  constexpr double kEven = 1e-3;
  const Vector scale = m_frame.ReadMatrix(time).rowLengths();
  if (std::abs(scale.x - scale.z) <= kEven * scale.z &&
      std::abs(scale.y - scale.z) <= kEven * scale.z)
    return;
  Tell("Warning",
       "The Frame is scaled unevenly, so that the track does not fit its wheels. Scale it evenly, "
       "and shape wheels and TemplateStep by their own scales.",
       kIconWarning);
}

void CrawlerTracks::MeasureWheels(double time) {
  for (const WheelList* list : {&m_wheels, &m_supportWheels})
    for (const auto& wheel : *list) wheel->Measure(time);
}

bool CrawlerTracks::MeasureStep(StepShape& shape) const {
  const double now = m_pInterface->GetTime();
  bool isMesh = false;
  const util::CMesh mesh = m_gravityDirection.MeshOf(m_templateStep.GetNode(), now, isMesh);
  if (mesh.vertices.empty()) return false;
  Vector low = mesh.vertices.front(), high = low;
  for (const Vector& vertex : mesh.vertices) {
    for (int i = 0; i < 3; ++i) {
      low[i] = std::min(low[i], vertex[i]);
      high[i] = std::max(high[i], vertex[i]);
    }
  }
  shape.scale = m_templateStep.ReadMatrix(now).rowLengths();
  const double unit = FrameScale(now);
  for (int i = 0; i < 3; ++i) {
    shape.size[i] = (high[i] - low[i]) * shape.scale[i] / unit;
    shape.middle[i] = (high[i] + low[i]) / 2 * shape.scale[i] / unit;
    if (!(shape.size[i] > 0.0) || !std::isfinite(shape.size[i])) return false;
  }
  return true;
}

void CrawlerTracks::MoveOutOfDriveWheel() {
  const double now = m_pInterface->GetTime();
  const Wheel& drive = *m_wheels.front();
  const Matrix frame = m_frame.ReadMatrix(now);
  const Vector centre = drive.ReadMatrix(now).translation();
  for (std::size_t i = 1; i < m_wheels.size(); ++i) {
    Wheel& wheel = *m_wheels[i];
    Matrix pose = wheel.ReadMatrix(now);
    if ((pose.translation() - centre).length() > kSamePlace * FrameScale(now)) continue;
    Tell("Warning",
         wheel.GetName() + " has the same position as the DriveWheel, moving it out of wheel.",
         kIconWarning);
    const double way = (drive.radius + wheel.radius) * (1.0 + kRoom);
    pose.setTranslation(centre - frame.axisRow(2).normalized() * way);
    wheel.Place(now, pose);
  }
}

std::optional<BeltPath> CrawlerTracks::FindPath() {
  const double now = m_pInterface->GetTime();
  if (RefuseMirrored(now)) return std::nullopt;
  WarnOfUnevenFrame(now);
  for (const WheelList* list : {&m_wheels, &m_supportWheels})
    for (const auto& wheel : *list) wheel->OnCallback(kCreateTrack);
  MoveOutOfDriveWheel();
  StepShape shape;
  if (!MeasureStep(shape)) {
    Tell("Error", "Could not create TemplateStep", kIconCritical);
    return std::nullopt;
  }
  const Matrix inverse = m_frame.ReadMatrix(now).affineInverse();
  std::vector<BeltCircle> circles;
  for (const auto& wheel : TrackWheels()) {
    const Vector centre = inverse.transformPoint(wheel->ReadMatrix(now).translation());
    const double radius = wheel->radius / FrameScale(now) + shape.size.y / 2;
    circles.push_back({{centre.z, centre.y}, wheel->kind.innerWheel ? radius : -radius});
  }
  std::string problem;
  std::optional<BeltPath> path = BeltPath::Lay(circles, problem);
  if (!path) Tell("Error", "The track can't be laid: " + problem + ".", kIconCritical);
  return path;
}

/// Steps are counted by lengths that are not those of the belt as it is laid: between two wheels it
/// is the root of the squares of their distance and of the difference of their radii, added where
/// the tangent's has them subtracted. Meant; the belt is laid on the true line.
double CrawlerTracks::Perimeter() {
  const std::optional<BeltPath> path = FindPath();
  StepShape shape;
  if (!path || !MeasureStep(shape)) return -1.0;
  const double now = m_pInterface->GetTime();
  const double unit = FrameScale(now);
  const WheelList wheels = TrackWheels();
  if (wheels.size() == 1)
    return 2.0 * util::kPi * (wheels.front()->radius + shape.size.y / 2 * unit);
  const Matrix inverse = m_frame.ReadMatrix(now).affineInverse();
  const auto signedRadius = [&](const Wheel& wheel) {
    const double radius = wheel.radius / unit + shape.size.y / 2;
    return wheel.kind.innerWheel ? radius : -radius;
  };
  double length = path->GetArcLength();
  for (std::size_t i = 0; i < wheels.size(); ++i) {
    const Wheel &a = *wheels[i], &b = *wheels[(i + 1) % wheels.size()];
    const Vector way = inverse.transformPoint(b.ReadMatrix(now).translation()) -
                       inverse.transformPoint(a.ReadMatrix(now).translation());
    length += std::hypot(way.length(), signedRadius(b) - signedRadius(a));
  }
  return length * unit;
}

void CrawlerTracks::CalculateSteps() {
  StepShape shape;
  const double length = Perimeter();
  if (length < 0.0 || !MeasureStep(shape)) return;
  const double unit = FrameScale(m_pInterface->GetTime());
  const double step = shape.size.z * unit;
  double gap = m_settings.trackGap * unit;
  if (gap < -step) gap = 0.0;
  const double count = length / (step + gap);
  // A gap of just minus the step's length leaves no count.
  if (!(count < kMostSteps + 1.0)) {
    Tell("Warning",
         "The track would need more than " + std::to_string(kMostSteps) +
             " steps. Scale the TemplateStep up, or widen the gap.",
         kIconWarning);
    return;
  }
  SetByAction(m_settings.nrSteps, static_cast<int>(count));
}

void CrawlerTracks::CalculateGap() {
  if (m_settings.nrSteps < 1) {
    SetByAction(m_settings.trackGap, 0.0);
    return;
  }
  StepShape shape;
  const double length = Perimeter();
  if (length < 0.0 || !MeasureStep(shape)) return;
  const double unit = FrameScale(m_pInterface->GetTime());
  const double step = shape.size.z * unit;
  // Meant: the steps leave one gap less than there are steps.
  const double gap = (length - m_settings.nrSteps * step) / (m_settings.nrSteps - 1) / unit;
  if (gap * unit < -step || !std::isfinite(gap)) return;
  SetByAction(m_settings.trackGap, std::clamp(gap, -kMostGap, kMostGap));
}

bool CrawlerTracks::MakeSteps(Track& track, const BeltPath& path, int count) {
  const double now = m_pInterface->GetTime();
  const Matrix frame = m_frame.ReadMatrix(now);
  const double across =
      frame.affineInverse().transformPoint(m_wheels.front()->ReadMatrix(now).translation()).x;
  StepShape shape;
  MeasureStep(shape);
  StepBody body;
  body.size = shape.size;
  body.mass = track.density * shape.size.x * shape.size.y * shape.size.z;
  body.pitch = path.GetPitch(count);
  // The steps' Z is to lead on along the chain.
  const double sense = path.IsLeftTurning() ? -1.0 : 1.0;
  for (int i = 0; i < count; ++i) {
    const BeltPath::Place place = path.At(sense * path.GetLength() * i / count);
    const Vector up(0, place.outward.y, place.outward.z), x(1, 0, 0), along = x.cross(up);
    const Vector middle = x * shape.middle.x + up * shape.middle.y + along * shape.middle.z;
    Matrix local;
    local.setAxisRow(0, x);
    local.setAxisRow(1, up);
    local.setAxisRow(2, along);
    local.setTranslation(Vector(across, place.point.y, place.point.z) - middle);
    Matrix pose = frame * local;
    pose.setRowLengths(shape.scale);
    Track::Step& step = track.Add();
    step.shape = shape;
    step.body = body;
    if (step.Create() != 0) {
      Tell("Error", "Could not create StepActor...", kIconCritical);
      return false;
    }
    if (!step.GetNode()->IsValid()) {
      Tell("Error", "no StepActor", kIconCritical);
      return false;
    }
    step.Place(now, pose);
  }
  return true;
}

/// Writes a settled belt to its nodes.
void CrawlerTracks::PlaceSteps(double time) {
  constexpr double kEver = -1e9;  // s; ahead of every take
  for (std::size_t i = 0; i < m_track->steps.size(); ++i)
    m_track->steps[i]->Place(time, StepPose(static_cast<int>(i)));
  NoteHeldStep(kEver);
}

/// How far the world's steps are from their nodes, at most (m).
double CrawlerTracks::FarthestStep(double time) const {
  double farthest = 0.0;
  for (std::size_t i = 0; i < m_track->steps.size(); ++i) {
    const Vector node = m_track->steps[i]->ReadMatrix(time).translation();
    farthest = std::max(farthest, (StepPose(static_cast<int>(i)).translation() - node).length());
  }
  return farthest;
}

/// Runs a track that was laid until it rests on its wheels and on the ground that there is, so that
/// a take begins without a drop; speeds die away meanwhile. Then takes begin, each where the one
/// before has led: steps that a wheel presses on the ground may skip from one hold to another as
/// their contacts are found anew. The first whose frame leaves the belt where it is has its
/// beginning kept, and is what a take will find. One that flies apart or comes off is left as it
/// was laid.
void CrawlerTracks::SettleTrack() {
  constexpr double kStill = 1e-3;    // speed of the fastest step (units of the Frame per second)
  constexpr double kLongest = 6.0;   // s
  constexpr double kCalming = 8.0;   // 1/s; about critical for the swing of a run between wheels
  constexpr double kInPlace = 8e-4;  // units of the Frame
  constexpr int kMostBeginnings = 16;
  const double now = m_pInterface->GetTime();
  groundExist = m_gravityDirection.HasMesh(now);
  m_turn = 0.0;
  BuildWorld(now);
  ReadFrame(now, now);
  m_world->Calm(kCalming);
  double top = INFINITY;
  for (double t = 0.0; t < kLongest && top > kStill; t += WorldStep()) {
    StepPart(0.0, 0.0);
    top = m_world->GetTopSpeed();
  }
  for (int i = 0; i <= kMostBeginnings && IsWhole() && !HasLeft(); ++i) {
    if (i > 0 && FarthestStep(now) < kInPlace * m_scale) break;
    PlaceSteps(now);
    Settle(now);
    StepFrame(now, false);
  }
  m_world.reset();
}

}  // namespace orv::rws::addon
