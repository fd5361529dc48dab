// One ground surface in the world of the fast caster.
#pragma once

#include <memory>
#include <string>

#include "plugins/common/RigSceneNode.h"
#include "plugins/common/ground/triMeshStorage.h"

class btDiscreteDynamicsWorld;
class btRigidBody;

namespace orv::rws::addon {

/// A surface as a rigid body that nothing moves. It stands for a node of the scene, or for none,
/// and is never bound to one.
class CollisionObjects : public RigSceneNode {
 public:
  /// How a moving surface moves: its pose one frame of `dt` seconds before, and what the frame is
  /// divided by.
  struct Motion {
    util::Matrix<double> poseBefore;
    double dt = 0.04;
    int subSteps = 0;
  };

  /// A fixed surface called `name` at `pose` (world, with its scale, which `shape` has as well).
  CollisionObjects(CCamera& rig, const std::string& name, const util::Matrix<double>& pose,
                   std::shared_ptr<const triMeshStorage> shape);
  /// A moving one.
  CollisionObjects(CCamera& rig, const std::string& name, const util::Matrix<double>& pose,
                   std::shared_ptr<const triMeshStorage> shape, const Motion& motion);
  ~CollisionObjects() override;

  /// False for a surface without triangles, which has no body.
  bool IsSolid() const { return m_body != nullptr; }
  void AddTo(btDiscreteDynamicsWorld& world);
  void RemoveFrom(btDiscreteDynamicsWorld& world);

  /// World pose with its scale, at the take's start.
  const util::Matrix<double>& GetMatrix() const { return m_matrix; }
  const triMeshStorage& GetStorage() const { return *m_storage; }
  const btRigidBody& GetBody() const { return *m_body; }

 protected:
  CNode* MakeNode(CInterface&, CNode*) override { return nullptr; }

 private:
  void MakeBody();
  void SetVelocity(const util::Matrix<double>& before, double time);

  util::Matrix<double> m_matrix;
  std::shared_ptr<const triMeshStorage> m_storage;
  std::unique_ptr<btRigidBody> m_body;
};

}  // namespace orv::rws::addon
