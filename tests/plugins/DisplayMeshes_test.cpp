#include "plugins/release/4wheelerextended/DisplayMeshes.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "plugins/release/crawlertracks/TrackMeshes.h"
#include "support/Solid.h"

namespace orv::rws::addon {
namespace {

using Vector = util::Vector3<double>;

void expectSolid(const char* name, const util::CMesh& mesh, const Vector& low, const Vector& high) {
  SCOPED_TRACE(name);
  EXPECT_GT(tests::ClosedVolume(mesh), 0.0) << "inside out";
  Vector least = mesh.vertices[0], most = least;
  for (const Vector& v : mesh.vertices)
    for (int k = 0; k < 3; ++k) {
      least[k] = std::min(least[k], v[k]);
      most[k] = std::max(most[k], v[k]);
    }
  EXPECT_LT((least - low).length(), 1e-9) << least.x << " " << least.y << " " << least.z;
  EXPECT_LT((most - high).length(), 1e-9) << most.x << " " << most.y << " " << most.z;
}

TEST(DisplayMeshes, AreClosedAndOfTheSizeThatTheRigCountsOn) {
  expectSolid("body", CMesh_CarBody(), {-0.37, -0.125, -0.83}, {0.37, 0.34, 0.81});
  expectSolid("wheel", CMesh_CarWheel(), {-0.5, -1, -1}, {0.5, 1, 1});
  expectSolid("wheel relocator", CMesh_WheelRelocator(), {-0.03, -1.1, -1.1}, {0.03, 1.1, 1.1});
  expectSolid("wheel centre", CMesh_WheelCenter(), {-0.15, -0.15, -0.15}, {0.15, 0.15, 0.15});
  expectSolid("suspension", CMesh_WheelSuspension(), {-0.05, -0.5, -0.05}, {0.05, 0.5, 0.05});
  expectSolid("chassis", CMesh_ChassisRelocator(), {-0.35, -0.005, -0.6}, {0.35, 0.005, 0.6});
  expectSolid("turn base", CMesh_TurnBase(), {-0.3, -0.007, -0.08}, {0.3, 0.007, 0.08});
  expectSolid("gravity", CMesh_GravityDirection(), {-0.04, -0.3, -0.04}, {0.04, 0, 0.04});
  expectSolid("force", CMesh_ExternalForce(), {-0.04, 0, -0.04}, {0.04, 0.3, 0.04});
  expectSolid("base", CMesh_CarBodyBase(), {-0.3, -0.005, -0.62}, {0.3, 0.005, 0.5});
  expectSolid("target", CMesh_Target(), {-0.25, -0.005, -0.25}, {0.25, 0.005, 0.25});
  expectSolid("crawler frame", CrawlerFrameMesh(), {-0.52, -0.01, -1}, {0.52, 0.01, 1});
  expectSolid("crawler wheel", CrawlerWheelMesh(0.5, 0.2), {-0.22, -0.5, -0.5}, {0.22, 0.5, 0.5});
  expectSolid("track direction", TrackDirectionMesh(), {-0.08, -0.01, -0.5}, {0.08, 0.189, 0.309});
  expectSolid("crawler gravity", CrawlerGravityMesh(), {-0.09, -0.045, -0.58}, {0.09, 0.045, 0});
  expectSolid("template step", TemplateStepMesh(), {-0.2, -0.03, -0.09}, {0.2, 0.03, 0.09});
  expectSolid("steering wheel", CMesh_SteeringWheel(), {-0.07, -0.07, -0.01}, {0.07, 0.07, 0.01});
}

}  // namespace
}  // namespace orv::rws::addon
