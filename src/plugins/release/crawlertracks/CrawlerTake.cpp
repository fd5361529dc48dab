// A crawler in a take: wheels lead, the belt's world is stepped, and what it gives is keyed.
#include <algorithm>
#include <cmath>
#include <utility>

#include "core/interface/CNode.h"
#include "plugins/common/NodeScale.h"
#include "plugins/release/crawlertracks/CrawlerTrack.h"
#include "plugins/release/crawlertracks/CrawlerUndo.h"
#include "plugins/release/crawlertracks/CrawlerWheel.h"
#include "unidevice/Property.h"
#include "util/Angles.h"
#include "util/FrameGrid.h"

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
  history.cutFrom(time + util::kFrameTolerance);
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
    m_pInterface->PushUndo(
        new BulletActorRecordingUndo(m_track, *step, time + util::kFrameTolerance));
    CutFrom(step->linVelocity, time);
    CutFrom(step->angVelocity, time);
  }
  PushVariableUndo(*m_pInterface, m_track->heldStep);
  PushVariableUndo(*m_pInterface, m_track->heldAngle);
  CutFrom(m_track->heldStep, time);
  CutFrom(m_track->heldAngle, time);
  Settle(time);
}

void CrawlerTracks::Stop() {
  m_hideModes.Stop();
  m_gravityDirection.ReleaseSurfaces();
  m_world.reset();
  m_isRunning = m_inTake = false;
}

/// A sub-frame that is long beside the swing of a tight belt is run as several, else joints would
/// blow the swing up and contacts be passed by. So few sub-frames cost no less than these do: a
/// belt that stays on its wheels is worth more to a user than the time.
int CrawlerTracks::SubFrameParts() const {
  constexpr double kLongestStep =
      0.004;  // s; with the usual 10 sub-frames 24 frames/s need no more
  const double length = m_pInterface->GetFrameDuration() / (m_settings.subFrames + 1);
  return std::max(static_cast<int>(std::ceil(length / kLongestStep - util::kFrameTolerance)), 1);
}

double CrawlerTracks::WorldStep() const {
  return m_pInterface->GetFrameDuration() / ((m_settings.subFrames + 1) * SubFrameParts());
}

Vector CrawlerTracks::GravityAt(double time) const {
  const Vector down = -m_gravityDirection.ReadMatrix(time).axisRow(2).normalized();
  return down * m_settings.gravity;
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
      static_cast<int>(shapes.size() + m_motions.size() + m_track->steps.size()), m_settings,
      WorldStep());
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
  m_world->SetGravity(GravityAt(time));
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
  const int held = m_track->heldStep.value(time);
  const double angle = m_track->heldAngle.value(time);
  // A wheel that was turned by hand since then holds what it finds.
  const Transform wheel = m_world->GetWheel(0);
  const Vector found =
      wheel.rotation.conjugate().rotate(m_world->GetStepPlace(held) - wheel.position);
  const double off = std::remainder(std::atan2(found.z, found.y) - angle, 2.0 * util::kPi);
  if (std::abs(off) * HoldDistance() < m_track->steps.front()->body.pitch / 2)
    m_world->AttachAt(held, 0, HoldDistance(), angle);
}

/// The world is stepped for the length of a frame, so that the solver knows what touches what and
/// what pulls: through the frame before the start where there is a memory of it. Then the belt
/// stands as the scene and the memory have it; a new one was settled when it was laid.
void CrawlerTracks::Settle(double time) {
  const double dt = m_pInterface->GetFrameDuration();
  const double before = util::frameBefore(time, dt);
  const auto& memory = m_track->steps.front()->linVelocity.samples;
  const bool goesOn = !memory.empty() && memory.front().time <= time + util::kFrameTolerance;
  m_isNew = !goesOn;
  m_hasLeft = false;
  // Not behind the end of another take: poses there depend on the keys on both sides.
  const bool hasFrame = goesOn && memory.front().time <= before + util::kFrameTolerance &&
                        memory.back().time >= before - util::kFrameTolerance;
  BuildWorld(hasFrame ? before : time);
  ReadFrame(hasFrame ? before : time, time);
  m_world->FillContacts(true);
  // Where nothing moves meanwhile, for as long as contacts need at the least.
  constexpr double kLeastTime = 0.04;  // s
  for (double t = 0.0; t == 0.0 || (!hasFrame && t < kLeastTime - util::kFrameTolerance); t += dt)
    StepFrame(time, false);
  m_world->FillContacts(false);
  for (int i = 0; i < m_world->GetStepCount(); ++i) m_world->SetStep(i, StateAt(i, time));
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

/// Steps the world through a part of the frame.
void CrawlerTracks::StepPart(double from, double to) {
  HoldSteps();
  GuideSteps();
  const int iterations = m_settings.trackIterations;
  for (int i = 1; i <= iterations; ++i) {
    MoveTo(from + (to - from) * i / iterations);
    m_world->Advance();
  }
}

/// Steps the world through the frame that ends at `time`; keys what comes out where `writes`.
void CrawlerTracks::StepFrame(double time, bool writes) {
  const double dt = m_pInterface->GetFrameDuration();
  const int split = SubFrameParts(), parts = (m_settings.subFrames + 1) * split;
  for (int k = 1; k <= parts; ++k) {
    const double part = static_cast<double>(k) / parts;
    StepPart(static_cast<double>(k - 1) / parts, part);
    if (!writes) continue;
    if (HasBurst()) return;
    if (k == parts || (m_settings.setSubFrames && k % split == 0))
      WriteFrame(time - (1.0 - part) * dt, part);
  }
}

/// A belt without a memory goes with its Frame from the first: that of a vehicle that is under way
/// would be torn along from a standstill.
void CrawlerTracks::CarryAlong(double before, double time) {
  const Transform from = InBelt(m_frame.ReadMatrix(before), m_scale),
                  to = InBelt(m_frame.ReadMatrix(time), m_scale);
  if (from == to) return;
  const double rate = 1.0 / (m_pInterface->GetFrameDuration() * m_settings.trackIterations);
  const Vector way = (to.position - from.position) * rate;
  const Vector turn = (to.rotation * from.rotation.conjugate()).toRotationVector() * rate;
  for (int i = 0; i < m_world->GetStepCount(); ++i) {
    BodyState state = m_world->GetStep(i);
    state.linear += way + turn.cross(state.pose.position - from.position);
    state.angular += turn;
    m_world->SetStep(i, state);
  }
}

void CrawlerTracks::Step(double time) {
  if (!m_isRunning) return;
  const double dt = m_pInterface->GetFrameDuration();
  const double before = util::frameBefore(time, dt);
  m_world->Tune(m_settings, WorldStep());
  m_world->SetGravity(GravityAt(before));
  ReadFrame(before, time);
  if (std::exchange(m_isNew, false)) CarryAlong(before, time);
  // Forward is -Z: the belt's upper run goes there.
  m_turn = m_input ? -m_input->read() * m_settings.rotationInput * dt : 0.0;
  StepFrame(time, true);
  WarnOfLeaving();
}

/// World pose of a node of this scale (m).
Matrix CrawlerTracks::NodePose(const Transform& inBelt, const Vector& scale) const {
  Matrix matrix = Transform{inBelt.position * m_scale, inBelt.rotation}.toMatrix();
  ScaleRows(matrix, scale);
  return matrix;
}

/// World pose of a step's node, as its body is.
Matrix CrawlerTracks::StepPose(int index) const {
  const StepShape& shape = m_track->steps[static_cast<std::size_t>(index)]->shape;
  Transform pose = m_world->GetStep(index).pose;
  pose.position -= pose.rotation.rotate(shape.middle);
  return NodePose(pose, shape.scale);
}

void CrawlerTracks::NoteHeldStep(double time) {
  int held = m_world->GetStepCount() - 1;
  while (held >= 0 && !m_world->IsAttached(held)) --held;
  m_track->heldStep.set(time, held);
  m_track->heldAngle.set(time, held < 0 ? 0.0 : m_world->GetAttachedAngle(held));
}

void CrawlerTracks::WriteFrame(double time, double part) {
  for (const WheelMotion& motion : m_motions)
    if (motion.ratio != 0.0)
      motion.wheel->WriteKey(time, NodePose(WheelAt(motion, part), ScaleOf(motion.after)));
  NoteHeldStep(time);
  const Quat toFrame = Quat::fromMatrix(m_frame.ReadMatrix(time)).conjugate();
  for (std::size_t i = 0; i < m_track->steps.size(); ++i) {
    Track::Step& step = *m_track->steps[i];
    const BodyState state = m_world->GetStep(static_cast<int>(i));
    step.WriteKey(time, StepPose(static_cast<int>(i)));
    step.linVelocity.set(time, toFrame.rotate(state.linear));
    step.angVelocity.set(time, toFrame.rotate(state.angular));
  }
}

}  // namespace orv::rws::addon
