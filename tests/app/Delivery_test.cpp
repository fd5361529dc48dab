// Animation for other hosts, read by readers of our own and held against the table of poses.
#include <functional>

#include "ProgramTest.h"
#include "support/DeliveredFiles.h"

namespace orv::tests {
namespace {

namespace headless = rws::adaptor::headless;
using headless::ChannelPath;
using util::Vector3;

constexpr double kPi = 3.14159265358979323846;

struct Kind {
  const char* ending;
  DeliveredFile (*read)(const std::string&);
  double slack, slackOfDistance;  ///< m, and of the distance
};
const Kind kKinds[] = {{".anim", readAnim, 1e-9, 0.0},
                       {".ma", [](const std::string& t) { return readMayaAscii(t); }, 1e-9, 0.0},
                       {".usda", readUsda, 1e-5, 1e-7}};

class Delivery : public ProgramTest {
 protected:
  /// A driven take with all that is hard to tell: `rich.glb`, 25 nodes and more.
  Delivery() {
    headless::Scene scene;
    const auto key = [](headless::SceneNode& node, ChannelPath path,
                        const std::function<std::vector<double>(double)>& at) {
      headless::Channel channel(path);
      std::vector<double> times, values;
      for (int i = 0; i <= 40; ++i) {
        times.push_back(i * 0.05);
        for (const double v : at(times.back())) values.push_back(static_cast<float>(v));
      }
      EXPECT_TRUE(channel.SetKeys(times, values));
      node.SetChannel(channel);
    };
    const auto turn = [](int axis, double angle) {
      std::vector<double> q{0.0, 0.0, 0.0, std::cos(angle / 2.0)};
      q[static_cast<std::size_t>(axis)] = std::sin(angle / 2.0);
      return q;
    };
    headless::SceneNode* above = &scene.AddNode("Mover");
    key(*above, ChannelPath::kTranslation, [](double t) {
      return std::vector<double>{40.0 * t, 1.0 + std::sin(9.0 * t), -t * t};
    });
    key(*above, ChannelPath::kRotation, [&](double t) { return turn(1, 7.0 * t); });
    for (int i = 0; i < 12; ++i) {  // deep, uneven, and in the end mirrored
      above = &scene.AddNode("4 Link " + std::to_string(i), above);
      above->SetPose({{0.3, 0.2, -0.1 * i}, {}, {1.0, 1.1, i == 11 ? -0.9 : 0.9}});
      key(*above, ChannelPath::kRotation, [&](double t) { return turn(i % 3, (0.5 + i) * t); });
    }
    above->SetVisible(false);
    scene.AddNode("Below", above).SetPose({{0.0, 1.0, 0.0}, {}, {1.0, 1.0, 1.0}});
    for (const char* name : {"4A B", "_4A_B", "4A_B", "persp", "K\u00e4fer"})
      scene.AddNode(name, above).SetPose({{0.5, 0.0, 0.25}, {}, {1.0, 1.0, 1.0}});
    key(scene.AddNode("Lock"), ChannelPath::kRotation, [&](double t) {
      return turn(1, std::min(t, 1.0) * kPi);  // up to, and through, the middle axis' quarter turn
    });
    headless::SceneNode& eye = scene.AddNode("Eye", scene.Find("Mover"));
    headless::Lens lens;
    lens.fieldOfView = 40.0;
    lens.focusDistance = 7.5;
    eye.SetLens(lens);
    key(eye, ChannelPath::kTranslation, [](double t) { return std::vector<double>{0.0, t, 5.0}; });
    util::CMesh box;
    for (int i = 0; i < 5; ++i) box.vertices.emplace_back(i % 2, i / 2 % 2, i / 4);
    box.faces = {0, 1, 2, 2, 1, 3, 0, 4, 1, 1, 4, 3, 2, 2, 3};  // the last has no area
    scene.AddNode("Box").SetMesh(box);
    scene.AddNode("Path").SetCurve({{{0, 0, 0}, {3, 0, 0}, {3, 0, 4}}, true});
    EXPECT_TRUE(scene.SetRange(0.0, 2.0));
    EXPECT_TRUE(headless::GltfWriter::Write(scene, path("rich.glb")));
    ok("add rich.glb MotionFilterCam --name 4Cam -o rich.glb");
    ok("parent rich.glb 4Cam_AttachedCam Mover -o rich.glb");
    ok("resim rich.glb -o rich.glb");
  }

  DeliveredFile deliver(const Kind& kind, const std::string& scene, const std::string& more = {}) {
    const std::string file = "x" + std::string(kind.ending);
    ok(("export " + scene + " -o " + file + " " + more).c_str());
    return kind.read(folder.Read(file));
  }

  /// Every node of the table stands where the file says, in every frame.
  void expectPoses(DeliveredFile& file, const Kind& kind, bool isZUp,
                   const std::map<std::string, std::string>& names, double rate) {
    for (const auto& [name, rows] : parsePoses(folder.Read("poses.csv"))) {
      const std::string& legal = names.at(name);
      for (const std::vector<double>& row : rows) {
        const bool isInSeconds = file.head["timeUnit"] == "sec";
        const double time = isInSeconds ? row[0] : std::round(row[0] * rate);
        const Vector3<double> p = file.world(legal, time).translation() / file.metre;
        const Vector3<double> want(row[1], isZUp ? -row[3] : row[2], isZUp ? row[2] : row[3]);
        ASSERT_LE((p - want).length(), kind.slack + kind.slackOfDistance * want.length())
            << kind.ending << " " << name << " at " << row[0];
      }
    }
  }

  /// Names of the scene's nodes, with what the file calls them: both are in the tree's order.
  std::map<std::string, std::string> namesIn(const DeliveredFile& file, const std::string& scene) {
    std::map<std::string, std::string> names;
    const auto nodes = json({"info", scene})["nodes"];
    EXPECT_EQ(nodes.size(), file.nodes.size());
    for (std::size_t i = 0; i < file.nodes.size(); ++i)
      names[nodes.at(i)["name"]] = file.nodes[i].name;
    return names;
  }
};

TEST_F(Delivery, EachFileTellsThePosesOfTheTable) {
  ok("range rich.glb --fps 24000/1001 -o tv.glb");
  ok("range rich.glb --fps 27.5 -o odd.glb");
  const struct {
    const char* scene;
    const char* more;
    double rate;
    const char* unit;
  } cases[] = {{"rich.glb", "", 25.0, "pal"},
               {"rich.glb", "--up z", 25.0, "pal"},
               {"tv.glb", "", 24000.0 / 1001.0, "23.976fps"},
               {"odd.glb", "--range 0.1:0.9", 27.5, "sec"}};
  for (const auto& c : cases) {
    const bool isZUp = c.more == std::string("--up z");
    ok((std::string("export ") + c.scene + " -o poses.csv " + (isZUp ? "" : c.more)).c_str());
    for (const Kind& kind : kKinds) {
      DeliveredFile file = deliver(kind, c.scene, c.more);
      const auto names = namesIn(file, c.scene);
      expectPoses(file, kind, isZUp, names, c.rate);
      const bool isUsd = kind.ending == std::string(".usda");
      EXPECT_EQ(file.head[isUsd ? "upAxis" : "timeUnit"], !isUsd ? c.unit : isZUp ? "\"Z" : "\"Y");
      EXPECT_TRUE(!isUsd || std::stod(file.head["timeCodesPerSecond"]) == c.rate);
      const auto rows = parsePoses(folder.Read("poses.csv")).at("Mover");
      const double perFrame = !isUsd && c.unit == std::string("sec") ? 1.0 : c.rate;
      EXPECT_NEAR(file.first, rows.front()[0] * perFrame, 1e-9);
      EXPECT_NEAR(file.last, rows.back()[0] * perFrame, 1e-9);
    }
  }
}

TEST_F(Delivery, NamesLensesMeshesAndVisibilityArrive) {
  for (const Kind& kind : kKinds) {
    DeliveredFile file = deliver(kind, "rich.glb");
    auto names = namesIn(file, "rich.glb");
    EXPECT_EQ(names["4 Link 3"], "_4_Link_3");
    EXPECT_EQ(names["_4A_B"], "_4A_B") << "it needed no change";
    EXPECT_EQ(names["4A B"] + names["4A_B"], "_4A_B_2_4A_B_3");
    EXPECT_EQ(names["K\u00e4fer"], "K_fer");
    const bool isUsd = kind.ending == std::string(".usda");
    EXPECT_EQ(names["persp"], isUsd ? "persp" : "persp_2") << "every Maya scene has one";
    EXPECT_EQ(file.node("_4_Link_11").channels.at("v").at(0.0), 0.0);
    EXPECT_EQ(file.node("Below").channels.at("v").at(0.0), 1.0) << "it inherits";
    // More than a turn is no jump back, and no step is larger than the node's own.
    const auto& spin = file.node("_4_Link_0").channels.at("rx").values;
    EXPECT_NEAR(spin.back() - spin.front(), 1.0 / kPi * 180.0, 1e-4);
    const auto& fast = file.node("Mover").channels.at("ry").values;
    double span = 0.0;
    for (std::size_t i = 1; i < fast.size(); ++i) span += std::abs(fast[i] - fast[i - 1]);
    EXPECT_NEAR(span, 14.0 / kPi * 180.0, 1e-3);

    auto& eye = file.node("Eye");
    double focal = 0.0, height = 0.0, focus = 0.0;
    if (isUsd) {
      focal = std::stod(eye.shape.at("focalLength"));
      height = std::stod(eye.shape.at("verticalAperture"));
      focus = std::stod(eye.shape.at("focusDistance"));
      EXPECT_NEAR(std::stod(eye.shape.at("horizontalAperture")), 0.36, 1e-6) << "36 mm";
    } else if (eye.shape.empty()) {
      focal = eye.channels.at("fl").at(0.0);
      height = 36.0 / 16.0 * 9.0;
      focus = eye.channels.at("fd").at(0.0) / 100.0;
    } else {
      focal = std::stod(eye.shape.at(".fl"));
      height = std::stod(eye.shape.at(".cap").substr(eye.shape.at(".cap").find(' '))) * 25.4;
      focus = std::stod(eye.shape.at(".fd")) / 100.0;
    }
    EXPECT_NEAR(2.0 * std::atan(height / 2.0 / focal) / kPi * 180.0, 40.0, 1e-5);
    EXPECT_NEAR(focus, 7.5, 1e-6);
    auto& box = file.node("Box").shape;
    if (isUsd) {
      EXPECT_EQ(box["faceVertexCounts"], "3 3 3 3 3 ");
      EXPECT_EQ(box["faceVertexIndices"].substr(0, 12), "0 1 2 2 1 3 ");
      EXPECT_EQ(box["points"].substr(0, 12), "0 0 0 1 0 0 ");
      EXPECT_EQ(file.node("Path").shape["wrap"], "\"periodic ");
    } else if (!box.empty()) {
      EXPECT_EQ(box[".vt"].substr(0, 14), "0 0 0 100 0 0 ");
      EXPECT_EQ(file.node("Path").shape["type"], "nurbsCurve");
      EXPECT_EQ(file.node("Below").shape["type"], "locator");
      // Each face's edges lead from corner to corner.
      std::vector<int> edges;
      std::istringstream ends(box[".ed"]);
      for (int end; ends >> end;) edges.push_back(end);
      const std::vector<std::string> faces = wordsOf(box[".fc"], "");
      ASSERT_EQ(faces.size(), 4u * 5u);
      const std::vector<int> corners{0, 1, 2, 2, 1, 3, 0, 4, 1, 1, 4, 3};
      for (std::size_t f = 0; f < 4; ++f)
        for (std::size_t side = 0; side < 3; ++side) {
          const int edge = std::stoi(faces[5 * f + 2 + side]);
          const auto at = static_cast<std::size_t>(3 * (edge < 0 ? -1 - edge : edge));
          EXPECT_EQ(edges.at(at + (edge < 0 ? 1 : 0)), corners[3 * f + side]);
          EXPECT_EQ(edges.at(at + (edge < 0 ? 0 : 1)), corners[3 * f + (side + 1) % 3]);
        }
    }
  }
}

TEST_F(Delivery, ANodeWithoutItsParentStandsInTheWorld) {
  const std::string nodes = "--node 'Below' --node '4 Link 8' --node '4 Link 9'";
  ok(("export rich.glb -o poses.csv " + nodes).c_str());
  for (const Kind& kind : kKinds) {
    DeliveredFile file = deliver(kind, "rich.glb", nodes);
    ASSERT_EQ(file.nodes.size(), 3u);
    EXPECT_EQ(file.nodes[1].parent, "_4_Link_8");
    EXPECT_EQ(file.nodes[2].parent, "");
    EXPECT_EQ(file.nodes[2].channels.at("v").at(0.0), 0.0) << "what is above it is hidden";
    expectPoses(file, kind, false,
                {{"4 Link 8", "_4_Link_8"}, {"4 Link 9", "_4_Link_9"}, {"Below", "Below"}}, 25.0);
    tells(("export rich.glb -o x.ma " + nodes).c_str(), 0, {"4 Link 8", "sheared"});
  }
}

TEST_F(Delivery, AGermanLocaleChangesNothingAndNothingHalfIsLeft) {
  headless::Scene scene;
  headless::SceneNode& large = scene.AddNode("Large");
  large.SetPose({{0, 0, 0}, {}, {1e200, 1e200, 1e200}});
  scene.AddNode("Far", &large).SetPose({{1e200, 0, 0}, {}, {1, 1, 1}});
  ASSERT_TRUE(scene.SetRange(1.0, 2.0));
  ASSERT_TRUE(headless::GltfWriter::Write(scene, path("far.glb")));
  for (const Kind& kind : kKinds) {
    const std::string file = "x" + std::string(kind.ending);
    deliver(kind, "rich.glb");
    const std::string whole = folder.Read(file);
    EXPECT_EQ(run(("export rich.glb -o " + file).c_str(), 0.0, {"LC_ALL=de_DE.UTF-8"}).status, 0);
    EXPECT_TRUE(folder.Read(file) == whole);
    const auto before = files();
    tells(("export far.glb --node Far -o " + file).c_str(), 1,
          {"Far: its pose at frame 25 (1 s) is no number"});
    tells(("export rich.glb --node Nobody -o " + file).c_str(), 1, {"Nobody"});
    tells(("export rich.glb -o none/" + file).c_str(), 1, {"none/" + file});
    EXPECT_TRUE(files() == before);
    std::filesystem::create_symlink("/dev/full", path("full" + file));
    tells(("export rich.glb -o full" + file).c_str(), 1, {"full" + file, "space"});
  }
  tells("export rich.glb -o x.fbx", 2, {"x.fbx", ".usda"});
  tells("export rich.glb --up z -o x.csv", 2, {"--up"});
  tells("export rich.glb --up x -o x.ma", 2, {"--up"});
  tells("export rich.glb --range 0.01:0.02 -o x.ma", 1, {"no frame"});
}

}  // namespace
}  // namespace orv::tests
