#include "plugins/release/crawlertracks/WheelStepCollision.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

namespace orv::rws::addon {

btCollisionAlgorithm* WheelStepCollision::Maker::CreateCollisionAlgorithm(
    btCollisionAlgorithmConstructionInfo& info, const btCollisionObjectWrapper* a,
    const btCollisionObjectWrapper* b) {
  void* const memory = info.m_dispatcher1->allocateCollisionAlgorithm(sizeof(WheelStepCollision));
  return new (memory) WheelStepCollision(info, a, b);
}

WheelStepCollision::WheelStepCollision(const btCollisionAlgorithmConstructionInfo& info,
                                       const btCollisionObjectWrapper* a,
                                       const btCollisionObjectWrapper* b)
    : btActivatingCollisionAlgorithm(info, a, b),
      m_manifold(
          info.m_dispatcher1->getNewManifold(a->getCollisionObject(), b->getCollisionObject())) {}

WheelStepCollision::~WheelStepCollision() {
  m_dispatcher->releaseManifold(m_manifold);
}

void WheelStepCollision::processCollision(const btCollisionObjectWrapper* a,
                                          const btCollisionObjectWrapper* b,
                                          const btDispatcherInfo&, btManifoldResult* result) {
  result->setPersistentManifold(m_manifold);
  const bool stepIsSecond = b->getCollisionShape()->getShapeType() == BOX_SHAPE_PROXYTYPE;
  const btCollisionObjectWrapper &step = stepIsSecond ? *b : *a, &wheel = stepIsSecond ? *a : *b;
  const btVector3 half =
      static_cast<const btBoxShape*>(step.getCollisionShape())->getHalfExtentsWithMargin();
  const btVector3 size =
      static_cast<const btCylinderShapeX*>(wheel.getCollisionShape())->getHalfExtentsWithMargin();
  const btTransform inStep = step.getWorldTransform().inverseTimes(wheel.getWorldTransform());
  const btVector3 axle = inStep.getBasis().getColumn(0), centre = inStep.getOrigin();

  // The part of the axle that is beside the step.
  double low = -size.x(), high = size.x();
  if (std::abs(axle.x()) > SIMD_EPSILON) {
    const double left = (-half.x() - centre.x()) / axle.x();
    const double right = (half.x() - centre.x()) / axle.x();
    low = std::max(low, std::min(left, right));
    high = std::min(high, std::max(left, right));
  }
  for (const double at : {low, high}) {
    if (low > high) break;
    const btVector3 place = centre + axle * at;
    const btVector3 nearest(place.x(), std::clamp(place.y(), -half.y(), half.y()),
                            std::clamp(place.z(), -half.z(), half.z()));
    const btVector3 way = place - nearest;
    const double distance = way.length();
    const double depth = distance - size.y();
    if (distance < SIMD_EPSILON || depth > gContactBreakingThreshold) continue;
    // Bullet asks for the point on the second body and the normal that leads off it.
    const btVector3 normal = way / distance;
    const btVector3 point = stepIsSecond ? nearest : place - normal * size.y();
    result->addContactPoint(step.getWorldTransform().getBasis() * (stepIsSecond ? normal : -normal),
                            step.getWorldTransform() * point, depth);
  }
  result->refreshContactPoints();
}

}  // namespace orv::rws::addon
