// How a wheel and a step of a belt touch.
#pragma once

#include <btBulletCollisionCommon.h>

namespace orv::rws::addon {

/// Contacts of a cylinder about its X axis (btCylinderShapeX) with a box whose X axis is more or
/// less parallel to it: the line where they touch, by its two ends, from the distance of the axle
/// to the box's profile. A belt has dozens of such pairs; general search takes several times as
/// long, and finds one end of the line at a time.
class WheelStepCollision final : public btActivatingCollisionAlgorithm {
 public:
  struct Maker final : btCollisionAlgorithmCreateFunc {
    btCollisionAlgorithm* CreateCollisionAlgorithm(btCollisionAlgorithmConstructionInfo& info,
                                                   const btCollisionObjectWrapper* a,
                                                   const btCollisionObjectWrapper* b) override;
  };

  WheelStepCollision(const btCollisionAlgorithmConstructionInfo& info,
                     const btCollisionObjectWrapper* a, const btCollisionObjectWrapper* b);
  ~WheelStepCollision() override;

  void processCollision(const btCollisionObjectWrapper* a, const btCollisionObjectWrapper* b,
                        const btDispatcherInfo& info, btManifoldResult* result) override;
  btScalar calculateTimeOfImpact(btCollisionObject*, btCollisionObject*, const btDispatcherInfo&,
                                 btManifoldResult*) override {
    return 1.0;
  }
  void getAllContactManifolds(btManifoldArray& manifolds) override {
    manifolds.push_back(m_manifold);
  }

 private:
  btPersistentManifold* m_manifold;  ///< the dispatcher's, handed back at the end
};

}  // namespace orv::rws::addon
