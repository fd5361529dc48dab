// The demo's drive over hills in Maya: the same as without a host, but for the points of the
// ground, which Maya keeps in single precision and in its own unit.
#include <algorithm>
#include <cstdlib>

#include "MayaFixture.h"
#include "adaptor/HeadlessFixture.h"
#include "adaptor/Performance.h"
#include "app/session/anyhost/InputFile.h"
#include "app/session/anyhost/RigPlacing.h"
#include "core/config/ProfileRequests.h"
#include "core/instances/InstanceReference.h"
#include "support/QtApplication.h"

namespace orv::tests {
namespace {

constexpr double kSeconds = 30.0;

util::CMesh MakeHills() {
  const TempFolder folder;
  const std::string path = folder.path + "/terrain.glb";
  const std::string make = "python3 '" ORV_SOURCE_DIR "/examples/make_terrain.py' '" + path + "'";
  EXPECT_EQ(std::system(make.c_str()), 0);
  headless::HeadlessDocument document;
  std::string error;
  EXPECT_TRUE(document.Open(path, error)) << error;
  return *static_cast<headless::HeadlessNode*>(document.GetAdaptor().FindSceneNode("Terrain"))
              ->GetMesh(0.0);
}

void AddHills(HeadlessFixture& fixture, const util::CMesh& mesh) {
  fixture.Adaptor().CreateMeshNode({nullptr, "Terrain", "Terrain"}, nullptr, &mesh, 0);
}

void AddHills(MayaFixture& fixture, const util::CMesh& mesh) {
  MPointArray points;
  for (const auto& v : mesh.vertices)
    points.append(fixture.IsZUp() ? MPoint(100 * v.x, -100 * v.z, 100 * v.y)
                                  : MPoint(100 * v.x, 100 * v.y, 100 * v.z));
  const auto count = static_cast<unsigned>(mesh.faces.size());
  const MIntArray counts(count / 3, 3), faces(mesh.faces.data(), count);
  MFnMesh().create(static_cast<int>(points.length()), static_cast<int>(count / 3), points, counts,
                   faces, MayaFixture::NewTransform("Terrain", MObject::kNullObj));
}

/// The poses of all nodes of a car that stands on the hills as in the demo.
template <class Fixture>
Poses Drive(Fixture& fixture, const util::CMesh& hills, double fps) {
  AddHills(fixture, hills);
  fixture.SetFrameRate(fps);
  rws::core::CoreImplementation core;
  core.SetAdaptor(&fixture.Adaptor());
  core.LoadTools(rws::addon::AllRigs(), nullptr);
  rws::core::Instance* const car = core.CreateToolFromFactory("4WheelerExt", "Car");
  using rws::core::ProfileRequests;
  const auto loaded =
      ProfileRequests(core, core.Find("Car")->GetId(), ProfileRequests::Kind::kConfig)
          .Load("Start Profile");
  EXPECT_TRUE(loaded.Done()) << loaded.message;
  app::PlaceRig(*car, app::StandingPlace(*car, {}, 1.0), 1.0);
  EXPECT_TRUE(fixture.Adaptor()
                  .FindNode(car, "GravityDirectionMesh")
                  ->SetParent(fixture.UserNode("Terrain")));
  app::InputFile inputs;
  EXPECT_EQ(inputs.Load(core, ORV_SOURCE_DIR "/examples/drive_hills.csv"), "");
  inputs.PutIntoTracks();
  EXPECT_EQ(core.BeginResimulation(0.0, kSeconds), 0);
  while (core.StepResimulation()) continue;
  core.EndResimulation();
  Poses poses;
  for (CoreNode* node : car->GetNodes())
    for (int frame = 0; frame <= kSeconds * fps; ++frame) {
      rws::CSnapshot* const snapshot = node->GetSnapshot(frame * core.GetFrameDuration());
      snapshot->GetMatrix(poses[node->GetName()].emplace_back().data());
      node->ReleaseSnapshot(snapshot);
    }
  core.DropAllRows();
  return poses;
}

TEST(MayaTerrain, TheDemosDriveGoesTheSameWay) {
  const util::CMesh hills = MakeHills();
  ASSERT_GT(hills.faces.size(), 100000u);
  for (const double fps : {24.0, 24000.0 / 1001.0}) {
    HeadlessFixture plain;
    const Poses expected = Drive(plain, hills, fps);
    double way = 0.0, lowest = 1e9, highest = -1e9;
    const std::vector<Matrix<double>>& body = expected.at("CarBodyMesh");
    for (std::size_t i = 1; i < body.size(); ++i) {
      way += (body[i].translation() - body[i - 1].translation()).length();
      lowest = std::min(lowest, body[i].translation().y);
      highest = std::max(highest, body[i].translation().y);
    }
    EXPECT_GT(way, 200.0) << "round the course";
    EXPECT_GT(highest - lowest, 1.0);
    for (const bool zUp : {false, true}) {
      MayaFixture host({zUp, zUp ? MDistance::kCentimeters : MDistance::kMeters});
      ExpectAlike(expected, Drive(host, hills, fps), zUp ? "Z up" : "Y up", 1e-4);
    }
  }
}

}  // namespace
}  // namespace orv::tests
