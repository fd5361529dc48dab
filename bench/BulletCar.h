// The peer of our car: Bullet's raycast vehicle on the same ground.
#pragma once

#include <BulletDynamics/Vehicle/btRaycastVehicle.h>
#include <btBulletDynamicsCommon.h>

#include <array>
#include <cmath>
#include <memory>
#include <vector>

#include "RollingTerrain.h"

namespace orv::bench {

/// A mesh as Bullet's triangle shape with its tree.
class BulletGround {
 public:
  explicit BulletGround(const util::CMesh& mesh) : m_indices(mesh.faces) {
    for (const Vector& v : mesh.vertices) m_vertices.insert(m_vertices.end(), {v.x, v.y, v.z});
    m_array = std::make_unique<btTriangleIndexVertexArray>(
        static_cast<int>(m_indices.size() / 3), m_indices.data(), 3 * sizeof(std::int32_t),
        static_cast<int>(m_vertices.size() / 3), m_vertices.data(), 3 * sizeof(double));
    shape = std::make_unique<btBvhTriangleMeshShape>(m_array.get(), true);
  }

  std::unique_ptr<btBvhTriangleMeshShape> shape;

 private:
  std::vector<double> m_vertices;
  std::vector<std::int32_t> m_indices;
  std::unique_ptr<btTriangleIndexVertexArray> m_array;
};

/// One car of 1,200 kg with rear drive, 13 sub-steps a frame.
class BulletCar {
 public:
  explicit BulletCar(BulletGround& ground) {
    m_world.setGravity({0.0, -9.81, 0.0});
    m_ground = Add(0.0, *ground.shape, {0.0, 0.0, 0.0});
    m_hull.addChildShape(btTransform(btQuaternion::getIdentity(), {0.0, 0.6, 0.0}), &m_box);
    const Vector at = StartPlace(0, 1);
    m_chassis = Add(1200.0, m_hull, {at.x, at.y + 0.75, at.z});
    m_chassis->setActivationState(DISABLE_DEACTIVATION);
    btRaycastVehicle::btVehicleTuning tuning;
    tuning.m_suspensionStiffness = 30.0;
    tuning.m_suspensionDamping = std::sqrt(30.0);
    tuning.m_suspensionCompression = 0.6 * std::sqrt(30.0);
    tuning.m_maxSuspensionTravelCm = 30.0;
    tuning.m_maxSuspensionForce = 20000.0;
    tuning.m_frictionSlip = 1.5;
    m_vehicle = std::make_unique<btRaycastVehicle>(tuning, m_chassis.get(), &m_caster);
    m_vehicle->setCoordinateSystem(0, 1, 2);
    m_world.addVehicle(m_vehicle.get());
    for (int i = 0; i < 4; ++i)
      m_vehicle
          ->addWheel({i % 2 ? -0.8 : 0.8, 0.2, i < 2 ? 1.3 : -1.3}, {0.0, -1.0, 0.0},
                     {-1.0, 0.0, 0.0}, 0.35, 0.35, tuning, i < 2)
          .m_rollInfluence = 0.3;
  }
  ~BulletCar() {
    m_world.removeVehicle(m_vehicle.get());
    m_world.removeRigidBody(m_chassis.get());
    m_world.removeRigidBody(m_ground.get());
  }

  /// The frame that begins at `time` (s).
  void Step(double time) {
    constexpr int kSubSteps = 13;
    for (const int front : {0, 1}) m_vehicle->setSteeringValue(FrontWheels(time), front);
    for (const int back : {2, 3}) m_vehicle->applyEngineForce(800.0, back);
    // The hair on the frame keeps rounding from dropping a sub-step.
    m_world.stepSimulation(kFrame * (1.0 + 1e-9), kSubSteps + 1, kFrame / kSubSteps);
  }
  /// Wheels that stand on the ground.
  int Touching() const {
    int count = 0;
    for (int i = 0; i < 4; ++i) count += m_vehicle->getWheelInfo(i).m_raycastInfo.m_isInContact;
    return count;
  }

 private:
  std::unique_ptr<btRigidBody> Add(double mass, btCollisionShape& shape, const btVector3& at) {
    btVector3 inertia(0.0, 0.0, 0.0);
    if (mass > 0.0) shape.calculateLocalInertia(mass, inertia);
    btRigidBody::btRigidBodyConstructionInfo info(mass, nullptr, &shape, inertia);
    info.m_startWorldTransform = btTransform(btQuaternion::getIdentity(), at);
    auto body = std::make_unique<btRigidBody>(info);
    m_world.addRigidBody(body.get());
    return body;
  }

  btDefaultCollisionConfiguration m_configuration;
  btCollisionDispatcher m_dispatcher{&m_configuration};
  btAxisSweep3 m_broadphase{{-1000.0, -1000.0, -1000.0}, {1000.0, 1000.0, 1000.0}};
  btSequentialImpulseConstraintSolver m_solver;
  btDiscreteDynamicsWorld m_world{&m_dispatcher, &m_broadphase, &m_solver, &m_configuration};
  btBoxShape m_box{{0.9, 0.4, 2.0}};
  btCompoundShape m_hull;
  btDefaultVehicleRaycaster m_caster{&m_world};
  std::unique_ptr<btRigidBody> m_ground, m_chassis;
  std::unique_ptr<btRaycastVehicle> m_vehicle;
};

}  // namespace orv::bench
