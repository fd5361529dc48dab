// The peer of our belt: plates joined by Bullet's six-axis joints that carry a hull over the
// ground.
#pragma once

#include <btBulletDynamicsCommon.h>

#include <cmath>
#include <memory>
#include <vector>

#include "BulletCar.h"
#include "RollingTerrain.h"

namespace orv::bench {

/// 60 plates round 4 wheels, all held in the plane x = 0, 11 sub-steps a frame, 8 iterations.
class BulletBelt {
 public:
  static constexpr int kPlates = 60, kWheels = 4, kSubSteps = 11, kIterations = 8;

  explicit BulletBelt(BulletGround& ground) {
    m_world.setGravity({0, -9.81, 0});
    m_world.getSolverInfo().m_numIterations = kIterations;
    Add(0.0, *ground.shape, btTransform::getIdentity(), btBroadphaseProxy::StaticFilter, -1)
        .setActivationState(WANTS_DEACTIVATION);
    const btVector3 origin(0, GroundHeight(0, 0) + kRadius + kThick + kGap + 0.3, 0);
    btRigidBody& hull = Add(400.0, m_hullShape, At(origin), kHull, kStatic);
    m_wheelShape.setMargin(0.01);
    for (int i = 0; i < kWheels; ++i) AddWheel(hull, origin, i);
    for (int i = 0; i < kPlates; ++i) AddPlate(origin, i);
    for (int i = 0; i < kPlates; ++i) AddJoint(origin, i);
    for (auto& body : m_bodies) {
      if (body->getInvMass() == 0.0) continue;
      body->setLinearFactor({0, 1, 1});
      body->setAngularFactor({1, 0, 0});
    }
  }
  ~BulletBelt() {
    for (auto& joint : m_joints) m_world.removeConstraint(joint.get());
    for (auto& body : m_bodies) m_world.removeRigidBody(body.get());
  }

  /// False when Bullet took another number of sub-steps; the hair on the frame keeps all of them.
  bool Step() {
    return m_world.stepSimulation(kFrame * (1 + 1e-9), kSubSteps + 1, kFrame / kSubSteps) ==
           kSubSteps;
  }
  int Contacts() {
    int contacts = 0;
    for (int i = 0; i < m_dispatcher.getNumManifolds(); ++i)
      contacts += m_dispatcher.getManifoldByIndexInternal(i)->getNumContacts();
    return contacts;
  }

 private:
  static constexpr double kRadius = 0.40, kSpacing = 1.0, kThick = 0.06, kGap = 0.004,
                          kWidth = 0.30;
  enum Group { kHull = 64, kWheel = 128, kPlate = 256, kStatic = btBroadphaseProxy::StaticFilter };

  static btTransform At(const btVector3& place, double pitch = 0.0) {
    return btTransform(btQuaternion(btVector3(1, 0, 0), pitch), place);
  }
  /// On the line round the wheels, at arc length `s`.
  static btVector3 OnLine(double s) {
    const double r = kRadius + kThick / 2 + kGap, run = kSpacing * (kWheels - 1),
                 arc = util::kPi * r;
    s = std::fmod(s, 2 * (run + arc));
    if (s < run) return {0, r, s - run / 2};
    s -= run;
    if (s < arc) return {0, r * std::cos(s / r), run / 2 + r * std::sin(s / r)};
    s -= arc;
    if (s < run) return {0, -r, run / 2 - s};
    s -= run;
    return {0, -r * std::cos(s / r), -run / 2 - r * std::sin(s / r)};
  }
  static btVector3 Pin(int i) {
    const double length =
        2 * (kSpacing * (kWheels - 1) + util::kPi * (kRadius + kThick / 2 + kGap));
    return OnLine(length * (i % kPlates) / kPlates);
  }

  btRigidBody& Add(double mass, btCollisionShape& shape, const btTransform& at, int group,
                   int mask) {
    btVector3 inertia(0, 0, 0);
    if (mass > 0.0) shape.calculateLocalInertia(mass, inertia);
    btRigidBody::btRigidBodyConstructionInfo info(mass, nullptr, &shape, inertia);
    info.m_startWorldTransform = at;
    m_bodies.push_back(std::make_unique<btRigidBody>(info));
    m_bodies.back()->setActivationState(DISABLE_DEACTIVATION);
    m_world.addRigidBody(m_bodies.back().get(), group, mask);
    return *m_bodies.back();
  }
  void AddWheel(btRigidBody& hull, const btVector3& origin, int i) {
    const btVector3 place(0, 0, (i - (kWheels - 1) * 0.5) * kSpacing), axle(1, 0, 0);
    btRigidBody& wheel = Add(60.0, m_wheelShape, At(origin + place), kWheel, kPlate);
    wheel.setFriction(1.0);
    auto hinge =
        std::make_unique<btHingeConstraint>(hull, wheel, place, btVector3(0, 0, 0), axle, axle);
    if (i == 0) hinge->enableAngularMotor(true, -6.0, 50.0);
    m_world.addConstraint(hinge.get(), true);
    m_joints.push_back(std::move(hinge));
  }
  void AddPlate(const btVector3& origin, int i) {
    const btVector3 a = Pin(i), b = Pin(i + 1), way = b - a;
    m_plateShapes.push_back(
        std::make_unique<btBoxShape>(btVector3(kWidth / 2, kThick / 2, way.length() / 2 - 0.008)));
    m_plateShapes.back()->setMargin(0.005);
    btRigidBody& plate =
        Add(3.0, *m_plateShapes.back(), At(origin + (a + b) * 0.5, std::atan2(-way.y(), way.z())),
            kPlate, kPlate | kWheel | kStatic);
    plate.setFriction(1.0);
    m_plates.push_back(&plate);
  }
  void AddJoint(const btVector3& origin, int i) {
    btRigidBody &a = *m_plates[(i + kPlates - 1) % kPlates], &b = *m_plates[i];
    const btVector3 pin = origin + Pin(i);
    auto joint =
        std::make_unique<btGeneric6DofConstraint>(a, b, At(a.getWorldTransform().inverse() * pin),
                                                  At(b.getWorldTransform().inverse() * pin), true);
    joint->setLinearLowerLimit({0, 0, 0});
    joint->setLinearUpperLimit({0, 0, 0});
    joint->setAngularLowerLimit({-0.7, 0, 0});
    joint->setAngularUpperLimit({0.7, 0, 0});
    m_world.addConstraint(joint.get(), true);
    m_joints.push_back(std::move(joint));
  }

  btDefaultCollisionConfiguration m_configuration;
  btCollisionDispatcher m_dispatcher{&m_configuration};
  btAxisSweep3 m_broadphase{btVector3(-1000, -1000, -1000), btVector3(1000, 1000, 1000)};
  btSequentialImpulseConstraintSolver m_solver;
  btDiscreteDynamicsWorld m_world{&m_dispatcher, &m_broadphase, &m_solver, &m_configuration};
  btCylinderShapeX m_wheelShape{btVector3(kWidth / 2, kRadius, kRadius)};
  btBoxShape m_hullShape{btVector3(0.3, 0.2, 1.6)};
  std::vector<std::unique_ptr<btBoxShape>> m_plateShapes;
  std::vector<std::unique_ptr<btRigidBody>> m_bodies;
  std::vector<std::unique_ptr<btTypedConstraint>> m_joints;
  std::vector<btRigidBody*> m_plates;
};

}  // namespace orv::bench
