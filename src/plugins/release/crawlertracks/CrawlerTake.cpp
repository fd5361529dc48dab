// A crawler in a take: wheels lead, the belt's world is stepped, and what it gives is keyed.
#include <algorithm>
#include <cmath>
#include <utility>

#include "core/interface/CNode.h"
#include "plugins/common/FrameGrid.h"
#include "plugins/common/NodeScale.h"
#include "plugins/release/crawlertracks/CrawlerTrack.h"
#include "plugins/release/crawlertracks/CrawlerUndo.h"
#include "plugins/release/crawlertracks/CrawlerWheel.h"
#include "unidevice/Property.h"

namespace orv::rws::addon {

using Matrix = CrawlerTracks::Matrix;
using Vector = CrawlerTracks::Vector;
using Quat = util::Quat<double>;
using Transform = util::QTransform<double>;

namespace {

/// Ratio of the scales of Frame and driveWheel from which, and below whose inverse, the user is
/// warned.
constexpr double kMostScaleRatio = 2.0;
/// Cosine of the angle at the driveWheel from another wheel to a step below which it holds the
/// step.
constexpr double kHoldCosine = -0.5;

Transform InBelt(const Matrix& world, double scale) {
  return {world.translation() / scale, Quat::fromMatrix(world)};
}

/// Between two poses, the short way round.
Transform Between(const Transform& a, const Transform& b, double part) {
  if (a == b) return a;
  Quat turn = a.rotation.conjugate() * b.rotation;
  const Quat rotation = a.rotation * Quat::fromRotationVector(turn.toRotationVector() * part);
  return {a.position + (b.position - a.position) * part, rotation.normalized()};
}

template <class T>
void CutFrom(util::AVar_Latest<T>& history, double time) {
  history.cutFrom(time + kFrameTolerance);
}

}  // namespace

// --- a take begins and ends ---

bool CrawlerTracks::IsReady(double time) const {
  if (RefuseWithoutTrack() || RefuseMirrored(time)) return false;
  const auto isThere = [](const RigSceneNode& node) {
    return node.IsBound() && node.GetNode()->IsValid();
  };
  for (const WheelList* list : {&m_wheels, &m_supportWheels}) {
    for (const auto& wheel : *list) {
      if (isThere(*wheel)) continue;
      Tell("Error", "Could not create an actor, no wheelNode", kIconCritical);
      return false;
    }
  }
  if (!m_track->steps.empty() && std::all_of(m_track->steps.begin(), m_track->steps.end(),
                                             [&](const auto& step) { return isThere(*step); }))
    return true;
  Tell("Error", "Error when updating, can't find steps.", kIconCritical);
  return false;
}

void CrawlerTracks::WarnOfScale(double time) {
  const double frame = m_frame.ReadMatrix(time).rowLengths().y;
  const double drive = m_wheels.front()->ReadMatrix(time).rowLengths().y;
  const double ratio = frame / drive;
  if (ratio <= kMostScaleRatio && ratio >= 1.0 / kMostScaleRatio) return;
  Tell("Warning",
       "Difference in scale between Frame and driveWheel too large. the Frame and the Drivewheel "
       "should have roughly the same scale for best results. This may cause unwanted behaviour of "
       "the tracks.",
       kIconWarning);
}

void CrawlerTracks::Start(double time) {
  m_inTake = true;
  m_hideModes.Start();
  groundExist = m_gravityDirection.HasMesh(time);
  m_isRunning = IsReady(time);
  if (!m_isRunning) return;
  WarnOfScale(time);
  for (const WheelList* list : {&m_wheels, &m_supportWheels})
    for (const auto& wheel : *list) PushVariableUndo(*m_pInterface, wheel->radius);
  for (const auto& step : m_track->steps) {
    m_pInterface->PushUndo(new BulletActorRecordingUndo(m_track, *step, time + kFrameTolerance));
    CutFrom(step->linVelocity, time);
    CutFrom(step->angVelocity, time);
  }
  PushVariableUndo(*m_pInterface, m_track->heldStep);
  PushVariableUndo(*m_pInterface, m_track->heldAngle);
  CutFrom(m_track->heldStep, time);
  CutFrom(m_track->heldAngle, time);
  Settle(time);
}

void CrawlerTracks::Forget(double time) {
  if (!m_track) return;
  const double dt = m_pInterface->GetFrameDuration();
  for (const auto& step : m_track->steps) {
    ForgetTake(step->linVelocity, time, dt);
    ForgetTake(step->angVelocity, time, dt);
  }
  ForgetTake(m_track->heldStep, time, dt);
  ForgetTake(m_track->heldAngle, time, dt);
}

void CrawlerTracks::Stop() {
  m_hideModes.Stop();
  m_gravityDirection.ReleaseSurfaces();
  m_world.reset();
  m_isRunning = m_inTake = false;
}

double CrawlerTracks::StepLength() const {
  return m_pInterface->GetFrameDuration() / (m_settings.subFrames + 1);
}

Vector CrawlerTracks::GravityAt(double time, double divisor) const {
  const Vector down = -m_gravityDirection.ReadMatrix(time).axisRow(2).normalized();
  return down * (m_settings.gravity / divisor);
}

/// Always in the same order and from the scene and the memory alone, so that a resimulation finds
/// the very world that the take had: ground, wheels, steps, joints.
void CrawlerTracks::BuildWorld(double time) {
  m_scale = FrameScale(time);
  // Kept until the new ones are made: a shape that is still the same is not built again.
  const std::unique_ptr<BeltWorld> before = std::move(m_world);
  std::vector<std::shared_ptr<const triMeshStorage>> shapes;
  if (groundExist) shapes = m_gravityDirection.CaptureShapes(time, m_scale, m_shapes);
  MeasureWheels(time);
  FindMotions();
  m_world = std::make_unique<BeltWorld>(
      static_cast<int>(shapes.size() + m_motions.size() + m_track->steps.size()), m_settings.tuning,
      StepLength());
  m_gravityDirection.ReadPoses(time, m_groundsAfter);
  m_grounds.clear();
  for (std::size_t i = 0; i < shapes.size(); ++i)
    m_grounds.push_back(
        m_world->AddGround(std::move(shapes[i]), InBelt(m_groundsAfter[i], m_scale)));
  ReadMotions(time, time);
  m_turn = 0.0;
  for (const WheelMotion& motion : m_motions) {
    m_world->AddWheel(motion.wheel->radius / m_scale, motion.wheel->halfWidth / m_scale,
                      WheelAt(motion, 0.0));
  }
  BuildSteps(time);
  const double iterations = m_settings.trackIterations;
  // Several steps of the world in one sub-frame of the same length then fall no farther than one.
  m_world->SetGravity(GravityAt(time, iterations * iterations));
}

/// What the scene and the memory tell of a step's body at `time`.
BodyState CrawlerTracks::StateAt(int index, double time) const {
  const Track::Step& step = *m_track->steps[static_cast<std::size_t>(index)];
  const Quat axes = Quat::fromMatrix(m_frame.ReadMatrix(time));
  BodyState state;
  state.pose = InBelt(step.ReadMatrix(time), m_scale);
  state.pose.position += state.pose.rotation.rotate(step.shape.middle);
  state.linear = axes.rotate(step.linVelocity.value(time));
  state.angular = axes.rotate(step.angVelocity.value(time));
  return state;
}

void CrawlerTracks::BuildSteps(double time) {
  for (std::size_t i = 0; i < m_track->steps.size(); ++i)
    m_world->AddStep(m_track->steps[i]->body, StateAt(static_cast<int>(i), time));
  m_world->Link(true);
  if (m_track->heldStep.samples.empty() || m_track->heldStep.value(time) < 0) return;
  m_world->AttachAt(m_track->heldStep.value(time), 0, HoldDistance(),
                    m_track->heldAngle.value(time));
}

/// The world is stepped for the length of a frame. A new belt comes to lie on its wheels by that.
/// One with a memory lives through the frame before the start once more, so that the solver knows
/// what touches what, and then stands as the memory has it.
void CrawlerTracks::Settle(double time) {
  const double dt = m_pInterface->GetFrameDuration();
  const double before = FrameBefore(time, dt);
  const auto& memory = m_track->steps.front()->linVelocity.samples;
  const bool goesOn = !memory.empty() && memory.front().time <= time + kFrameTolerance;
  const bool hasFrame = goesOn && memory.front().time <= before + kFrameTolerance;
  BuildWorld(hasFrame ? before : time);
  ReadFrame(hasFrame ? before : time, time);
  StepFrame(time, false);
  for (int i = 0; goesOn && i < m_world->GetStepCount(); ++i) m_world->SetStep(i, StateAt(i, time));
}

// --- the wheels ---

/// Wheels that turn have the speed of the belt's line where they touch it.
void CrawlerTracks::FindMotions() {
  m_motions.clear();
  m_others.clear();
  for (std::size_t i = 1; i < m_wheels.size(); ++i)
    if (m_wheels[i]->kind.trackWheel) m_others.push_back(static_cast<int>(i));
  const double half = m_track->steps.front()->shape.size.y / 2 * m_scale;
  const double drive = m_wheels.front()->radius + half;
  for (const WheelList* list : {&m_wheels, &m_supportWheels}) {
    for (const auto& wheel : *list) {
      WheelMotion motion;
      motion.wheel = wheel.get();
      const double sense = wheel->kind.innerWheel || wheel->kind.support ? 1.0 : -1.0;
      if (!wheel->kind.staticWheel) motion.ratio = sense * drive / (wheel->radius + half);
      m_motions.push_back(motion);
    }
  }
}

void CrawlerTracks::ReadMotions(double before, double time) {
  for (WheelMotion& motion : m_motions) {
    motion.before = motion.wheel->ReadMatrix(before);
    motion.after = before == time ? motion.before : motion.wheel->ReadMatrix(time);
  }
}

/// Where a wheel is when this part of the frame has gone by, in the belt's world.
Transform CrawlerTracks::WheelAt(const WheelMotion& motion, double part) const {
  Transform pose = Between(InBelt(motion.before, m_scale), InBelt(motion.after, m_scale), part);
  const double turn = m_turn * motion.ratio * part;
  if (turn != 0.0) pose.rotation = Quat::fromRotationVector({turn, 0.0, 0.0}) * pose.rotation;
  return pose;
}

void CrawlerTracks::MoveTo(double part) {
  for (std::size_t i = 0; i < m_motions.size(); ++i)
    m_world->MoveWheel(static_cast<int>(i), WheelAt(m_motions[i], part));
  for (std::size_t i = 0; i < m_grounds.size(); ++i) {
    if (m_grounds[i] < 0 || m_groundsBefore[i] == m_groundsAfter[i]) continue;
    m_world->MoveGround(m_grounds[i], Between(InBelt(m_groundsBefore[i], m_scale),
                                              InBelt(m_groundsAfter[i], m_scale), part));
  }
}

double CrawlerTracks::HoldDistance() const {
  return m_motions.front().wheel->radius / m_scale + m_track->steps.front()->body.size.y / 2;
}

/// The driveWheel holds the steps on its side that looks away from the other wheels.
void CrawlerTracks::HoldSteps() {
  const Vector centre = m_world->GetWheel(0).position;
  const double distance = HoldDistance();
  const auto toWheel = [&](int index) {
    return (m_world->GetWheel(index).position - centre).normalized();
  };
  const Vector second = m_others.empty() ? Vector() : toWheel(m_others.front());
  const Vector last = m_others.empty() ? Vector() : toWheel(m_others.back());
  const int count = m_world->GetStepCount();
  bool failed = false;
  const auto visit = [&](int i) {
    const Vector step = (m_world->GetStepPlace(i) - centre).normalized();
    const bool holds =
        m_others.empty() || (step.dot(second) < kHoldCosine && step.dot(last) < kHoldCosine);
    if (holds)
      failed = !m_world->Attach(i, 0, distance) || failed;
    else
      m_world->Detach(i);
    return holds;
  };
  // Outwards from one that is held, so that each joins at the pitch of a neighbour.
  int first = 0;
  while (first < count && !m_world->IsAttached(first)) ++first;
  for (int k = 1; first < count && k < count && visit((first + k) % count); ++k) {
  }
  for (int k = 1; first < count && k < count && visit((first - k + count) % count); ++k) {
  }
  for (int i = 0; i < count; ++i) visit(i);
  if (failed)
    Tell("Error", "Error when attaching step to driveWheel, please recreate Track.", kIconCritical);
}

/// The steps that run on a wheel are led in the plane of the driveWheel, whatever slope the vehicle
/// is on.
void CrawlerTracks::GuideSteps() {
  const Transform drive = m_world->GetWheel(0);
  const Quat toWheel = drive.rotation.conjugate();
  const StepBody& body = m_track->steps.front()->body;
  const double reach = m_motions.front().wheel->halfWidth / m_scale + body.size.x / 2;
  for (int i = 0; i < m_world->GetStepCount(); ++i) {
    const Vector place = m_world->GetStepPlace(i);
    const bool isOn = std::abs(toWheel.rotate(place - drive.position).x) < reach;
    bool touches = false;
    for (std::size_t w = 0; isOn && !touches && w < m_motions.size(); ++w) {
      const Vector apart = toWheel.rotate(place - m_world->GetWheel(static_cast<int>(w)).position);
      const double touch = m_motions[w].wheel->radius / m_scale + body.size.y;
      touches = std::hypot(apart.y, apart.z) < touch;
    }
    m_world->Guide(i, 0, touches);
  }
}

// --- a frame ---

/// How wheels and ground move between two times.
void CrawlerTracks::ReadFrame(double before, double time) {
  ReadMotions(before, time);
  std::swap(m_groundsBefore, m_groundsAfter);
  m_gravityDirection.ReadPoses(time, m_groundsAfter);
  m_groundsBefore.resize(m_groundsAfter.size());
}

/// Steps the world through the frame that ends at `time`; keys what comes out where `writes`.
void CrawlerTracks::StepFrame(double time, bool writes) {
  const double dt = m_pInterface->GetFrameDuration();
  const int subFrames = m_settings.subFrames + 1, iterations = m_settings.trackIterations;
  for (int k = 1; k <= subFrames; ++k) {
    HoldSteps();
    GuideSteps();
    for (int i = 1; i <= iterations; ++i) {
      MoveTo((k - 1 + static_cast<double>(i) / iterations) / subFrames);
      m_world->Advance();
    }
    if (!writes) continue;
    if (HasBurst()) return;
    const double part = static_cast<double>(k) / subFrames;
    if (m_settings.setSubFrames || m_settings.subFrames == 0 || k == subFrames)
      WriteFrame(time - (1.0 - part) * dt, part);
  }
}

void CrawlerTracks::Step(double time) {
  if (!m_isRunning) return;
  const double dt = m_pInterface->GetFrameDuration();
  const double before = FrameBefore(time, dt);
  const double iterations = m_settings.trackIterations;
  m_world->Tune(m_settings.tuning, StepLength());
  m_world->SetGravity(GravityAt(before, iterations * iterations));
  ReadFrame(before, time);
  // Forward is -Z: the belt's upper run goes there.
  m_turn = m_input ? -m_input->read() * m_settings.rotationInput * dt : 0.0;
  StepFrame(time, true);
}

void CrawlerTracks::WriteFrame(double time, double part) {
  const auto poseOf = [&](const Transform& inBelt, const Vector& scale) {
    Matrix matrix = Transform{inBelt.position * m_scale, inBelt.rotation}.toMatrix();
    ScaleRows(matrix, scale);
    return matrix;
  };
  for (const WheelMotion& motion : m_motions)
    if (motion.ratio != 0.0)
      motion.wheel->WriteKey(time, poseOf(WheelAt(motion, part), ScaleOf(motion.after)));
  int held = m_world->GetStepCount() - 1;
  while (held >= 0 && !m_world->IsAttached(held)) --held;
  m_track->heldStep.set(time, held);
  m_track->heldAngle.set(time, held < 0 ? 0.0 : m_world->GetAttachedAngle(held));
  const Quat toFrame = Quat::fromMatrix(m_frame.ReadMatrix(time)).conjugate();
  for (std::size_t i = 0; i < m_track->steps.size(); ++i) {
    Track::Step& step = *m_track->steps[i];
    const BodyState state = m_world->GetStep(static_cast<int>(i));
    Transform pose = state.pose;
    pose.position -= pose.rotation.rotate(step.shape.middle);
    step.WriteKey(time, poseOf(pose, step.shape.scale));
    step.linVelocity.set(time, toFrame.rotate(state.linear));
    step.angVelocity.set(time, toFrame.rotate(state.angular));
  }
}

/// A belt that flew apart stands still from here on, and the user is told what helps. One that has
/// only slid off its wheels goes on falling.
bool CrawlerTracks::HasBurst() {
  constexpr double kMostPitches = 5.0;   // between the middles of neighbours
  constexpr double kFarthest = 10000.0;  // from the driveWheel (units of the Frame)
  const int count = m_world->GetStepCount();
  const double pitch = m_track->steps.front()->body.pitch;
  const Vector drive = m_world->GetWheel(0).position;
  bool whole = true;
  for (int i = 0; i < count && whole; ++i) {
    const Vector place = m_world->GetStepPlace(i);
    whole = (place - m_world->GetStepPlace((i + 1) % count)).length() < kMostPitches * pitch &&
            (place - drive).length() < kFarthest;
  }
  // With so few steps that they are no belt there is nothing to burst.
  if (whole || count < 3) return false;
  m_isRunning = false;
  Tell("Warning",
       "The track has burst, and stands still from here on. Try more SubFrames, more Accuracy, "
       "less Gravity or a slower driveWheel, and see that the wheels leave it room.",
       kIconWarning);
  return true;
}

}  // namespace orv::rws::addon
