#include "plugins/common/ground/CollisionObjects.h"

#include <btBulletDynamicsCommon.h>

#include <utility>

#include "util/Quat.h"

namespace orv::rws::addon {

using util::Quat;
using util::Vector3;

namespace {

constexpr int kFilterGroup = 2;
constexpr int kFilterMask = 3;

btTransform WithoutScale(const util::Matrix<double>& pose) {
  const Quat<double> q = Quat<double>::fromMatrix(pose);
  const Vector3<double> p = pose.translation();
  return btTransform(btQuaternion(q.x, q.y, q.z, q.w), btVector3(p.x, p.y, p.z));
}

}  // namespace

CollisionObjects::CollisionObjects(CCamera& rig, const std::string& name,
                                   const util::Matrix<double>& pose,
                                   std::shared_ptr<const triMeshStorage> shape)
    : RigSceneNode(rig, "Kinematic_" + name, nullptr), m_matrix(pose), m_storage(std::move(shape)) {
  MakeBody();
  if (m_body)
    m_body->setCollisionFlags(m_body->getCollisionFlags() | btCollisionObject::CF_KINEMATIC_OBJECT);
}

CollisionObjects::CollisionObjects(CCamera& rig, const std::string& name,
                                   const util::Matrix<double>& pose,
                                   std::shared_ptr<const triMeshStorage> shape,
                                   const Motion& motion)
    : RigSceneNode(rig, "Dynamic_" + name, nullptr), m_matrix(pose), m_storage(std::move(shape)) {
  MakeBody();
  if (!m_body) return;
  if (m_storage->GetExtent() == 0.0)
    m_body->setCollisionFlags(m_body->getCollisionFlags() | btCollisionObject::CF_KINEMATIC_OBJECT);
  else
    SetVelocity(motion.poseBefore, motion.dt / (motion.subSteps + 1));
}

void CollisionObjects::MakeBody() {
  btCollisionShape* const shape = m_storage->GetShape();
  if (!shape) return;
  btRigidBody::btRigidBodyConstructionInfo info(0.0, nullptr, shape);
  info.m_startWorldTransform = WithoutScale(m_matrix);
  m_body = std::make_unique<btRigidBody>(info);
  m_body->setActivationState(DISABLE_DEACTIVATION);
}

CollisionObjects::~CollisionObjects() = default;

void CollisionObjects::SetVelocity(const util::Matrix<double>& before, double time) {
  const Vector3<double> way = m_matrix.translation() - before.translation();
  Quat<double> turn =
      Quat<double>::fromMatrix(before).conjugate() * Quat<double>::fromMatrix(m_matrix);
  const Vector3<double> angle = turn.toRotationVector();
  m_body->setLinearVelocity(btVector3(way.x, way.y, way.z) / time);
  m_body->setAngularVelocity(btVector3(angle.x, angle.y, angle.z) / time);
}

void CollisionObjects::AddTo(btDiscreteDynamicsWorld& world) {
  world.addRigidBody(m_body.get(), kFilterGroup, kFilterMask);
}

void CollisionObjects::RemoveFrom(btDiscreteDynamicsWorld& world) {
  world.removeRigidBody(m_body.get());
}

}  // namespace orv::rws::addon
