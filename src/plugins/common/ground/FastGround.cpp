#include "plugins/common/ground/FastGround.h"

#include <BulletCollision/NarrowPhaseCollision/btRaycastCallback.h>
#include <BulletDynamics/Vehicle/btRaycastVehicle.h>
#include <btBulletDynamicsCommon.h>

#include <algorithm>
#include <exception>
#include <utility>

namespace orv::rws::addon {

using Vector = FastGround::Vector;

namespace {

constexpr double kWorldHalfSize = 1000.0;  ///< m
constexpr unsigned short kHandles = 16384;
constexpr int kSolverIterations = 10;

btVector3 ToBullet(const Vector& v) {
  return {v.x, v.y, v.z};
}
Vector FromBullet(const btVector3& v) {
  return {v.x(), v.y(), v.z()};
}

/// Bullet's own triangle test, so that a gathered triangle answers as the whole shape does.
struct ClosestHit : btTriangleRaycastCallback {
  using btTriangleRaycastCallback::btTriangleRaycastCallback;
  btScalar reportHit(const btVector3& hitNormal, btScalar fraction, int, int) override {
    normal = hitNormal;
    return fraction;
  }
  btVector3 normal;
};

struct Gatherer : btTriangleCallback {
  Gatherer(const btTransform& transform, NearGround& ground) : at(transform), out(ground) {}
  void processTriangle(btVector3* corners, int, int) override {
    out.Add(FromBullet(at * corners[0]), FromBullet(at * corners[1]), FromBullet(at * corners[2]));
  }
  const btTransform& at;
  NearGround& out;
};

}  // namespace

void NearGround::Add(const Vector& a, const Vector& b, const Vector& c) {
  m_triangles.push_back({{a, b, c}, (b - a).cross(c - a)});
}

bool NearGround::Cast(const Vector& origin, const Vector& direction, double length,
                      double& distance, Vector& normal) const {
  ClosestHit closest(ToBullet(origin), ToBullet(origin + direction * length));
  for (const Triangle& triangle : m_triangles) {
    // Most triangles' planes lie beyond the ray's end or behind it.
    const double above = (origin - triangle.corner[0]).dot(triangle.normal);
    const double below = above + direction.dot(triangle.normal) * length;
    if ((above > 0.0) == (below > 0.0) && above != 0.0 && below != 0.0) continue;
    btVector3 corners[3] = {ToBullet(triangle.corner[0]), ToBullet(triangle.corner[1]),
                            ToBullet(triangle.corner[2])};
    closest.processTriangle(corners, 0, 0);
  }
  if (closest.m_hitFraction >= 1.0) return false;
  distance = closest.m_hitFraction * length;
  normal = FromBullet(closest.normal).normalized();
  return true;
}

struct FastGround::World {
  btDefaultCollisionConfiguration configuration;
  btCollisionDispatcher dispatcher{&configuration};
  btAxisSweep3 broadphase{btVector3(-kWorldHalfSize, -kWorldHalfSize, -kWorldHalfSize),
                          btVector3(kWorldHalfSize, kWorldHalfSize, kWorldHalfSize), kHandles};
  btSequentialImpulseConstraintSolver solver;
  btDiscreteDynamicsWorld world{&dispatcher, &broadphase, &solver, &configuration};
  btDefaultVehicleRaycaster caster{&world};
};

FastGround::FastGround() = default;

std::unique_ptr<FastGround> FastGround::Create(double gravity) {
  try {
    std::unique_ptr<FastGround> ground(new FastGround);
    ground->m_world = std::make_unique<World>();
    ground->m_world->world.getSolverInfo().m_numIterations = kSolverIterations;
    ground->m_world->world.setGravity(btVector3(0.0, -gravity, 0.0));
    return ground;
  } catch (const std::exception&) {
    return nullptr;
  }
}

FastGround::~FastGround() {
  for (auto surface = m_surfaces.rbegin(); surface != m_surfaces.rend(); ++surface)
    (*surface)->RemoveFrom(m_world->world);
}

void FastGround::Add(std::unique_ptr<CollisionObjects> surface) {
  if (!surface->IsSolid()) return;
  surface->AddTo(m_world->world);
  m_surfaces.push_back(std::move(surface));
}

bool FastGround::CastRay(const Vector& origin, const Vector& direction, double length,
                         double& distance, Vector& normal) const {
  btVehicleRaycaster::btVehicleRaycasterResult result;
  result.m_distFraction = -1.0;
  const Vector end = origin + direction * length;
  if (!m_world->caster.castRay(ToBullet(origin), ToBullet(end), result)) return false;
  distance = result.m_distFraction * length;
  normal = FromBullet(result.m_hitNormalInWorld);
  return true;
}

void FastGround::Gather(const Vector& centre, double reach, NearGround& out) const {
  out.Clear();
  for (const auto& surface : m_surfaces) {
    const btTransform& at = surface->GetBody().getWorldTransform();
    const btVector3 local = at.invXform(ToBullet(centre));
    // The cube turned into the surface's space, and the box round that.
    const btVector3 half = at.getBasis().transpose().absolute() * btVector3(reach, reach, reach);
    Gatherer gatherer(at, out);
    static_cast<const btConcaveShape*>(surface->GetStorage().GetShape())
        ->processAllTriangles(&gatherer, local - half, local + half);
  }
}

}  // namespace orv::rws::addon
