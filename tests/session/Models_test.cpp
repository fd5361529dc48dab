#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "adaptor/headless/GltfWriter.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/InputFile.h"
#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/RunRigs.h"
#include "app/session/anyhost/TimeSpan.h"
#include "app/session/models/GlbParts.h"
#include "app/session/models/ModelFile.h"
#include "app/session/models/RiggedModel.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "support/GermanLocale.h"
#include "support/TempFolder.h"
#include "util/CMesh_Box.h"

namespace orv::tests {

namespace {

using app::ImportResult;
using app::ModelFile;
using app::Monitor;
using app::SceneSession;
using app::UpAxis;
using Vector = util::Vector3<double>;
using Json = nlohmann::ordered_json;

constexpr const char* kObj =
    "mtllib box.mtl\no Cube\n"
    "v 0 0 0\nv 150.5 0 0\nv 150.5 200 0\nv 0 200 0\nv 0 0 300\nv 150.5 0 300\n"
    "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n"
    "usemtl Red\nf 1/1 4/4 3/3 2/2\nusemtl Blue\nf 1/1 2/2 6/3 5/4\n";
constexpr const char* kMtl =
    "newmtl Red\nKd 0.75 0.1 0.05\nmap_Kd red.png\nnewmtl Blue\nKd 0.1 0.25 0.9\nd 0.5\n";
// The least PNG: one pixel.
const std::string kPng(
    "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\x08\2\0\0\0\x90wS\xde\0\0\0\x0cIDAT\x08\xd7"
    "c\xf8\xcf\xc0\0\0\3\1\1\0\x18\xdd\x8d\xb0\0\0\0\0IEND\xae"
    "B`\x82",
    69);
constexpr const char* kDae =
    R"(<?xml version="1.0"?><COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1">
<asset><unit name="inch" meter="0.0254"/><up_axis>Z_UP</up_axis></asset>
<library_geometries><geometry id="g"><mesh><source id="p"><float_array id="pa" count="9">0 0 0 10.5 0 0 0 0 20</float_array>
<technique_common><accessor source="#pa" count="3" stride="3"><param name="X" type="float"/><param name="Y" type="float"/><param name="Z" type="float"/></accessor></technique_common></source>
<vertices id="v"><input semantic="POSITION" source="#p"/></vertices>
<triangles count="1"><input semantic="VERTEX" source="#v" offset="0"/><p>0 1 2</p></triangles></mesh></geometry></library_geometries>
<library_visual_scenes><visual_scene id="s"><node id="Mast" name="Mast"><translate>1 2 3</translate>
<instance_geometry url="#g"/></node></visual_scene></library_visual_scenes>
<scene><instance_visual_scene url="#s"/></scene></COLLADA>)";

std::string bytesOf(SceneSession& session) {
  std::string error, bytes;
  EXPECT_TRUE(session.Copy(error)) << error;  // writes the rigs' records as a save does
  EXPECT_TRUE(rws::adaptor::headless::GltfWriter::WriteMemory(
      session.GetScene(), rws::adaptor::headless::GltfForm::kBinary, bytes));
  return bytes;
}

/// The largest of a mesh's points in the world.
Vector farthest(const rws::adaptor::headless::SceneNode& node) {
  Vector most(-1e9, -1e9, -1e9);
  for (const Vector& vertex : node.GetMesh()->vertices) {
    const Vector p = node.WorldMatrix(0.0).transformPoint(vertex);
    most = {std::max(most.x, p.x), std::max(most.y, p.y), std::max(most.z, p.z)};
  }
  return most;
}

void expectNear(const Vector& a, const Vector& b) {
  EXPECT_LT((a - b).length(), 1e-5) << a.x << " " << a.y << " " << a.z;
}

/// Undone the scene is as it was to the byte, redone as it was after.
void expectUndoable(SceneSession& session, const std::string& before) {
  const std::string after = bytesOf(session);
  EXPECT_TRUE(session.GetCore().Undo());
  EXPECT_TRUE(bytesOf(session) == before);
  EXPECT_TRUE(session.GetCore().Redo());
  EXPECT_TRUE(bytesOf(session) == after);
}

class Models : public testing::Test {
 protected:
  Models() {
    session.GetScene().AddNode("Floor").SetMesh(util::CMesh_Box(400.0, 1.0, 400.0));
    session.GetScene().Find("Floor")->SetPose({{0.0, -0.5, 0.0}, {}, {1.0, 1.0, 1.0}});
    session.GetScene().AddNode("Cube");
    EXPECT_EQ(session.Save(folder.path + "/scene.glb"), "");
    EXPECT_EQ(session.Open(folder.path + "/scene.glb"), "");
    folder.Write("box.mtl", kMtl);
    folder.Write("red.png", kPng);
  }

  ImportResult import(const std::string& path, const app::ImportOptions& options = {}) {
    ModelFile file;
    bool cancelled = false;
    const app::Problem problem = file.Read(path, Monitor(), cancelled);
    EXPECT_FALSE(problem) << problem.what << problem.why;
    facts = file.GetFacts();
    ImportResult result = file.AddTo(session, options, Monitor());
    EXPECT_FALSE(result.problem) << result.problem.what << result.problem.why;
    return result;
  }

  TempFolder folder;
  SceneSession session;
  app::ModelFacts facts;
};

}  // namespace

TEST_F(Models, ImportBringsMeshesMaterialsAndTexturesAndIsUndoneToTheByte) {
  const GermanLocale german;
  const std::string before = bytesOf(session);
  const ImportResult result = import(folder.Write("box.obj", kObj), {{}, UpAxis::kZ, "Floor"});
  EXPECT_FALSE(facts.unitMeters.told);
  EXPECT_EQ(facts.unitMeters.value, 0.01);
  ASSERT_EQ(result.nodes, std::vector<std::string>{"Cube_2"});
  const auto* node = session.GetScene().Find("Cube_2");
  EXPECT_EQ(node->GetParent()->GetName(), "Floor");
  expectNear(farthest(*node), {1.505, 2.5, 0.0});
  expectUndoable(session, before);

  // What was imported stays what it is through a file, and goes with its nodes.
  EXPECT_EQ(session.Save(folder.path + "/with.glb"), "");
  EXPECT_EQ(session.Open(folder.path + "/with.glb"), "");
  expectNear(farthest(*session.GetScene().Find("Cube_2")), {1.505, 2.5, 0.0});
  app::GlbParts parts;
  ASSERT_TRUE(app::SplitGlb(bytesOf(session), parts));
  EXPECT_EQ(parts.json["images"].size(), 1u);
  EXPECT_NE(parts.binary.find(kPng), std::string::npos);
  EXPECT_EQ(parts.json["materials"].size(), 3u);  // the floor's too
  session.GetScene().Detach(*session.GetScene().Find("Cube_2"));
  ASSERT_TRUE(app::SplitGlb(bytesOf(session), parts));
  EXPECT_FALSE(parts.json.contains("images") || parts.json.contains("textures"));
  EXPECT_EQ(parts.binary.find(kPng), std::string::npos);
}

TEST_F(Models, ImportTakesUnitAndUpFromTheFileInEveryLocale) {
  const GermanLocale german;
  const std::string path = folder.Write("mast.dae", kDae);
  import(path);
  EXPECT_TRUE(facts.unitMeters.told && facts.up.told);
  EXPECT_EQ(facts.up.value, UpAxis::kZ);
  expectNear(farthest(*session.GetScene().Find("Mast")), Vector(11.5, 23.0, -2.0) * 0.0254);
  // Another program's glTF in centimetres with Z up, again over names that are taken.
  const std::string glb = folder.path + "/mast.glb";
  EXPECT_EQ(session.Save(glb), "");
  import(glb, {0.5, UpAxis::kZ, ""});
  expectNear(farthest(*session.GetScene().Find("Mast_2")),
             Vector(11.5, -2.0, -3.0) * (0.5 * 0.0254));
}

TEST_F(Models, DamagedModelsAreRefusedOrReadAndNeverCrash) {
  bool cancelled = false;
  ModelFile file;
  for (const auto& [name, content] :
       std::initializer_list<std::pair<const char*, std::string>>{{"a.obj", ""},
                                                                  {"b.dae", "<COLLADA"},
                                                                  {"c.fbx", "Kaydara"},
                                                                  {"d.xyz", "1"},
                                                                  {"e.glb", "glTF"},
                                                                  {"f.stl", "solid x"},
                                                                  {"g.3ds", "MM"},
                                                                  {"h.ply", "ply\n"}}) {
    const app::Problem problem = file.Read(folder.Write(name, content), Monitor(), cancelled);
    EXPECT_TRUE(problem) << name;
  }
  EXPECT_TRUE(file.Read(folder.path + "/none.obj", Monitor(), cancelled));
  const std::pair<const char*, std::string> sound[] = {{"x.obj", kObj}, {"x.dae", kDae}};
  for (const auto& [name, whole] : sound) {
    for (std::size_t i = 0; i < 60; ++i) {
      std::string damaged = whole.substr(0, whole.size() * (i + 1) / 60);
      damaged[(i * 7919) % damaged.size()] = static_cast<char>(i * 37);
      if (!file.Read(folder.Write(name, damaged), Monitor(), cancelled))
        file.AddTo(session, {}, Monitor());
    }
  }
  const std::atomic<bool> stop{true};
  EXPECT_FALSE(file.Read(folder.Write("y.obj", kObj), Monitor({}, &stop), cancelled));
  EXPECT_TRUE(cancelled);
}

TEST_F(Models, AModelComesUnderFreeNamesWithItsLinks) {
  auto& core = session.GetCore();
  ASSERT_TRUE(core.CreateToolFromFactory("4WheelerExt", "Car"));
  ASSERT_TRUE(core.CreateToolFromFactory("SteadyCam", "Cam"));
  auto& adaptor = session.GetAdaptor();
  const auto hang = [&](const char* child, const char* parent) {
    EXPECT_TRUE(adaptor.FindSceneNode(child)->SetParent(adaptor.FindSceneNode(parent)));
  };
  hang("Cube", "Car_CarBodyMesh");
  hang("Cam_AttachedCam", "Cube");
  hang("Car_GravityDirectionMesh", "Floor");
  std::string problem;
  const int id =
      core.FindInstance("Cam")->GetConfig().FindAll("Translation Response Factor").front()->GetId();
  ASSERT_TRUE(core.EditParameter(*core.FindInstance("Cam"), id, "0.31", problem)) << problem;
  const std::string scene = bytesOf(session);
  const std::string path = folder.path + "/car.prm";
  std::vector<std::string> warnings;
  ASSERT_FALSE(app::MakeRiggedModel(session, {{"Car", "Cam"}, {}}, {"A car", "Drive.", kPng}, path,
                                    warnings));
  EXPECT_EQ(warnings.size(), 1u);  // it has no ground any more
  EXPECT_TRUE(bytesOf(session) == scene);
  const app::RiggedModelInfo info = app::ReadRiggedModel(path);
  EXPECT_EQ(info.card.title + info.card.text + info.card.picture, "A carDrive." + kPng);
  ASSERT_EQ(info.rigs.size(), 2u);
  EXPECT_EQ(info.rigs[0].kind, "4WheelerExt");

  for (const char* number : {"_01", "_02"}) {
    const std::string before = bytesOf(session);
    const app::AddedModel added = app::AddRiggedModel(session, path, {{5.0, 0.0, 1.0}, "Floor"});
    ASSERT_FALSE(added.problem) << added.problem.what << added.problem.why;
    const std::string car = "Car" + std::string(number), cam = "Cam" + std::string(number);
    EXPECT_EQ(added.rigs, (std::vector<std::string>{car, cam}));
    expectUndoable(session, before);
    const auto* attached = session.GetScene().Find(cam + "_AttachedCam");
    ASSERT_TRUE(attached && attached->GetParent() && attached->GetParent()->GetParent());
    EXPECT_EQ(attached->GetParent()->GetParent()->GetName(), car + "_CarBodyMesh");
    EXPECT_EQ(attached->GetTag(), cam + "/AttachedCam");
    EXPECT_EQ(session.GetScene().Find(car + "_GravityDirectionMesh")->GetParent()->GetName(),
              "Floor");
    expectNear(session.GetScene().Find(car + "_CarBodyMesh")->WorldMatrix(0.0).translation() -
                   session.GetScene().Find("Car_CarBodyMesh")->WorldMatrix(0.0).translation(),
               {5.0, 0.0, 1.0});
    EXPECT_EQ(core.FindInstance(cam)->GetConfig().Find(id)->GetNumber(), 0.31);
  }
  EXPECT_TRUE(app::ReadRiggedModel(folder.path + "/scene.glb").problem);
  EXPECT_TRUE(
      app::ReadRiggedModel(folder.Write("cut.prm", folder.Read("car.prm").substr(0, 900))).problem);
}

TEST_F(Models, ShippedModelsDriveOverTheGround) {
  const std::vector<std::string> models = app::ShippedModels();
  ASSERT_EQ(models.size(), 2u);
  double place = 0.0;
  for (const std::string& model : models) {
    const app::AddedModel added = app::AddRiggedModel(session, model, {{place, 0.0, 0.0}, "Floor"});
    ASSERT_FALSE(added.problem) << added.problem.what << added.problem.why;
    EXPECT_FALSE(app::ReadRiggedModel(model).card.picture.empty());
    place += 12.0;
  }
  const std::string text =
      "time,Car:Gas Pedal (Forw/Backw),Tank:Gas Pedal (Forw/Backw),LeftBelt:Forward/Backward,"
      "RightBelt:Forward/Backward\n0,0,0,0,0\n0.5,0.5,0.5,0.5,0.5\n";
  app::InputFile inputs;
  ASSERT_EQ(inputs.Load(session.GetCore(), folder.Write("go.csv", text)), "");
  inputs.PutIntoTracks();
  ASSERT_TRUE(app::Resimulate(session.GetCore(), {0.0, 3.0}, Monitor()).began);
  EXPECT_TRUE(session.TakeWarnings().empty());
  for (const char* name : {"WheelFL", "WheelBR", "Hull"}) {
    const auto& node = *session.GetScene().Find(name);
    std::vector<Vector> places;
    for (int i = 0; i <= 75; ++i) places.push_back(node.WorldMatrix(0.04 * i).translation());
    EXPECT_LT(places.back().z, places.front().z - 1.0) << name;
    for (std::size_t i = 2; i < places.size(); ++i)
      EXPECT_LT((places[i] - places[i - 1] * 2.0 + places[i - 2]).length(), 0.02) << name << i;
    EXPECT_NEAR(places.back().y, places.front().y, 0.03) << name;
  }
}

}  // namespace orv::tests
