#include "plugins/release/crawlertracks/BeltWorld.h"

#include <btBulletDynamicsCommon.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "plugins/common/ground/triMeshStorage.h"
#include "plugins/release/crawlertracks/BeltSolver.h"
#include "plugins/release/crawlertracks/WheelStepCollision.h"
#include "util/Angles.h"

namespace orv::rws::addon {

using Vector = BeltWorld::Vector;
using Transform = BeltWorld::Transform;

namespace {

constexpr double kWorldExtent = 100000.0;  ///< of the broadphase, each way from the origin
constexpr double kRestitution = 0.01;      ///< of steps and ground
constexpr double kGroundFriction = 0.3;
constexpr double kGroundMargin = 0.01;
/// Collision margin of a step, as a part of its smallest half extent.
constexpr double kStepMargin = 0.1;
/// Dampings of 0 would leave an axis free to swing for ever; they count as this.
constexpr double kLeastDamping = 0.01;
/// Steps this close in the chain never meet: where a belt bends, their inner edges reach into each
/// other.
constexpr int kNeighbours = 2;
constexpr int kMostInternalSteps = 100;

/// Part of a gap that a step of the world takes out.
constexpr double kGapReduction = 0.2;
/// Part of a contact's depth that a nominal step of the world takes out.
constexpr double kContactReduction = 0.2;
/// Softness of a wheel's hold on a step, in each of the solver's iterations.
constexpr double kHoldSoftness = 0.1;

/// A belt that resisted bending more than this could not be led round its wheels.
constexpr double kMostBending = 0.25;
/// Steps that held together less than this would be torn apart by their own weight: the least of
/// what Displacement Stiffness and Damping ask for.
constexpr double kLeastHold = 0.6;

enum Group { kStepGroup = 64, kWheelGroup = 128, kGroundGroup = 256 };

btVector3 ToBullet(const Vector& v) {
  return {v.x, v.y, v.z};
}
btTransform ToBullet(const Transform& pose) {
  const auto& q = pose.rotation;
  return btTransform(btQuaternion(q.x, q.y, q.z, q.w), ToBullet(pose.position));
}
Vector FromBullet(const btVector3& v) {
  return {v.x(), v.y(), v.z()};
}
Transform FromBullet(const btTransform& pose) {
  const btQuaternion q = pose.getRotation();
  return {FromBullet(pose.getOrigin()), util::Quat<double>(q.x(), q.y(), q.z(), q.w())};
}

double NotZero(double damping) {
  return damping == 0.0 ? kLeastDamping : damping;
}

bool IsApart(const btBroadphaseProxy& a, const btBroadphaseProxy& b) {
  if (!TestAabbAgainstAabb2(a.m_aabbMin, a.m_aabbMax, b.m_aabbMin, b.m_aabbMax)) return true;
  if (a.m_collisionFilterGroup != kStepGroup || b.m_collisionFilterGroup != kStepGroup)
    return false;
  const auto &one = *static_cast<const btCollisionObject*>(a.m_clientObject),
             &other = *static_cast<const btCollisionObject*>(b.m_clientObject);
  return std::abs(one.getUserIndex() - other.getUserIndex()) <= kNeighbours;
}

/// The broadphase counts in cells of metres, so that most of its pairs are far apart. Those are
/// told here, and what an earlier touch has left goes.
void SkipDistantPairs(btBroadphasePair& pair, btCollisionDispatcher& dispatcher,
                      const btDispatcherInfo& info) {
  if (!IsApart(*pair.m_pProxy0, *pair.m_pProxy1)) {
    btCollisionDispatcher::defaultNearCallback(pair, dispatcher, info);
    return;
  }
  if (!pair.m_algorithm) return;
  pair.m_algorithm->~btCollisionAlgorithm();
  dispatcher.freeCollisionAlgorithm(pair.m_algorithm);
  pair.m_algorithm = nullptr;
}

}  // namespace

struct BeltWorld::Body {
  std::unique_ptr<btCollisionShape> shape;
  std::shared_ptr<const triMeshStorage> storage;  ///< of ground, whose shape it owns
  std::unique_ptr<btDefaultMotionState> motion;   ///< of one that is moved: where it is now
  std::unique_ptr<btRigidBody> body;
  btTransform next;  ///< of one that is moved: where it is when a step of the world has gone by
  btTransform seen;  ///< of ground, when steps were counted that went through it
};

/// What Bullet works on, in the order in which it must be made.
struct BeltWorld::World {
  struct Step : Body {
    double pitch = 0.0;
    std::unique_ptr<BeltJoint> joint;       ///< to the step before it
    std::unique_ptr<BeltJoint> attachment;  ///< to a wheel
    double angle = 0.0;                     ///< round that wheel's axle (rad)
    const btRigidBody* guide = nullptr;     ///< a wheel that leads it
    btVector3 seen;                         ///< place when those were counted that went through
    bool isThrough = false;                 ///< the ground
  };

  explicit World(int bodies)
      : broadphase(btVector3(-kWorldExtent, -kWorldExtent, -kWorldExtent),
                   btVector3(kWorldExtent, kWorldExtent, kWorldExtent),
                   static_cast<unsigned short>(std::clamp(bodies + 2, 8, 16384)), nullptr, true) {
    dispatcher.setNearCallback(SkipDistantPairs);
    dispatcher.registerCollisionCreateFunc(CYLINDER_SHAPE_PROXYTYPE, BOX_SHAPE_PROXYTYPE,
                                           &wheelOnStep);
    dispatcher.registerCollisionCreateFunc(BOX_SHAPE_PROXYTYPE, CYLINDER_SHAPE_PROXYTYPE,
                                           &wheelOnStep);
  }
  ~World() {
    for (Step& step : steps) {
      if (step.attachment) world.removeConstraint(step.attachment.get());
      if (step.joint) world.removeConstraint(step.joint.get());
    }
    for (Step& step : steps) world.removeRigidBody(step.body.get());
    for (auto* list : {&wheels, &grounds})
      for (Body& body : *list) world.removeRigidBody(body.body.get());
  }

  void Make(Body& out, btCollisionShape& shape, double mass, const Transform& pose) {
    btVector3 inertia(0, 0, 0);
    if (mass > 0.0) shape.calculateLocalInertia(mass, inertia);
    // A motion state of a body that is moved from outside tells where to; steps need none.
    if (mass <= 0.0) out.motion = std::make_unique<btDefaultMotionState>(ToBullet(pose));
    btRigidBody::btRigidBodyConstructionInfo info(std::max(mass, 0.0), out.motion.get(), &shape,
                                                  inertia);
    info.m_startWorldTransform = out.seen = ToBullet(pose);
    out.body = std::make_unique<btRigidBody>(info);
    out.body->setFlags(0);  // no gyroscopic forces: nothing spins about more than one axis
    out.body->setActivationState(DISABLE_DEACTIVATION);
  }
  void MakeKinematic(Body& out) {
    out.body->setCollisionFlags(out.body->getCollisionFlags() |
                                btCollisionObject::CF_KINEMATIC_OBJECT);
  }
  void Add(BeltJoint& joint) { world.addConstraint(&joint, true); }

  /// The wheel leads a step like a sprocket: it holds it a pitch away from a neighbour that it
  /// holds already. `found` is where the step is.
  double SprocketAngle(std::size_t index, double found, double distance) const {
    for (const std::size_t way : {steps.size() - 1, std::size_t{1}}) {
      const Step& neighbour = steps[(index + way) % steps.size()];
      if (&neighbour == &steps[index] || !neighbour.attachment) continue;
      const double apart = std::remainder(found - neighbour.angle, 2.0 * util::kPi);
      const double tooth = 2.0 * std::atan(steps[index].pitch / 2.0 / distance);
      return neighbour.angle + std::copysign(tooth, apart);
    }
    return found;
  }

  btDefaultCollisionConfiguration configuration;
  WheelStepCollision::Maker wheelOnStep;
  btCollisionDispatcher dispatcher{&configuration};
  btAxisSweep3 broadphase;
  BeltSolver solver;
  btDiscreteDynamicsWorld world{&dispatcher, &broadphase, &solver, &configuration};
  std::vector<Body> grounds;
  std::vector<Body> wheels;
  std::vector<Step> steps;
  std::vector<Body*> moved;  ///< wheels and grounds in the step of the world that follows
};

BeltWorld::BeltWorld(int bodies, const BeltTuning& tuning, double h)
    : m_tuning(tuning), m_worldStep(h), m_world(std::make_unique<World>(bodies)) {
  // It would move bodies apart without regard for their joints.
  m_world->world.getSolverInfo().m_splitImpulse = false;
  // Friction holds both ways along a surface, and the same ways in each step. With one, along what
  // happens to slide, a belt at rest would creep across it and never be still.
  m_world->world.getSolverInfo().m_solverMode |=
      SOLVER_USE_2_FRICTION_DIRECTIONS | SOLVER_DISABLE_VELOCITY_DEPENDENT_FRICTION_DIRECTION;
  // The chain is solved as one, so all of the world goes to the solver in one group.
  m_world->world.getSolverInfo().m_minimumSolverBatchSize = std::numeric_limits<int>::max();
  Tune(tuning, h);
}

BeltWorld::~BeltWorld() = default;

// --- bodies ---

int BeltWorld::AddGround(std::shared_ptr<const triMeshStorage> shape, const Transform& pose) {
  btCollisionShape* const triangles = shape ? shape->GetShape() : nullptr;
  if (!triangles) return -1;
  triangles->setMargin(kGroundMargin);
  Body ground;
  m_world->Make(ground, *triangles, 0.0, pose);
  ground.storage = std::move(shape);
  ground.body->setFriction(kGroundFriction);
  ground.body->setRestitution(kRestitution);
  m_world->MakeKinematic(ground);
  m_world->world.addRigidBody(ground.body.get(), kGroundGroup, kStepGroup);
  m_world->grounds.push_back(std::move(ground));
  return static_cast<int>(m_world->grounds.size()) - 1;
}

int BeltWorld::AddWheel(double radius, double halfWidth, const Transform& pose) {
  Body wheel;
  wheel.shape = std::make_unique<btCylinderShapeX>(btVector3(halfWidth, radius, radius));
  wheel.shape->setMargin(std::min(radius, halfWidth) * kStepMargin);
  m_world->Make(wheel, *wheel.shape, 0.0, pose);
  m_world->MakeKinematic(wheel);
  m_world->world.addRigidBody(wheel.body.get(), kWheelGroup, kStepGroup);
  m_world->wheels.push_back(std::move(wheel));
  return static_cast<int>(m_world->wheels.size()) - 1;
}

int BeltWorld::AddStep(const StepBody& body, const BodyState& state) {
  World::Step step;
  const Vector half = body.size * 0.5;
  const double margin = kStepMargin * std::min({half.x, half.y, half.z});
  step.shape = std::make_unique<btBoxShape>(ToBullet(half - Vector(margin, margin, margin)));
  step.shape->setMargin(margin);
  step.pitch = body.pitch;
  m_world->Make(step, *step.shape, body.mass, state.pose);
  m_world->world.addRigidBody(step.body.get(), kStepGroup, kStepGroup | kWheelGroup | kGroundGroup);
  step.body->setFriction(m_tuning.trackFriction);
  step.body->setRestitution(kRestitution);
  m_world->steps.push_back(std::move(step));
  const int index = GetStepCount() - 1;
  m_world->steps.back().body->setUserIndex(index);
  SetStep(index, state);
  m_world->steps.back().seen = ToBullet(state.pose.position);
  return index;
}

void BeltWorld::Link(bool closed) {
  auto& steps = m_world->steps;
  for (std::size_t i = closed ? 0 : 1; i < steps.size() && steps.size() > 1; ++i) {
    World::Step &a = steps[(i + steps.size() - 1) % steps.size()], &b = steps[i];
    // With equal axes in both bodies, a straight belt is the one at rest.
    btTransform behind = btTransform::getIdentity(), ahead = btTransform::getIdentity();
    behind.setOrigin(btVector3(0, 0, a.pitch / 2));
    ahead.setOrigin(btVector3(0, 0, -b.pitch / 2));
    b.joint = std::make_unique<BeltJoint>(*a.body, *b.body, behind, ahead);
    m_world->Add(*b.joint);
  }
  TuneJoints();
}

// --- settings ---

void BeltWorld::SetGravity(const Vector& gravity) {
  // Several steps of the world in the time of one then let it fall no farther than that one.
  const double iterations = m_tuning.trackIterations;
  m_world->world.setGravity(ToBullet(gravity) / (iterations * iterations));
}

void BeltWorld::Tune(const BeltTuning& tuning, double h) {
  if (tuning == m_tuning && h == m_worldStep && !m_world->steps.empty()) return;
  m_tuning = tuning;
  m_worldStep = h;
  btContactSolverInfo& info = m_world->world.getSolverInfo();
  info.m_numIterations = tuning.trackAccuracy;
  // By the scene's time: what pushes a step out stays in it as speed, and in a world that runs
  // slower, where less weighs it down, would throw it the higher.
  info.m_erp2 = InBeltStep(kContactReduction, h / tuning.trackIterations);
  TuneJoints();
}

void BeltWorld::TuneJoints() {
  const BeltTuning& t = m_tuning;
  const double damping = NotZero(t.trackTransDamping);
  const double asked = std::min(t.transFlaccid * damping, 1.0);
  const double hold = (kLeastHold + (1.0 - kLeastHold) * asked) / damping;
  for (World::Step& step : m_world->steps) {
    step.body->setFriction(t.trackFriction);
    if (step.attachment) TuneAttachment(*step.attachment);
    if (!step.joint) continue;
    step.joint->TuneRotation(0, {t.flaccid, NotZero(t.trackDamping), 0.2, kMostBending},
                             m_worldStep);
    step.joint->TuneRotation(1, {1.0, 1.0, 0.8}, m_worldStep);
    step.joint->TuneRotation(2, {t.twistFlaccid, NotZero(t.trackTwistDamping), 0.2}, m_worldStep);
    step.joint->TuneTranslation({hold, damping, kGapReduction}, m_worldStep);
  }
}

void BeltWorld::TuneAttachment(BeltJoint& joint) const {
  for (int axis = 0; axis < 3; ++axis) joint.TuneRotation(axis, {0.5, 1.0, 0.8}, m_worldStep);
  const double softness = 1.0 - std::pow(1.0 - kHoldSoftness, m_tuning.trackAccuracy);
  joint.TuneTranslation({softness, 1.0, kGapReduction}, m_worldStep);
}

// --- wheels ---

void BeltWorld::Move(Body& body, const Transform& pose) {
  body.next = ToBullet(pose);
  m_world->moved.push_back(&body);
}

void BeltWorld::MoveGround(int ground, const Transform& pose) {
  Move(m_world->grounds[static_cast<std::size_t>(ground)], pose);
}

void BeltWorld::MoveWheel(int wheel, const Transform& pose) {
  Move(m_world->wheels[static_cast<std::size_t>(wheel)], pose);
}

Transform BeltWorld::GetWheel(int wheel) const {
  btTransform pose;
  m_world->wheels[static_cast<std::size_t>(wheel)].motion->getWorldTransform(pose);
  return FromBullet(pose);
}

bool BeltWorld::Attach(int step, int wheel, double distance) {
  const auto index = static_cast<std::size_t>(step);
  const World::Step& held = m_world->steps[index];
  if (held.attachment) return true;
  if (wheel < 0 || static_cast<std::size_t>(wheel) >= m_world->wheels.size()) return false;
  const btTransform at = ToBullet(GetWheel(wheel));
  const btVector3 found = (at.inverse() * held.body->getWorldTransform()).getOrigin();
  return AttachAt(step, wheel, distance,
                  m_world->SprocketAngle(index, std::atan2(found.z(), found.y()), distance));
}

bool BeltWorld::AttachAt(int step, int wheel, double distance, double angle) {
  World::Step& held = m_world->steps[static_cast<std::size_t>(step)];
  const auto index = static_cast<std::size_t>(wheel);
  if (held.attachment || index >= m_world->wheels.size()) return held.attachment != nullptr;
  held.angle = angle;
  const btVector3 out(0, std::cos(angle), std::sin(angle));
  const btTransform place(btQuaternion(btVector3(1, 0, 0), angle), out * distance);
  held.attachment = std::make_unique<BeltJoint>(*m_world->wheels[index].body, *held.body, place,
                                                btTransform::getIdentity());
  TuneAttachment(*held.attachment);
  m_world->Add(*held.attachment);
  return true;
}

double BeltWorld::GetAttachedAngle(int step) const {
  return m_world->steps[static_cast<std::size_t>(step)].angle;
}

void BeltWorld::Detach(int step) {
  World::Step& held = m_world->steps[static_cast<std::size_t>(step)];
  if (!held.attachment) return;
  m_world->world.removeConstraint(held.attachment.get());
  held.attachment.reset();
}

bool BeltWorld::IsAttached(int step) const {
  return m_world->steps[static_cast<std::size_t>(step)].attachment != nullptr;
}

void BeltWorld::Guide(int step, int wheel, bool on) {
  m_world->steps[static_cast<std::size_t>(step)].guide =
      on ? m_world->wheels[static_cast<std::size_t>(wheel)].body.get() : nullptr;
}

// --- time ---

/// Bullet takes a moved body's speed from the way that it has come, and would have it stand at the
/// end of the step while the others stand at its beginning: they would run ahead of it by its way
/// in one step. So it stands where they do, and has come by as much as it will go.
void BeltWorld::Lead(Body& body) const {
  btTransform now;
  body.motion->getWorldTransform(now);
  btVector3 linear, angular;
  btTransformUtil::calculateVelocity(now, body.next, m_worldStep, linear, angular);
  btTransform behind;
  btTransformUtil::integrateTransform(now, -linear, -angular, m_worldStep, behind);
  body.body->setInterpolationWorldTransform(behind);
}

void BeltWorld::Advance() {
  auto& links = m_world->solver.links;
  links.clear();
  // Steps without mass are all of a belt or none; nothing moves those.
  for (World::Step& step : m_world->steps)
    if (step.body->getInvMass() > 0.0)
      links.push_back({step.body.get(), step.joint.get(), step.attachment.get(), step.guide});
  for (Body* body : m_world->moved) Lead(*body);
  m_world->world.stepSimulation(m_worldStep, kMostInternalSteps, m_worldStep);
  for (Body* body : m_world->moved) {
    body->motion->setWorldTransform(body->next);
    body->body->setInterpolationWorldTransform(body->next);  // at rest, unless it is moved on
  }
  m_world->moved.clear();
}

int BeltWorld::CountStepsThroughGround() {
  auto& steps = m_world->steps;
  for (Body& ground : m_world->grounds) {
    btTransform now;
    ground.motion->getWorldTransform(now);
    const btTransform since = now * ground.seen.inverse();
    const btBroadphaseProxy& box = *ground.body->getBroadphaseProxy();
    for (World::Step& step : steps) {
      const btVector3 from = since * step.seen, to = step.body->getWorldTransform().getOrigin();
      btVector3 low = from, high = from;
      low.setMin(to);
      high.setMax(to);
      if (!TestAabbAgainstAabb2(low, high, box.m_aabbMin, box.m_aabbMax)) continue;
      btCollisionWorld::ClosestRayResultCallback way(from, to);
      way.m_collisionFilterGroup = kStepGroup;
      btTransform a = btTransform::getIdentity(), b = a;
      a.setOrigin(from);
      b.setOrigin(to);
      btCollisionWorld::rayTestSingle(a, b, ground.body.get(), ground.body->getCollisionShape(),
                                      now, way);
      step.isThrough = step.isThrough != way.hasHit();
    }
    ground.seen = now;
  }
  for (World::Step& step : steps) step.seen = step.body->getWorldTransform().getOrigin();
  return static_cast<int>(std::count_if(steps.begin(), steps.end(),
                                        [](const World::Step& step) { return step.isThrough; }));
}

int BeltWorld::GetStepCount() const {
  return static_cast<int>(m_world->steps.size());
}

Vector BeltWorld::GetStepPlace(int step) const {
  return FromBullet(
      m_world->steps[static_cast<std::size_t>(step)].body->getWorldTransform().getOrigin());
}

BodyState BeltWorld::GetStep(int step) const {
  const btRigidBody& body = *m_world->steps[static_cast<std::size_t>(step)].body;
  return {FromBullet(body.getWorldTransform()), FromBullet(body.getLinearVelocity()),
          FromBullet(body.getAngularVelocity())};
}

void BeltWorld::SetStep(int step, const BodyState& state) {
  btRigidBody& body = *m_world->steps[static_cast<std::size_t>(step)].body;
  const btTransform pose = ToBullet(state.pose);
  body.setWorldTransform(pose);
  body.setInterpolationWorldTransform(pose);
  if (body.getMotionState()) body.getMotionState()->setWorldTransform(pose);
  body.setLinearVelocity(ToBullet(state.linear));
  body.setAngularVelocity(ToBullet(state.angular));
  body.setInterpolationLinearVelocity(ToBullet(state.linear));
  body.setInterpolationAngularVelocity(ToBullet(state.angular));
}

void BeltWorld::FillContacts(bool on) {
  constexpr int kTries = 4, kEnough = 4;  // of other angles; of points
  m_world->configuration.setConvexConvexMultipointIterations(on ? kTries : 0, on ? kEnough : 0);
}

void BeltWorld::Calm(double rate) {
  // Bullet's damping is the share that is gone after a second of the world's time.
  const double damping = 1.0 - std::exp(-rate / m_tuning.trackIterations);
  for (World::Step& step : m_world->steps) step.body->setDamping(damping, damping);
}

double BeltWorld::GetTopSpeed() const {
  double top = 0.0;
  for (const World::Step& step : m_world->steps)
    top = std::max(top, step.body->getLinearVelocity().length());
  return top * m_tuning.trackIterations;
}

}  // namespace orv::rws::addon
