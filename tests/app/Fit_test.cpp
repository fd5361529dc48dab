// A user's car fitted with a four-wheeler, from file to file.
#include <functional>

#include "adaptor/headless/GltfReader.h"
#include "app/ProgramTest.h"
#include "support/Grounds.h"
#include "util/CMesh_Box.h"
#include "util/CMesh_Cylinder.h"

namespace orv::tests {
namespace {

using rws::adaptor::Trs;
using rws::adaptor::headless::ChannelPath;
using rws::adaptor::headless::GltfReader;
using rws::adaptor::headless::Scene;
using rws::adaptor::headless::SceneNode;
using Matrix = util::Matrix<double>;
using Vector = util::Vector3<double>;
using Quat = util::Quat<double>;

double difference(const Matrix& a, const Matrix& b) {
  double most = 0.0;
  for (int i = 0; i < 16; ++i) most = std::max(most, std::abs(a[i] - b[i]));
  return most;
}

const char* const kNames[] = {"FL", "FR", "BL", "BR"};
const Words kFit = "--body Shell --wheels FL,FR,BL,BR -o fit.glb";

/// A car of 1.3 times these sizes (m) at an odd place and heading, on slightly uneven ground. The
/// wheels' nodes are turned and stretched in odd ways, and their meshes make up for it.
class Fit : public ProgramTest {
 protected:
  static constexpr double kScale = 1.3, kBase = 2.4, kTrack = 1.5;
  static double Radius(int i) { return i < 2 ? 0.30 : 0.34; }
  static double Width(int i) { return i < 2 ? 0.20 : 0.27; }

  Fit() {
    m_root = Quat::fromRotationVector({0.0, 2.1, 0.0}) * Quat::fromRotationVector({0.03, 0, 0.05});
    make("car.glb", [](Scene&) {});
  }

  Matrix root() const {
    Matrix pose = m_root.toMatrix();
    for (int i = 0; i < 3; ++i) pose.setAxisRow(i, pose.axisRow(i) * kScale);
    pose.setTranslation({31.0, -4.0, 17.0});
    return pose;
  }
  /// Wheels stand on one plane: the bigger ones have the higher centres.
  Vector centre(int i) const {
    return root().transformPoint(
        {(i % 2 ? 0.5 : -0.5) * kTrack, Radius(i), (i < 2 ? -0.5 : 0.5) * kBase});
  }

  static void setMeshAt(SceneNode& node, util::CMesh mesh, const Matrix& meshToParent) {
    const Matrix inverse = Compose(node.GetPose()).affineInverse() * meshToParent;
    for (Vector& vertex : mesh.vertices) vertex = inverse.transformPoint(vertex);
    node.SetMesh(mesh);
  }

  /// The model with a rig "Car" that has not been fitted, after `change`.
  void make(const std::string& file, const std::function<void(Scene&)>& change) const {
    Scene scene;
    scene.SetRange(0.0, 2.0);
    SceneNode& model = scene.AddNode("Model");
    model.SetPose(rws::adaptor::Decompose(root()));
    SceneNode& shell = scene.AddNode("Shell", &model);
    shell.SetPose({{0.1, 0.7, 0.0}, {}, {1.0, 0.5, 2.0}});
    shell.SetMesh(util::CMesh_Box(1.6, 1.0, 1.8));
    const Quat turns[] = {Quat::fromRotationVector({0.4, 1.2, -0.7}), Quat(),
                          Quat::fromRotationVector({-2.0, 0.3, 0.9}),
                          Quat::fromRotationVector({0.8, 0.0, 0.0})};
    const Vector scales[] = {{1.0, 3.0, 0.4}, {1.0, 1.0, 1.0}, {0.2, 0.2, 0.9}, {2.0, 0.7, 0.7}};
    for (int i = 0; i < 4; ++i) {
      SceneNode& wheel = scene.AddNode(kNames[i], &model);
      wheel.SetPose({{0.3 * i, 0.2, -0.5 * i}, turns[i].normalized(), scales[i]});
      // One wheel is a group: rim and tyre hang below it.
      SceneNode& tyre = i == 1 ? scene.AddNode("Tyre", &wheel) : wheel;
      Matrix place;
      place.setTranslation(root().affineInverse().transformPoint(centre(i)));
      if (i == 1) place = Compose(wheel.GetPose()).affineInverse() * place;
      setMeshAt(tyre, util::CMesh_Cylinder(Radius(i), Width(i), 9 + 2 * i, 0), place);
      if (i != 1) continue;
      setMeshAt(scene.AddNode("Rim", &wheel), util::CMesh_Cylinder(0.1, 0.15, 6, 0), place);
    }
    scene.AddNode("Empty");
    change(scene);
    EXPECT_TRUE(rws::adaptor::headless::GltfWriter::Write(scene, path(file)));
    ok({"add", file, "4WheelerExt", "--name", "Car", "-o", file});
  }

  std::unique_ptr<Scene> open(const std::string& file) const {
    auto read = GltfReader::Read(path(file));
    EXPECT_TRUE(read) << read.error;
    return std::move(read.scene);
  }

  static Words fitting(const std::string& file, const Words& rest = kFit,
                       const std::string& rig = "Car") {
    Words words = {"fit", file, rig};
    words.insert(words.end(), rest.begin(), rest.end());
    return words;
  }

  /// A delivery of `file`, which is open as `driven`, has the model's own tree back, and its poses.
  void expectDelivered(const Scene& driven, const std::string& file) const {
    ok({"export", file, "--clean", "-o", "delivery.glb"});
    EXPECT_EQ(folder.Read("delivery.glb").find("RWT_"), std::string::npos);
    const auto delivered = open("delivery.glb"), before = open("car.glb");
    EXPECT_EQ(delivered->GetNodeCount(), 9u) << "the model, and neither rig nor hub";
    EXPECT_GT(delivered->Find("FL")->GetChannel(ChannelPath::kRotation)->GetKeyCount(), 51u)
        << "a fast wheel has keys between the frames too";
    for (const SceneNode* node : delivered->GetNodes()) {
      const SceneNode* parent = before->Find(node->GetName())->GetParent();
      EXPECT_EQ(node->GetParent() ? node->GetParent()->GetName() : "",
                parent ? parent->GetName() : "")
          << node->GetName();
      const SceneNode& own = *driven.Find(node->GetName());
      const auto* turns = node->GetChannel(ChannelPath::kRotation);
      for (const double t : turns ? turns->GetTimes() : std::vector<double>{0.0, 0.4, 2.0})
        ASSERT_LT(difference(node->WorldMatrix(t), own.WorldMatrix(t)), 2e-5)
            << node->GetName() << t;
    }
  }

  Quat m_root;
};

double gap(const nlohmann::json& told, const Vector& wanted) {
  return (Vector(told[0], told[1], told[2]) - wanted).length();
}

TEST_F(Fit, OddNodesGiveTheirWheelsExactlyAndKeepTheirPoses) {
  const auto told = json(fitting("car.glb"));
  const auto before = open("car.glb"), after = open("fit.glb");
  EXPECT_NEAR(told["wheelbase"], kScale * kBase, 1e-6);
  EXPECT_NEAR(told["track"]["front"], kScale * kTrack, 1e-6);
  EXPECT_LT(gap(told["axes"]["up"], m_root.rotate({0, 1, 0})), 1e-6);
  EXPECT_LT(gap(told["axes"]["right"], m_root.rotate({1, 0, 0})), 1e-6);
  // The body's origin: 0.2 wheelbases over the middle of the wheels' bottoms.
  EXPECT_LT(gap(told["origin"], root().transformPoint({0.0, 0.2 * kBase, 0.0})), 1e-6);
  const Matrix body = after->Find("Car_CarBodyMesh")->WorldMatrix(0.0);
  EXPECT_NEAR(body.rowLengths().x, kScale * kBase, 1e-6);
  EXPECT_LT(gap(told["origin"], body.translation()), 1e-9);

  for (int i = 0; i < 4; ++i) {
    const auto& wheel = told["wheels"][i];
    EXPECT_NEAR(wheel["radius"], kScale * Radius(i), 1e-6) << i;
    EXPECT_NEAR(wheel["width"], kScale * Width(i), 1e-6) << i;
    EXPECT_LT(gap(wheel["centre"], centre(i)), 1e-6) << i;
    const std::string suffix = std::string("_") + kNames[i];
    const SceneNode& own = *after->Find("Car_WheelMesh" + suffix);
    // The radius that the ground feels is 0.95 of the relocator's.
    const Vector size = after->Find("Car_WheelRelocatorMesh" + suffix)->WorldMatrix(0).rowLengths();
    EXPECT_NEAR(size.y * 0.95, wheel["radius"], 1e-9);
    EXPECT_NEAR(own.WorldMatrix(0).rowLengths().x, wheel["width"], 1e-9);
    EXPECT_NEAR(own.WorldMatrix(0).rowLengths().y, wheel["radius"], 1e-9);
    EXPECT_TRUE(after->Find(kNames[i])->IsUnder(own));
    EXPECT_FALSE(own.HasMesh()) << "the rig's wheel would be seen through the model";
    EXPECT_TRUE(own.IsVisible()) << "what hangs on it would be hidden too";
  }
  EXPECT_EQ(after->Find("Shell")->GetParent()->GetName(), "Car_CarBodyMesh");
  EXPECT_FALSE(after->Find("Car_CarBodyMesh")->HasMesh());
  for (const char* name : {"Shell", "FL", "FR", "BL", "BR", "Tyre", "Rim", "Model", "Empty"})
    EXPECT_LT(difference(before->Find(name)->WorldMatrix(0.0), after->Find(name)->WorldMatrix(0.0)),
              1e-5)
        << name;
}

TEST_F(Fit, ATakeCarriesTheModelAndSpinsItsWheels) {
  ok(fitting("car.glb"));
  folder.Write("drive.csv",
               "time,Car:Gas Pedal (Forw/Backw),Car:Steering Wheel (Right/Left)\n0,1,0.3\n");
  // So fast that a wheel makes more than half a turn in a frame.
  ok("resim fit.glb --inputs drive.csv --set 'Car:Acceleration (scale relative)=100' --set "
     "'Car:Gas Pedal (Forw/Backw) Maximum=15' --set 'Car:Gas Pedal (Forw/Backw) Response "
     "Factor=0.3' -o drive.glb");
  const auto scene = open("drive.glb");
  const SceneNode &car = *scene->Find("Car_CarBodyMesh"), &shell = *scene->Find("Shell");
  const auto inCar = [&](double t) {
    return car.WorldMatrix(t).affineInverse() * shell.WorldMatrix(t);
  };
  EXPECT_GT((car.WorldMatrix(2.0).translation() - car.WorldMatrix(0.0).translation()).length(),
            2.0 * kBase);
  for (double t = 0.0; t <= 2.0; t += 0.04) ASSERT_LT(difference(inCar(t), inCar(0.0)), 1e-9) << t;

  for (int i = 0; i < 4; ++i) {
    const SceneNode& node = *scene->Find(i == 1 ? "Tyre" : kNames[i]);
    const SceneNode& own = *scene->Find(std::string("Car_WheelMesh_") + kNames[i]);
    double turned = 0.0;
    Vector last;
    for (double t = 0.0; t <= 2.0; t += 0.04) {
      // As measured from the mesh alone: a disc of the same size, round the rig's wheel.
      const Matrix world = node.WorldMatrix(t), pose = own.WorldMatrix(t);
      const Vector axis = pose.axisRow(0).normalized(), middle = pose.translation();
      double radius = 0.0, width = 0.0;
      for (const Vector& vertex : node.GetMesh()->vertices) {
        const Vector arm = world.transformPoint(vertex) - middle;
        radius = std::max(radius, arm.cross(axis).length());
        width = std::max(width, 2.0 * std::abs(arm.dot(axis)));
      }
      ASSERT_NEAR(radius, kScale * Radius(i), 1e-5) << kNames[i] << " at " << t;
      ASSERT_NEAR(width, kScale * Width(i), 1e-5) << kNames[i] << " at " << t;
      const Vector arm =
          car.WorldMatrix(t)
              .affineInverse()
              .transformVector(world.transformPoint(node.GetMesh()->vertices.front()) - middle)
              .normalized();
      if (t > 0.0) turned += (arm - last).length();
      last = arm;
    }
    EXPECT_GT(turned, 3.0) << kNames[i] << " must spin with the rig's wheel";
  }
  expectDelivered(*scene, "drive.glb");
  // A second fit would not fit the keys; what is in place stays.
  tells(fitting("drive.glb"), 1, {"keys of a take"});
}

TEST_F(Fit, WhatIsNoCarIsRefusedWithItsReason) {
  const auto posed = [](const char* name, const std::function<void(Trs&)>& change) {
    return [name, change](Scene& scene) {
      Trs pose = scene.Find(name)->GetPose();
      change(pose);
      scene.Find(name)->SetPose(pose);
    };
  };
  const auto scaled = [&](const char* name, Vector scale) {
    return posed(name, [scale](Trs& pose) {
      for (int i = 0; i < 3; ++i) pose.scale[i] *= scale[i];
    });
  };
  const auto moved = [&](const char* name, Vector by) {
    return posed(name, [by](Trs& pose) { pose.translation += by; });
  };
  struct Case {
    std::string name;
    std::function<void(Scene&)> change;
    Texts told;
  };
  const std::vector<Case> cases = {
      {"oval", scaled("FR", {1.0, 1.0, 1.07}), {"FR", "no disc", "5 %"}},
      {"drum", scaled("BR", {4.0, 1.0, 1.0}), {"BR", "wider than its diameter"}},
      {"box",
       [](Scene& scene) { scene.Find("FR")->SetMesh(util::CMesh_Box(0.1, 0.6, 0.6)); },
       {"FR", "no disc"}},
      {"mirror", scaled("BL", {1.0, 1.0, -1.0}), {"BL", "mirrored"}},
      {"mirrorRoot", scaled("Model", {-1.0, 1.0, 1.0}), {"mirrored"}},
      {"shear", scaled("Model", {1.0, 1.0, 1.5}), {"FL", "sheared"}},
      {"skew", moved("FR", {0.0, 0.0, 0.2}), {"rectangle", "m, diagonals"}},
      {"keys",
       [](Scene& scene) {
         scene.Find("FL")->ReplaceKeys(ChannelPath::kTranslation, 0, 1, {0.0}, {0, 0, 0}, 0.04);
       },
       {"FL", "keys of its own"}},
      {"steered",
       posed("FR",
             [](Trs& pose) {
               pose.rotation = pose.rotation * Quat::fromRotationVector({0.0, 0.2, 0.0});
               const Vector hub(0.75, 0.30, -1.2);
               pose.translation = hub + pose.rotation.rotate(pose.translation - hub);
             }),
       {"FR", "leans 11.46 degrees", "straight"}},
  };
  for (const Case& c : cases) {
    make("bad.glb", c.change);
    SCOPED_TRACE(c.name);
    tells(fitting("bad.glb"), 1, c.told);
  }
  // A wheel that is off by less is taken.
  make("good.glb", moved("FR", {0.03, 0.0, 0.05}));
  ok(fitting("good.glb"));
  // A body may be the group that the wheels hang on.
  make("good.glb", [](Scene&) {});
  ok("fit good.glb Car --body Model --wheels FL,FR,BL,BR -o fit.glb");
  EXPECT_EQ(open("fit.glb")->Find("Model")->GetParent()->GetName(), "Car_CarBodyMesh");
  std::filesystem::remove(path("fit.glb"));

  ok("add car.glb SteadyCam --name Cam -o car.glb");
  ok("parent car.glb BR Car_CarBodyMesh -o hung.glb");
  const std::tuple<std::string, int, Texts> lines[] = {
      {"Shell --wheels FL,FR,BL", 2, {"FL,FR,BL", "four names"}},
      {"Shell --wheels FL,FR,BL,FL", 2, {"FL", "named twice"}},
      {"Shell --wheels FL,FR,BL,BQ", 1, {"no node \"BQ\""}},
      {"Empty --wheels FL,FR,BL,BR", 1, {"Empty", "has a mesh"}},
      {"Shell --wheels FR,FL,BR,BL", 1, {"roof", "driver"}},
      {"Shell --wheels FL,FR,BR,BL", 1, {"rectangle"}},
      {"Shell --wheels FL,FR,BL,Car_WheelMesh_BR", 1, {"Car_WheelMesh_BR", "node of a rig"}},
  };
  for (const auto& [given, status, told] : lines)
    tells(("fit car.glb Car -o fit.glb --body " + given).c_str(), status, told);
  tells(fitting("car.glb", kFit, "Cam"), 1, {"only a 4WheelerExt"});
  tells(fitting("hung.glb"), 1, {"Car_CarBodyMesh, a node of Car"});
  EXPECT_FALSE(std::filesystem::exists(path("fit.glb"))) << "nothing may be written";
}

TEST_F(Fit, SizesAndUpsOfOtherProgramsAreTold) {
  struct Case {
    double scale;
    Quat turn;
    std::string told;  ///< empty: nothing
  };
  const Quat zUp = Quat::fromRotationVector({M_PI / 2, 0, 0});
  const Case cases[] = {{100.0, {}, "240 m, as if its unit were no metre"},
                        {0.01, {}, "Model --scale 1,1,1"},
                        {1.0, zUp, "exported with Z up"},
                        {1.0, Quat::fromRotationVector({0, 0, 1.0}), ""},
                        {0.1, {}, ""},
                        {4.0, {}, ""}};
  for (const Case& c : cases) {
    make("odd.glb", [&](Scene& scene) {
      scene.Find("Model")->SetPose({{}, c.turn, Vector(1, 1, 1) * c.scale});
    });
    const Outcome result = run(fitting("odd.glb"));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err.find("warning") != std::string::npos, !c.told.empty()) << result.err;
    EXPECT_NE(result.err.find(c.told), std::string::npos) << result.err;
  }
}

TEST_F(Fit, WhatAnotherProgramTookFromTheSceneIsNamed) {
  ok("place car.glb Shell --scale 1,1,1 -o whole.gltf");
  const auto whole = nlohmann::json::parse(folder.Read("whole.gltf"));
  const auto told = [&](const std::function<void(nlohmann::json&)>& change) {
    nlohmann::json json = whole;
    change(json);
    folder.Write("changed.gltf", json.dump());
    return this->json("info changed.gltf")["warnings"].dump();
  };
  const auto untag = [&](const std::string& name) {
    return told([&](nlohmann::json& json) {
      for (auto& node : json["nodes"])
        if (node["name"] == name) node.erase("extras");
    });
  };
  EXPECT_EQ(told([](nlohmann::json&) {}), "[]");
  const std::string wheel = untag("Car_WheelMesh_BL"), target = untag("Car_TargetMesh");
  expectTold(wheel, {"Car can't be opened: its node Car_WheelMesh_BL"});
  expectTold(target, {"Car: its node Car_TargetMesh"});
  const std::string twin = told([](nlohmann::json& json) {
    json["nodes"].push_back({{"name", "Shell"}});
    json["scenes"][0]["nodes"].push_back(json["nodes"].size() - 1);
  });
  expectTold(twin, {"Shell_2"});
  const std::string bare = told([](nlohmann::json& json) {
    json["scenes"][0].erase("extras");
    for (auto& node : json["nodes"]) node.erase("extras");
  });
  expectTold(bare, {"Car_... are named like those of a 4WheelerExt"});
}

TEST_F(Fit, ADriveLeavesGaugesOutputsAndCurvesOnItsGround) {
  make("hills.glb", [](Scene& scene) {
    scene.AddNode("Hills").SetMesh(
        GridMesh([](double x, double z) { return std::sin(1.3 * x) * std::cos(1.1 * z) - 5.0; },
                 Rows(-60, 139, 199), Rows(-80, 119, 199)));
  });
  const auto rigOf = [this](const std::string& file) -> nlohmann::json {
    return json({"info", file, "--rig", "Car"})["rigs"][0];
  };
  const auto outputsOf = [](const nlohmann::json& rig) {
    std::map<std::string, double> outputs;
    for (const auto& output : rig["outputs"]) outputs[output["name"]] = output["value"];
    return outputs;
  };
  for (const auto& [name, value] : outputsOf(rigOf("hills.glb"))) EXPECT_EQ(value, 0.0) << name;
  ok("plot hills.glb -o bare.svg");
  ok("parent hills.glb Car_GravityDirectionMesh Hills -o hills.glb");
  folder.Write("drive.csv",
               "time,Gas Pedal (Forw/Backw),Steering Wheel (Right/Left)\n0,1,0\n2,1,0.6\n");
  ok("resim hills.glb --inputs drive.csv -o hills.glb");
  const auto rig = rigOf("hills.glb");
  const auto outputs = outputsOf(rig);
  ASSERT_EQ(outputs.size(), 7u);
  std::map<std::string, double> values;
  int gauges = 0;
  for (const auto& parameter : rig["parameters"]) {
    if (parameter["value"].is_number()) values[parameter["label"]] = parameter["value"];
    if (!parameter.value("readOnly", false)) continue;
    ++gauges;
    tells({"set", "hills.glb", "Car:#" + parameter["id"].dump() + "=1", "-o", "set.glb"}, 1,
          {"gauge"});
  }
  EXPECT_EQ(gauges, 5);
  EXPECT_GT(outputs.at("Velocity"), 0.0);
  EXPECT_EQ(outputs.at("Velocity"), values.at("Current Velocity"));
  EXPECT_EQ(outputs.at("Velocity (Percent of Max)"), values.at("Current Velocity (% of max)"));
  EXPECT_GT(outputs.at("Steering Angle"), 0.0) << "to the right";
  expectTold(ok("info hills.glb"), {"Outputs: name, value"});
  EXPECT_EQ(ok("set hills.glb Car:Multiplier=2.5 'Car:Front Damping=1e9' -o set.glb"),
            "Car:Multiplier = 2.5\nCar:Front Damping = 10000\n");

  ok("plot hills.glb -o hills.svg");
  const std::string svg = folder.Read("hills.svg"), bare = folder.Read("bare.svg");
  expectTold(svg, {"Suspension travel (m)", "Steering of the front wheels", "front left",
                   "front right", "back left", "back right", "Gas Pedal (Forw/Backw)",
                   "borders and edges of the ground", "its heights, every 0.2 m"});
  EXPECT_EQ(svg.find("ChassisRelocator"), std::string::npos) << "a car follows nothing";
  EXPECT_EQ(bare.find("of the ground"), std::string::npos);
  EXPECT_LT(svg.size(), bare.size() + 250000) << "of 79202 triangles";
}

}  // namespace
}  // namespace orv::tests
