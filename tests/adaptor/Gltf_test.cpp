#include <gtest/gtest.h>
#include <sys/resource.h>
#include <tiny_gltf.h>

#include <cmath>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <limits>
#include <random>

#include "ForeignGltf.h"
#include "adaptor/headless/GltfReader.h"
#include "adaptor/headless/GltfWriter.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "support/GltfValidator.h"
#include "support/TempFolder.h"
#include "util/AtomicFile.h"

namespace {

using namespace orv::rws::adaptor;
using namespace orv::rws::adaptor::headless;
using orv::tests::foreignScene;
using orv::tests::GltfBuilder;
using orv::tests::GltfValidator;
using orv::tests::Json;
using orv::util::CMesh;
using orv::util::Vector3;

constexpr double kForever = std::numeric_limits<double>::infinity();
namespace fs = std::filesystem;

bool passOverImage(tinygltf::Image*, int, std::string*, std::string*, int, int,
                   const unsigned char*, int, void*) {
  return true;
}

class Gltf : public testing::Test {
 protected:
  std::string path(const std::string& name) const { return folder.path + "/" + name; }

  static std::string contentOf(const std::string& file) {
    std::string bytes;
    EXPECT_TRUE(orv::util::readFile(file, bytes)) << file;
    return bytes;
  }

  static std::unique_ptr<Scene> open(const std::string& file, const ReadOptions& options = {}) {
    ReadResult result = GltfReader::Read(file, options);
    EXPECT_TRUE(result) << result.error;
    for (const auto& warning : result.warnings)
      EXPECT_NE(warning.find("\"Twin\" is \"Twin_2\""), std::string::npos) << warning;
    return std::move(result.scene);
  }

  static std::unique_ptr<Scene> openBytes(const std::string& bytes) {
    ReadResult result = GltfReader::ReadMemory(bytes, "memory");
    EXPECT_TRUE(result) << result.error;
    return std::move(result.scene);
  }

  /// Saves, and has others read the result.
  std::string save(const Scene& scene, const std::string& name) const {
    const std::string file = path(name);
    const WriteResult result = GltfWriter::Write(scene, file);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(GltfValidator::available() ? GltfValidator::errorsOf(file) : "", "");
    tinygltf::TinyGLTF reader;
    reader.SetImageLoader(passOverImage, nullptr);
    tinygltf::Model model;
    std::string error;
    std::string warning;
    const bool binary = fs::path(name).extension() == ".glb";
    EXPECT_TRUE(binary ? reader.LoadBinaryFromFile(&model, &error, &warning, file)
                       : reader.LoadASCIIFromFile(&model, &error, &warning, file))
        << error;
    return file;
  }

  orv::tests::TempFolder folder;
};

/// JSON and binary chunk of a `.glb`.
std::pair<Json, std::string> parts(const std::string& glb) {
  std::uint32_t length = 0;
  std::memcpy(&length, glb.data() + 12, 4);
  const std::string rest = glb.substr(20 + length);
  return {Json::parse(glb.substr(20, length)), rest.empty() ? "" : rest.substr(8)};
}

std::vector<double> frames(int first, int count, double rate) {
  std::vector<double> times;
  for (int i = 0; i < count; ++i) times.push_back((first + i) / rate);
  return times;
}

std::vector<double> wobble(const std::vector<double>& times, bool rotation) {
  std::vector<double> values;
  for (const double t : times) {
    const double a = 0.3 * std::sin(t / 3.0);
    if (rotation)
      values.insert(values.end(), {std::sin(a), 0.0, 0.0, std::cos(a)});
    else
      values.insert(values.end(), {std::sin(t) / 3.0, std::cos(t) / 7.0, t / 11.0});
  }
  return values;
}

void expectSame(const Scene& a, const Scene& b) {
  const auto left = a.GetNodes();
  const auto right = b.GetNodes();
  ASSERT_EQ(left.size(), right.size());
  for (std::size_t i = 0; i < left.size(); ++i) {
    SCOPED_TRACE(left[i]->GetName());
    EXPECT_EQ(left[i]->GetName(), right[i]->GetName());
    EXPECT_EQ(left[i]->GetPose(), right[i]->GetPose());
    EXPECT_EQ(left[i]->GetTag(), right[i]->GetTag());
    EXPECT_EQ(left[i]->IsVisible(), right[i]->IsVisible());
    EXPECT_EQ(left[i]->GetColour(), right[i]->GetColour());
    for (const auto path :
         {ChannelPath::kTranslation, ChannelPath::kRotation, ChannelPath::kScale}) {
      const Channel* x = left[i]->GetChannel(path);
      const Channel* y = right[i]->GetChannel(path);
      ASSERT_EQ(x == nullptr, y == nullptr);
      EXPECT_TRUE(x == nullptr || *x == *y);
    }
    ASSERT_EQ(left[i]->GetLens() == nullptr, right[i]->GetLens() == nullptr);
    EXPECT_TRUE(left[i]->GetLens() == nullptr || *left[i]->GetLens() == *right[i]->GetLens());
    ASSERT_EQ(left[i]->HasMesh(), right[i]->HasMesh());
  }
  EXPECT_EQ(a.GetFrameRate(), b.GetFrameRate());
  EXPECT_EQ(a.GetRangeStart(), b.GetRangeStart());
  EXPECT_EQ(a.GetRangeEnd(), b.GetRangeEnd());
}

/// What a take leaves: tagged nodes with keys in doubles, a mesh, a lens, a curve, a rig's record.
void perform(Scene& scene) {
  SceneNode& rig = scene.AddNode("Rig_01_Cam");
  rig.SetTag("Rig_01/Cam");
  rig.SetLens({47.3, 3.21, 0.0, 0.0});
  const auto times = frames(-3, 40, 25.0);
  rig.SetPose({{1.0 / 3.0, 0.1, -0.0}, {}, {1.0, 1.0, 1.0 / 7.0}});
  EXPECT_TRUE(rig.ReplaceKeys(ChannelPath::kTranslation, times.front(), kForever, times,
                              wobble(times, false), 0.04));
  EXPECT_TRUE(rig.ReplaceKeys(ChannelPath::kRotation, times.front(), kForever, times,
                              wobble(times, true), 0.04));
  SceneNode& body = scene.AddNode("Rig_01_Body", &rig);
  body.SetTag("Rig_01/Body");
  CMesh mesh;
  mesh.vertices = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0.1}, {0, 1, 0}};
  mesh.faces = {0, 1, 2, 0, 2, 3};
  mesh.texCoords = {{0, 0, 0}, {1, 1, 0}};
  mesh.texFaces = {0, 1, 1, 0, 0, 1};
  body.SetMesh(mesh);
  body.SetColour({0.25f, 0.5f, 0.75f});
  body.SetVisible(false);
  SceneNode& rail = scene.AddNode("Rig_01_Rail", &rig);
  rail.SetCurve({{{0, 0, 0}, {1, 2, 3}, {4, 5, 6}}, true});
  scene.AddNode("Rig_01_Empty", &rig).SetMesh(CMesh());
  scene.SetFrameRate(30.0);
  scene.SetRange(-0.5, 12.5);
  scene.GetRigs().push_back(
      {"steadycam", "Rig_01", "<RWT_Plugin version=\"2.5\"/> \xC3\xA4", "", "", ""});
}

TEST_F(Gltf, TheValidatorIsAtHand) {
  if (!GltfValidator::available())
    GTEST_SKIP()
        << "*** written files are NOT validated: node, npm or gltf-validator is missing ***";
}

TEST_F(Gltf, ASceneOfOthersIsSeenAsItIs) {
  const auto scene = openBytes(foreignScene().glb());
  ASSERT_TRUE(scene);
  std::vector<std::string> names;
  for (const SceneNode* node : scene->GetNodes()) names.push_back(node->GetName());
  EXPECT_EQ(names, (std::vector<std::string>{"Root", "Twin", "node_3", "Twin_2", "Lamp", "Joint",
                                             "Sheared", "Path", "Strip", "Quantized", "Stepper"}));
  EXPECT_EQ(scene->GetClips(), (std::vector<std::string>{"Walk", "Jump"}));
  EXPECT_EQ(scene->GetFrameRate(), 25.0);
  EXPECT_EQ(scene->GetRangeEnd(), 2.0) << "the clip's last key";

  // Half way through the first second: a quarter turn half done, below a turned and moved root.
  const auto world = scene->Find("Twin")->WorldMatrix(0.5);
  EXPECT_NEAR(world[12], 1.0, 1e-7);
  EXPECT_NEAR(world[14], 3.0 - 2.0, 1e-7);
  EXPECT_NEAR(world[0], 2.0 * std::cos(M_PI * 0.75), 1e-6);
  EXPECT_NEAR(scene->Find("Lamp")->LocalTrs(0.5).translation.x, 0.125 * 1.0 + 0.5 * 3.0, 1e-12)
      << "out of slope 1 at 0, into slope 0 at 3";
  EXPECT_EQ(scene->Find("Stepper")->LocalTrs(1.99).translation.x, 4.0);

  EXPECT_EQ(scene->Find("Sheared")->LocalMatrix(0.0)[4], 0.5);
  const Lens& lens = *scene->Find("Twin_2")->GetLens();
  EXPECT_NEAR(lens.fieldOfView, 0.8 * 180.0 / M_PI, 1e-13);
  EXPECT_EQ(lens.farClip, 400.0);
  EXPECT_EQ(lens.aspectRatio, 1.5);
  EXPECT_TRUE(scene->Find("Path")->GetCurve()->closed);
  EXPECT_EQ(scene->Find("Path")->GetCurve()->points[2], Vector3<double>(1, 2, 0));
  EXPECT_EQ(scene->Find("Twin")->GetColour(), (Colour{0.5f, 0.25f, 0.125f}));
  EXPECT_EQ(scene->Find("Twin")->GetMesh()->faces, (std::vector<std::int32_t>{0, 1, 2, 0, 2, 3}));
  const CMesh& strip = *scene->Find("Strip")->GetMesh();
  EXPECT_EQ(strip.faces, (std::vector<std::int32_t>{0, 1, 2, 1, 3, 2, 4, 5, 6, 4, 6, 7, 4, 7, 8}));
  EXPECT_EQ(strip.vertices[2], Vector3<double>(0, 1, 5)) << "from the sparse accessor";
  EXPECT_EQ(scene->Find("Quantized")->GetMesh()->vertices[2], Vector3<double>(0, 200, 0));

  const ReadResult jump = GltfReader::ReadMemory(foreignScene().glb(), "memory", {"Jump"});
  EXPECT_EQ(jump.scene->Find("Twin")->GetChannel(ChannelPath::kTranslation)->GetMode(),
            Interpolation::kStep);
  EXPECT_EQ(GltfReader::ReadMemory(foreignScene().glb(), "memory", {"1"}).scene->GetEvaluatedClip(),
            1);
}

/// A node "Path" whose mesh is single lines; of three numbers each in `points`.
GltfBuilder linesScene(const std::vector<float>& points, const std::vector<std::uint16_t>& lines) {
  GltfBuilder b;
  b.json = Json::parse(R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0]}],
                           "nodes": [{"name": "Path", "mesh": 0}]})");
  const int position = b.positions(points), indices = b.accessor(lines, "SCALAR", 1, 34963);
  b.json["meshes"] = {
      {{"primitives",
        {{{"attributes", {{"POSITION", position}}}, {"indices", indices}, {"mode", 1}}}}}};
  return b;
}

TEST_F(Gltf, ChainsOfLinesAreCurvesInWhateverOrderTheyCome) {
  std::mt19937 random(5);
  for (int round = 0; round < 40; ++round) {
    const bool closed = round % 2 == 1, apart = round % 4 > 1;
    const std::uint16_t count = 12;
    std::vector<Vector3<double>> points;
    for (int i = 0; i < count; ++i)
      points.emplace_back(random() % 100, random() % 100, i);  // no two are one
    std::vector<std::pair<std::uint16_t, std::uint16_t>> order;
    for (std::uint16_t i = 0; i + !closed < count; ++i) order.emplace_back(i, (i + 1) % count);
    std::shuffle(order.begin(), order.end(), random);
    for (int k = 0; k < 4; ++k) std::swap(order[k].first, order[k].second);  // most keep their way
    std::vector<float> numbers;
    std::vector<std::uint16_t> lines;
    const auto add = [&](std::uint16_t point) {
      lines.push_back(apart ? static_cast<std::uint16_t>(numbers.size() / 3) : point);
      for (int k = 0; k < 3 && apart; ++k) numbers.push_back(static_cast<float>(points[point][k]));
    };
    for (const auto& [from, to] : order) add(from), add(to);
    for (int i = 0; i < 3 * count && !apart; ++i)
      numbers.push_back(static_cast<float>(points[i / 3][i % 3]));
    const auto scene = open(folder.Write("lines.glb", linesScene(numbers, lines).glb()));
    const Curve& curve = *scene->Find("Path")->GetCurve();
    EXPECT_EQ(curve.closed, closed);
    auto found = curve.points;
    std::rotate(found.begin(), std::find(found.begin(), found.end(), points[0]), found.end());
    EXPECT_EQ(found, points) << round;
    EXPECT_TRUE(closed || curve.points[0] == points[0]);
  }
  const std::vector<float> cross = {0, 0, 0, 1, 0, 0, 2, 0, 0, 1, 1, 0, 5, 0, 0, 6, 0, 0, 8, 0, 0};
  const auto read = [&](const std::vector<std::uint16_t>& lines) {
    return GltfReader::ReadMemory(linesScene(cross, lines).glb(), "m");
  };
  const ReadResult forked = read({0, 1, 1, 2, 1, 3});
  EXPECT_EQ(forked.scene->Find("Path")->GetCurve(), nullptr);
  EXPECT_NE(forked.warnings.at(0).find("branch"), std::string::npos);
  const ReadResult two = read({0, 1, 4, 5, 5, 6});
  EXPECT_EQ(two.scene->Find("Path")->GetCurve()->points.front().x, 5.0) << "the longer one";
  EXPECT_NE(two.warnings.at(0).find("of 2 chains"), std::string::npos);
}

TEST_F(Gltf, AFileOfAnotherKindIsToldApart) {
  const std::pair<std::string, std::string> files[] = {
      {"a.blend", "BLENDER-v300"},          {"b.blend", "\x28\xb5\x2f\xfd"},
      {"c.glb", "Kaydara FBX Binary  "},    {"d.obj", "# Made by hand\n\nv 0 0 0\n"},
      {"e.dae", "<?xml version=\"1.0\"?>"}, {"f.usdz", "PK\3\4"},
      {"g.ma", "//Maya ASCII 2019"},        {"h.csv", "time,Gas\n0,1\n"}};
  const char* const kinds[] = {"a Blender", "a Blender", "an FBX", "a Wavefront OBJ",
                               "a Collada", "a USD",     "a Maya", "a table (CSV)"};
  for (std::size_t i = 0; i < std::size(files); ++i) {
    const std::string error = GltfReader::ReadMemory(files[i].second, files[i].first).error;
    EXPECT_EQ(error.rfind(files[i].first + ": this is " + kinds[i], 0), 0u) << error;
  }
  EXPECT_NE(GltfReader::ReadMemory("nonsense", "a.glb").error.find("JSON"), std::string::npos);
}

TEST_F(Gltf, WhatNobodyChangedComesBackAsItWas) {
  const GltfBuilder source = foreignScene();
  const auto scene = open(folder.Write("in.glb", source.glb()));
  const std::string out = save(*scene, "out.glb");
  const auto [before, binBefore] = parts(source.glb());
  const auto [after, binAfter] = parts(contentOf(out));
  EXPECT_EQ(before, after);
  EXPECT_EQ(binBefore, binAfter);

  const auto text = open(folder.Write("in.gltf", source.text()));
  EXPECT_EQ(Json::parse(contentOf(save(*text, "out.gltf"))), Json::parse(source.text()));
  // From one form to the other the bytes stay what they are.
  expectSame(*scene, *open(save(*text, "from_text.glb")));
  EXPECT_EQ(parts(contentOf(path("from_text.glb"))).second, binBefore);
  expectSame(*scene, *open(save(*scene, "from_binary.gltf")));
}

TEST_F(Gltf, OurChangesLeaveOthersDataAlone) {
  const GltfBuilder source = foreignScene();
  auto scene = openBytes(source.glb());
  perform(*scene);
  SceneNode& lamp = *scene->Find("Lamp");
  ASSERT_TRUE(lamp.ReplaceKeys(ChannelPath::kTranslation, 1.0, kForever, {1.0, 1.04},
                               {1, 1, 1, 2, 2, 2}, 0.04));
  SceneNode& sheared = *scene->Find("Sheared");
  ASSERT_TRUE(scene->Reparent(*scene->Find("Twin_2"), &lamp, 0.0));
  const auto [before, binBefore] = parts(source.glb());
  const auto [after, binAfter] = parts(contentOf(save(*scene, "out.glb")));
  EXPECT_EQ(binAfter.compare(0, source.bin.size(), source.bin), 0);
  for (const char* table : {"materials", "textures", "images", "cameras", "skins", "meshes",
                            "accessors", "bufferViews"}) {
    for (std::size_t i = 0; i < before[table].size(); ++i)
      EXPECT_EQ(before[table][i], after[table][i]) << table << i;
  }
  EXPECT_EQ(before["animations"][1], after["animations"][1]);
  for (const int untouched : {1, 3, 4, 6, 7, 8, 9, 10, 11})
    EXPECT_EQ(before["nodes"][untouched], after["nodes"][untouched]);
  EXPECT_EQ(after["nodes"][0]["extras"], before["nodes"][0]["extras"]);
  for (const char* key : {"asset", "extensions"}) EXPECT_EQ(before[key], after[key]);
  EXPECT_EQ(after["scenes"][0]["extras"]["mood"], "grey");
  const Json& ours = after["cameras"].back()["perspective"];
  EXPECT_EQ(ours["aspectRatio"], 16.0 / 9.0) << "or others take the angle for another picture's";
  EXPECT_NEAR(ours["yfov"].get<double>(), 47.3 * M_PI / 180.0, 1e-12);

  const auto again = open(path("out.glb"));
  expectSame(*scene, *again);
  for (int frame = 0; frame < 25; ++frame)
    EXPECT_NEAR(again->Find("Lamp")->LocalTrs(frame / 25.0).translation.x,
                openBytes(source.glb())->Find("Lamp")->LocalTrs(frame / 25.0).translation.x, 1e-12);
  // A change that is undone leaves the file as it was.
  SceneNode& cam = *again->Find("Rig_01_Cam");
  const NodeAnimation taken = cam.GetAnimation();
  cam.ReplaceKeys(ChannelPath::kRotation, 0.2, kForever, {0.2}, {0, 0, 0, 1}, 0.04);
  std::unique_ptr<SceneNode> gone = again->Detach(*again->Find("Twin"));
  again->Attach(std::move(gone), again->Find("Root"), 0);
  cam.SetAnimation(taken);
  EXPECT_EQ(contentOf(save(*again, "undone.glb")), contentOf(path("out.glb")));
  // A matrix gives way to a pose once the node is keyed.
  ASSERT_TRUE(sheared.ReplaceKeys(ChannelPath::kScale, 0, 1, {0.0}, {1, 1, 1}, 0.04));
  EXPECT_EQ(open(save(*scene, "keyed.glb"))->Find("Sheared")->GetPose(), sheared.GetPose());
}

TEST_F(Gltf, OurSceneSurvivesFilesToTheLastBitAndRepeatedSavesDoNotGrow) {
  for (const char* extension : {".glb", ".gltf"}) {
    SCOPED_TRACE(extension);
    Scene made;
    perform(made);
    const std::string first = save(made, std::string("1") + extension);
    auto second = open(first);
    expectSame(made, *second);
    EXPECT_TRUE(std::signbit(second->Find("Rig_01_Cam")->GetPose().translation.z));
    EXPECT_EQ(second->Find("Rig_01_Rail")->GetCurve()->points,
              made.Find("Rig_01_Rail")->GetCurve()->points);
    EXPECT_EQ(second->Find("Rig_01_Body")->GetMesh()->faces.size(), 6u);
    EXPECT_EQ(second->GetRigs()[0].record, made.GetRigs()[0].record);
    const std::string secondFile = save(*second, std::string("2") + extension);
    EXPECT_EQ(contentOf(first), contentOf(secondFile));

    // Takes over takes, colours, meshes and lenses again and again.
    std::size_t size = 0;
    for (int round = 0; round < 4; ++round) {
      auto scene = open(path(std::string("2") + extension));
      SceneNode& node = *scene->Find("Rig_01_Cam");
      const auto times = frames(round, 40, 25.0);
      ASSERT_TRUE(node.ReplaceKeys(ChannelPath::kTranslation, 0.0, kForever, times,
                                   wobble(times, false), 0.04));
      node.SetLens({40.0 + round, 1.0, 0.1, 100.0});
      scene->Find("Rig_01_Body")->SetColour({0.5f, 0.125f * static_cast<float>(round), 0.0f});
      scene->Find("Rig_01_Rail")->SetCurve({{{0, 0, 0}, {1, 1.0 * round, 3}}, false});
      scene->Detach(*scene->Find("Rig_01_Empty"));
      scene->AddNode("Rig_01_Empty", &node).SetMesh(CMesh());
      save(*scene, std::string("2") + extension);
      expectSame(*scene, *open(path(std::string("2") + extension)));
      const std::size_t now = contentOf(path(std::string("2") + extension)).size();
      EXPECT_TRUE(round < 2 || now <= size + 64) << size << " bytes grew to " << now;
      size = now;
    }
  }
}

TEST_F(Gltf, KeysThatGoOrChangeLeaveTheOthersAlone) {
  Scene scene;
  const std::vector<double> times = frames(0, 4, 24.0);
  for (const char* name : {"a", "b", "c"})
    for (const auto path : {ChannelPath::kTranslation, ChannelPath::kRotation, ChannelPath::kScale})
      scene.AddNode(name + std::to_string(static_cast<int>(path)))
          .ReplaceKeys(path, 0.0, kForever, times, wobble(times, path == ChannelPath::kRotation),
                       0.04);
  std::unique_ptr<Scene> opened = open(save(scene, "keys.glb"));
  opened->Find("a1")->RemoveChannel(ChannelPath::kRotation);
  opened->Find("b0")->RemoveChannel(ChannelPath::kTranslation);
  opened->Find("c2")->ReplaceKeys(ChannelPath::kScale, 0.1, kForever, {0.12}, {2, 2, 2}, 0.04);
  opened->Find("c0")->ReplaceKeys(ChannelPath::kScale, 0.0, 1.0, {0.5}, {3, 3, 3}, 0.04);
  const std::string file = save(*opened, "fewer.glb");
  expectSame(*opened, *open(file));
  const Json clip = parts(contentOf(file)).first["animations"][0];
  EXPECT_EQ(clip["channels"].size(), 8u);
  EXPECT_EQ(clip["samplers"].size(), 8u);
}

TEST_F(Gltf, NodesOfOneMeshShareItInTheFileAndAfterIt) {
  Scene scene;
  CMesh mesh;  // larger than the blocks in which a file is written
  for (int i = 0; i < 100000; ++i) mesh.vertices.emplace_back(i, i % 7, i % 11);
  mesh.faces = {0, 1, 2, 99997, 99998, 99999};
  SceneNode& first = scene.AddNode("first");
  first.SetMesh(mesh);
  for (const char* name : {"second", "red", "railed", "fourth"})
    scene.AddNode(name).SetMesh(first.SharedMesh());
  scene.Find("red")->SetColour({1.0f, 0.0f, 0.0f});
  scene.Find("railed")->SetCurve({{{0, 0, 0}, {1, 0, 0}}, false});
  const std::string file = save(scene, "shared.glb");
  EXPECT_EQ(parts(contentOf(file)).first["meshes"].size(), 3u) << "plain, red, with a curve";

  std::unique_ptr<Scene> opened = open(file);
  const auto shared = opened->Find("first")->SharedMesh();
  EXPECT_EQ(shared->vertices, mesh.vertices);
  EXPECT_EQ(shared->faces, mesh.faces);
  EXPECT_EQ(contentOf(save(*opened, "again.glb")), contentOf(file));
  opened->AddNode("late").SetMesh(shared);
  opened->Detach(*opened->Find("first"));
  const Json json = parts(contentOf(save(*opened, "late.glb"))).first;
  EXPECT_EQ(json["meshes"].size(), 3u);
  EXPECT_EQ(json["nodes"].back()["mesh"], json["nodes"][0]["mesh"]) << "it shows the second's";
  EXPECT_EQ(opened->Find("fourth")->SharedMesh(), shared);
  EXPECT_EQ(open(path("late.glb"))->Find("railed")->GetCurve()->points.size(), 2u);
  EXPECT_EQ(open(path("late.glb"))->Find("late")->GetCurve(), nullptr);
}

TEST_F(Gltf, KeysEditedElsewhereWinAndAreTold) {
  Scene made;
  perform(made);
  std::string glb = contentOf(save(made, "a.glb"));
  auto [json, bin] = parts(glb);
  const auto output = json["accessors"][json["animations"][0]["samplers"][0]["output"].get<int>()];
  const auto at =
      json["bufferViews"][output["bufferView"].get<int>()]["byteOffset"].get<std::size_t>();
  const float edited = 42.0f;
  const std::size_t binAt = glb.size() - bin.size();
  std::memcpy(&glb[binAt + at], &edited, 4);
  const ReadResult result = GltfReader::ReadMemory(glb, "a.glb");
  ASSERT_TRUE(result) << result.error;
  ASSERT_EQ(result.warnings.size(), 1u);
  EXPECT_EQ(result.warnings[0],
            "a.glb: node \"Rig_01_Cam\": its translation was changed by another program; that "
            "change is taken over");
  EXPECT_EQ(result.scene->Find("Rig_01_Cam")->GetChannel(ChannelPath::kTranslation)->GetValues()[0],
            42.0);
  EXPECT_EQ(*result.scene->Find("Rig_01_Cam")->GetChannel(ChannelPath::kRotation),
            *made.Find("Rig_01_Cam")->GetChannel(ChannelPath::kRotation));
  // A program that merely rounds poses to floats has not edited them.
  Json rounded = json;
  for (Json& v : rounded["nodes"][0]["translation"]) v = static_cast<float>(v.get<double>());
  const std::string moved = GltfBuilder::joined(rounded.dump(), bin);
  EXPECT_EQ(openBytes(moved)->Find("Rig_01_Cam")->GetPose(), made.Find("Rig_01_Cam")->GetPose());
}

TEST_F(Gltf, TimesThatFloatsCannotTellApartStillRise) {
  Scene scene;
  SceneNode& node = scene.AddNode("far");
  std::vector<double> times;
  for (int i = 0; i < 50; ++i) times.push_back(40000.0 + i * 0.0005);
  ASSERT_TRUE(node.ReplaceKeys(ChannelPath::kTranslation, 0.0, kForever, times,
                               wobble(times, false), 0.04));
  expectSame(scene, *open(save(scene, "far.glb")));
  ASSERT_TRUE(node.ReplaceKeys(ChannelPath::kTranslation, -1e9, kForever, {-2.0, -1.0},
                               {0, 0, 0, 1, 1, 1}, 0.04));
  expectSame(scene, *open(save(scene, "past.glb")));
}

TEST_F(Gltf, RemovedNodesGoWithTheirReferencesUnlessASkinNeedsThem) {
  auto scene = openBytes(foreignScene().glb());
  scene->Detach(*scene->Find("Lamp"));  // takes the joint along
  std::string bytes;
  EXPECT_EQ(GltfWriter::WriteMemory(*scene, GltfForm::kBinary, bytes).error,
            "scene: skins[0]: a joint of it was removed, but nodes[3] is still bound to it (remove "
            "that node too, or bring the joint back)");
  scene->Detach(*scene->Find("node_3"));
  const WriteResult result = GltfWriter::WriteMemory(*scene, GltfForm::kBinary, bytes);
  EXPECT_EQ(result.error, "");
  ASSERT_EQ(result.warnings.size(), 1u);
  EXPECT_NE(result.warnings[0].find("VENDOR_unknown"), std::string::npos);
  save(*scene, "out.glb");
  const Json json = parts(contentOf(path("out.glb"))).first;
  EXPECT_EQ(json["nodes"].size(), 9u);
  EXPECT_FALSE(json.contains("skins"));
  EXPECT_EQ(json["scenes"][1]["nodes"], Json({7})) << "the other scene's node has moved up";
  EXPECT_EQ(json["animations"][0]["channels"].size(), 3u);
  EXPECT_EQ(json["animations"][1]["channels"][1]["target"]["node"], 7);
  expectSame(*scene, *open(path("out.glb")));

  // A clip whose nodes are all gone goes, and the other stays itself.
  scene = openBytes(foreignScene().glb());
  for (const char* name : {"Root", "Lamp", "Stepper"}) scene->Detach(*scene->Find(name));
  const auto kept = open(save(*scene, "kept.glb"));
  EXPECT_EQ(kept->GetClips(), (std::vector<std::string>{"Jump"}));
  ASSERT_TRUE(scene->Find("Path")->ReplaceKeys(ChannelPath::kScale, 0, 1, {0.5}, {2, 2, 2}, 0.04));
  const auto keyed = open(save(*scene, "keyed.glb"));
  EXPECT_EQ(keyed->GetClips(), (std::vector<std::string>{"Walk", "Jump"}));
  expectSame(*scene, *keyed);
}

TEST_F(Gltf, SideFilesAreReadAndTakenAlong) {
  GltfBuilder source = foreignScene();
  source.json["images"][0]["uri"] = "sub%20dir/t.png";
  folder.Write("a/sub dir/t.png", "picture");
  folder.Write("a/data.bin", source.bin);
  folder.Write("b/data.bin", "somebody else's");
  folder.Write("a/in.gltf", source.text("data.bin"));
  auto scene = open(path("a/in.gltf"));
  perform(*scene);
  const std::string out = save(*scene, "b/out.gltf");
  EXPECT_EQ(contentOf(path("b/data.bin")), "somebody else's");
  EXPECT_EQ(contentOf(path("b/data_2.bin")), source.bin);
  EXPECT_EQ(contentOf(path("b/sub dir/t.png")), "picture");
  const std::string first = contentOf(out);
  expectSame(*scene, *open(out));
  save(*scene, "b/out.gltf");
  EXPECT_EQ(contentOf(out), first) << "the same files serve again";
  EXPECT_EQ(std::distance(fs::directory_iterator(path("b")), {}), 4);

  EXPECT_NE(GltfReader::ReadMemory(source.text("data.bin"), "m.gltf").error.find("buffers[0].uri"),
            std::string::npos);
}

TEST_F(Gltf, SoundAndBackdropsAreKeptByPathsFromTheScene) {
  Scene made;
  made.AddNode("Camera").SetLens({});
  made.SetSound(SceneSound{path("media/song.ogg"), 1.0 / 3.0});
  made.Find("Camera")->SetBackdrop(
      std::make_shared<Backdrop>(Backdrop{path("plate.0007.png"), -5, 0.5}));
  Json json = Json::parse(contentOf(save(made, "a.gltf")));
  EXPECT_EQ(json["scenes"][0]["extras"]["rigwright"]["sound"]["file"], "media/song.ogg");
  json["scenes"][0]["extras"]["rigwright"]["sound"]["future"] = 1;
  json["nodes"][0]["extras"]["RWT_backdrop"]["future"] = 2;
  folder.Write("a.gltf", json.dump());
  folder.Write("sub/none", "");
  const auto scene = open(path("a.gltf"));
  const auto elsewhere = open(save(*scene, "sub/b.gltf"));
  const Json moved = Json::parse(contentOf(path("sub/b.gltf")));
  EXPECT_EQ(moved["nodes"][0]["extras"]["RWT_backdrop"],
            Json({{"file", "../plate.0007.png"}, {"frame", -5}, {"opacity", 0.5}, {"future", 2}}));
  EXPECT_EQ(moved["scenes"][0]["extras"]["rigwright"]["sound"]["future"], 1);
  for (const Scene* read : {scene.get(), elsewhere.get()}) {
    EXPECT_EQ(*read->GetSound(), *made.GetSound());
    EXPECT_EQ(*read->Find("Camera")->GetBackdrop(), *made.Find("Camera")->GetBackdrop());
  }
  HeadlessAdaptor host(*elsewhere);
  host.BeginUndoBlock("None");
  host.SetSound(std::nullopt);
  host.SetBackdrop(*elsewhere->Find("Camera"), nullptr);
  host.EndUndoBlock();
  EXPECT_EQ(contentOf(save(*elsewhere, "none.gltf")).find("song"), std::string::npos);
  EXPECT_FALSE(open(path("none.gltf"))->Find("Camera")->GetBackdrop());
  EXPECT_TRUE(host.HostUndo());
  EXPECT_EQ(*elsewhere->GetSound(), *made.GetSound());
  EXPECT_TRUE(elsewhere->Find("Camera")->GetBackdrop());
}

TEST_F(Gltf, DamagedRigRecordsAreToldAndKept) {
  Scene made;
  perform(made);
  std::string text = contentOf(save(made, "a.gltf"));
  Json json = Json::parse(text);
  Json& rigs = json["scenes"][0]["extras"]["rigwright"]["rigs"];
  rigs.push_back({{"kind", 5}, {"name", "Broken"}, {"record", "x"}});
  rigs.push_back("nonsense");
  rigs.push_back({{"kind", "k"}, {"name", "n"}, {"record", "r"}, {"future", {1, 2}}});
  const Json expected = rigs;
  const ReadResult result = GltfReader::ReadMemory(json.dump(), "a.gltf");
  ASSERT_TRUE(result) << result.error;
  ASSERT_EQ(result.warnings.size(), 2u);
  EXPECT_EQ(
      result.warnings[0].rfind("a.gltf: scenes[0].extras.rigwright.rigs[1].kind: is no text", 0),
      0u);
  ASSERT_EQ(result.scene->GetRigs().size(), 4u);
  EXPECT_TRUE(result.scene->GetRigs()[1].Damaged());
  EXPECT_EQ(result.scene->GetRigs()[1].name, "Broken");
  std::string bytes;
  ASSERT_TRUE(GltfWriter::WriteMemory(*result.scene, GltfForm::kText, bytes));
  EXPECT_EQ(Json::parse(bytes)["scenes"][0]["extras"]["rigwright"]["rigs"], expected);
}

TEST_F(Gltf, EachWayOfBeingDamagedIsNamedWithItsPlace) {
  struct Damage {
    const char* pointer;
    const char* value;
    const char* message;
  };
  const Damage table[] = {
      {"/asset/version", "\"1.0\"", "asset.version: \"1.0\" is not glTF 2"},
      {"/nodes/4/children", "[5]", "nodes[4]: is in a circle"},
      {"/nodes/4/children", "[1]", "nodes[4].children[0]: node 1 already has node 0"},
      {"/nodes/4/children", "[77]", "nodes[4].children[0]: refers to node 77"},
      {"/nodes/0/translation", "[1, null, 3]", "nodes[0].translation[1]: is no number"},
      {"/nodes/0/rotation", "[0, 0, 0, 0]", "nodes[0].rotation: is no unit quaternion"},
      {"/nodes/6/matrix/3", "2", "nodes[6].matrix: is not affine"},
      {"/nodes/1/mesh", "9", "nodes[1].mesh: refers to 9, but there are only 5"},
      {"/nodes/2/camera", "-1", "nodes[2].camera: -1 is no whole number"},
      {"/scenes/0/nodes", "[0, 1]", "scenes[0].nodes[1]: node 1 is a child of node 0"},
      {"/scenes/0/nodes", "{}", "scenes[0].nodes: is no list"},
      {"/accessors/0/count", "1000000", "accessors[0]: 1000000 elements reach behind"},
      {"/accessors/0/count", "1e300", "accessors[0].count: 1e+300 is no whole number"},
      {"/accessors/0/byteOffset", "18446744073709551615", "accessors[0].byteOffset: "},
      {"/accessors/0/type", "\"VEC7\"", "accessors[0].type: \"VEC7\""},
      {"/accessors/1/componentType", "5124", "accessors[1].componentType: 5124"},
      {"/accessors/1/type", "\"VEC2\"", "accessors[1]: 6 elements reach behind"},
      {"/accessors/8/sparse/count", "9", "accessors[8].sparse.count: 9 of 5"},
      {"/bufferViews/0/byteLength", "9999999", "bufferViews[0]: reaches behind the end"},
      {"/bufferViews/0/buffer", "3", "bufferViews[0].buffer: refers to 3"},
      {"/buffers/0/byteLength", "9999999", "buffers[0]: has "},
      {"/meshes/0/primitives/0/indices", "0", "meshes[0].primitives[0].indices: is not of type"},
      {"/meshes/0/primitives/0/mode", "12", "meshes[0].primitives[0].mode: 12"},
      {"/meshes/0/primitives/0/attributes/POSITION", "4", "POSITION: is not of type VEC3"},
      {"/animations/0/channels/0/sampler", "40", "animations[0].channels[0].sampler: refers to 40"},
      {"/animations/0/samplers/0/output", "0", "accessors[0]: has 4 elements for 3 keys"},
      {"/animations/0/samplers/0/input", "0", "accessors[0]: is used as key times"},
      {"/animations/0/samplers/0/interpolation", "\"FLY\"", "samplers[0].interpolation: \"FLY\""}};
  const Json good = Json::parse(foreignScene().text());
  for (const Damage& damage : table) {
    Json bad = good;
    bad[Json::json_pointer(damage.pointer)] = Json::parse(damage.value);
    const ReadResult result = GltfReader::ReadMemory(bad.dump(), "bad.gltf");
    EXPECT_FALSE(result) << damage.pointer;
    EXPECT_EQ(result.error.rfind("bad.gltf: ", 0), 0u) << result.error;
    EXPECT_NE(result.error.find(damage.message), std::string::npos)
        << damage.pointer << " gave " << result.error;
  }
  EXPECT_EQ(
      GltfReader::ReadMemory(foreignScene().glb(), "f.glb", {"Fly"}).error,
      "f.glb: animations: there is no clip \"Fly\" (clips are chosen by name or by number from 0)");
  folder.Write("lost.gltf", foreignScene().text("gone.bin"));
  EXPECT_EQ(
      GltfReader::Read(path("lost.gltf")).error,
      path("lost.gltf") + ": buffers[0].uri: " + path("gone.bin") + ": there is no such file");
}

TEST_F(Gltf, ACutOffOrOverlappingFileIsRefusedWhereverItEnds) {
  const std::string glb = foreignScene().glb();
  for (const std::size_t size : {std::size_t{0}, std::size_t{3}, std::size_t{11}, std::size_t{15},
                                 std::size_t{500}, glb.size() / 2, glb.size() - 1}) {
    const ReadResult result = GltfReader::ReadMemory(glb.substr(0, size), "cut.glb");
    EXPECT_FALSE(result) << size;
    EXPECT_EQ(result.error.rfind("cut.glb: ", 0), 0u) << result.error;
  }
  EXPECT_NE(
      GltfReader::ReadMemory(std::string(100000, '['), "deep.gltf").error.find("nested deeper"),
      std::string::npos);
  // A small file that shows its few bytes as one huge mesh again and again.
  GltfBuilder bomb = foreignScene();
  const int zeros = static_cast<int>(bomb.json["accessors"].size());
  bomb.json["accessors"].push_back({{"componentType", 5126}, {"count", 1 << 24}, {"type", "VEC3"}});
  bomb.json["meshes"][0]["primitives"][0]["attributes"]["POSITION"] = zeros;
  EXPECT_NE(GltfReader::ReadMemory(bomb.glb(), "bomb.glb").error.find("far more data"),
            std::string::npos);
}

TEST_F(Gltf, AFailedSaveNamesTheReasonAndLeavesNothing) {
  Scene scene;
  perform(scene);
  EXPECT_NE(GltfWriter::Write(scene, path("out.obj")).error.find(".glb or .gltf"),
            std::string::npos);
  EXPECT_NE(GltfWriter::Write(scene, path("no/such/out.glb")).error.find("out.glb"),
            std::string::npos);
  folder.Write("old.glb", "old");
  scene.Find("Rig_01_Rail")->SetPose({{NAN, 0, 0}, {}, {1, 1, 1}});
  EXPECT_NE(GltfWriter::Write(scene, path("old.glb")).error.find("Rig_01_Rail"), std::string::npos);
  scene.Find("Rig_01_Rail")->SetPose({});
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{1024, before.rlim_max};  // as a full disk would
  signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &small);
  const WriteResult full = GltfWriter::Write(scene, path("old.glb"));
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_NE(full.error.find("old.glb"), std::string::npos);
  EXPECT_EQ(contentOf(path("old.glb")), "old");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.path), {}), 1);
  scene.Rename(*scene.Find("Rig_01_Rail"), "\xFF");
  EXPECT_NE(GltfWriter::Write(scene, path("old.glb")).error.find("UTF-8"), std::string::npos);
}

}  // namespace
