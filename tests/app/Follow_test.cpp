// A drive over the demo's hills, followed from file to file.
#include "app/ProgramTest.h"

namespace orv::tests {
namespace {

using Row = std::vector<double>;
using Vector = util::Vector3<double>;

Vector placeIn(const Row& row) {
  return {row[1], row[2], row[3]};
}

class Follow : public ProgramTest {
 protected:
  void driveOverHills() const {
    const std::string shell = "cd '" + folder.path +
                              "' && python3 -B '" ORV_SOURCE_DIR
                              "/examples/make_terrain.py' hills.glb >/dev/null";
    ASSERT_EQ(std::system(shell.c_str()), 0);
    ok("add hills.glb 4WheelerExt --name Car --stand 0,0,0 -o drive.glb");
    ok("parent drive.glb Car_GravityDirectionMesh Terrain -o drive.glb");
    ok({"resim", "drive.glb", "--inputs", ORV_SOURCE_DIR "/examples/drive_hills.csv", "-o",
        "drive.glb"});
  }
};

/// The figures of the report again, from the poses: distances from the nearest of many points of
/// the line recorded within the window.
void expectFigures(const nlohmann::json& report, const std::vector<Row>& line,
                   const std::vector<Row>& driven) {
  constexpr int kParts = 400;
  const int count = static_cast<int>(line.size()), window = 250;
  std::vector<double> distances;
  double largestTime = 0.0, speed = 0.0;
  for (int i = 0; i < count; ++i) {
    const Vector place = placeIn(driven[i]);
    double nearest = 1e9;
    for (int k = std::max(0, i - window); k < std::min(count - 1, i + window); ++k) {
      const Vector from = placeIn(line[k]), way = placeIn(line[k + 1]) - from;
      if ((from - place).length() > nearest + way.length()) continue;
      for (int part = 0; part <= kParts; ++part)
        nearest = std::min(nearest, (from + way * (part / double(kParts)) - place).length());
    }
    if (distances.empty() || nearest > *std::max_element(distances.begin(), distances.end()))
      largestTime = line[i][0];
    distances.push_back(nearest);
    if (i > 0)
      speed = std::max(speed, 25.0 * std::abs((place - placeIn(driven[i - 1])).length() -
                                              (placeIn(line[i]) - placeIn(line[i - 1])).length()));
  }
  double sum = 0.0;
  for (const double distance : distances) sum += distance;
  std::sort(distances.begin(), distances.end());
  const nlohmann::json& told = report["distance"];
  EXPECT_NEAR(told["mean"], sum / count, 1e-3);
  EXPECT_NEAR(told["p95"], distances[static_cast<std::size_t>(std::ceil(0.95 * count)) - 1], 1e-3);
  EXPECT_NEAR(told["largest"], distances.back(), 1e-3);
  EXPECT_NEAR(told["largestTime"], largestTime, 0.041);
  EXPECT_NEAR(report["speedDifference"]["largest"], speed, 1e-6);
}

TEST_F(Follow, TheSameLineIsDrivenWithAnotherFeelAndTheFirstDriveStays) {
  if (std::system("command -v python3 >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "*** following was NOT run: python3 is missing ***";
  driveOverHills();
  const Poses before = poses("drive.glb");
  const auto report = [&](const std::string& profile) {
    const auto told = json({"follow", "drive.glb", "--rig", "Car", "--profile", profile, "--as",
                            "Other", "-o", "other.glb"});
    const Poses after = poses("other.glb");
    for (const auto& [node, rows] : before) EXPECT_EQ(after.at(node), rows) << node;
    expectFigures(told, before.at("Car_CarBodyBaseMesh"), after.at("Other_CarBodyBaseMesh"));
    EXPECT_EQ(told["rig"], "Other");
    EXPECT_EQ(told["frames"], before.at("Car_CarBodyBaseMesh").size());
    EXPECT_TRUE(told["left"].is_null()) << told;
    return told;
  };
  const auto same = report("Start Profile");
  EXPECT_LT(same["distance"]["mean"], 0.15);
  EXPECT_LT(same["distance"]["largest"], 1.2);
  EXPECT_LT(same["delay"], 1.0);
  // Half as fast, twice as heavy.
  const auto truck = report("Truck");
  EXPECT_LT(truck["distance"]["largest"], 1.2);
  EXPECT_GT(truck["delay"], same["delay"]);
  EXPECT_LT(truck["delay"], 10.0);
  EXPECT_EQ(ok("verify other.glb").rfind("same: ", 0), 0u);
  const Poses driven = poses("other.glb");
  ok("resim other.glb -o again.glb");
  EXPECT_TRUE(poses("again.glb") == driven);
  EXPECT_EQ(report("Truck"), truck);
  const auto whole = json("follow drive.glb --rig Car --profile Truck --to-end -o whole.glb");
  EXPECT_GT(whole["range"][1], 30.0 + truck["delay"].get<double>());
  EXPECT_LT(whole["distance"]["largest"], 1.2);
  const Poses end = poses("whole.glb");
  EXPECT_LT((placeIn(end.at("Car_01_CarBodyBaseMesh").back()) -
             placeIn(before.at("Car_CarBodyBaseMesh").back()))
                .length(),
            1.2);
  EXPECT_EQ(json("info whole.glb")["range"], whole["range"]);
  // One that hardly steers, led by the profile's own settings of the mode.
  const auto boat = json({"follow", "drive.glb", "--rig", "Car", "--profile", "Boat",
                          "--as-profile", "-o", "boat.glb"});
  EXPECT_GT(boat["distance"]["mean"], 5.0 * same["distance"]["mean"].get<double>());
  ok("follow drive.glb --rig Car --profile Truck --in-place -o lone.glb");
  EXPECT_EQ(poses("lone.glb").size(), before.size());

  const auto refuses = [&](Words words, const Texts& pieces, int status = 1) {
    words.insert(words.begin(), "follow");
    words.insert(words.end(), {"-o", "no.glb"});
    tells(words, status, pieces);
    EXPECT_FALSE(std::filesystem::exists(path("no.glb")));
  };
  ok("add drive.glb Pendulum --name Charm -o two.glb");
  refuses("two.glb --rig Charm", {"Pendulum follows no target", "4WheelerExt"});
  refuses("drive.glb --rig Cart", {"no rig \"Cart\"", "Car"});
  refuses("drive.glb --rig Car --profile Trukc", {"no profile \"Trukc\"", "did you mean Truck?"});
  refuses("drive.glb --rig Car --as Car", {"named Car", "another name"});
  refuses("drive.glb --rig Car --as B --in-place", {"--as", "--in-place"}, 2);
  ok("add hills.glb 4WheelerExt --name Car --stand 0,0,0 -o fresh.glb");
  refuses("fresh.glb --rig Car", {"no recorded path", "drive it first"});
  ok("resim fresh.glb --range 0:0.4 -o short.glb");
  refuses("short.glb --rig Car", {"0.4 s is too short"});
  ok("resim fresh.glb --range 0:3 -o still.glb");
  refuses("still.glb --rig Car", {"stands still"});
}

TEST_F(Follow, ADriveThatBeginsBetweenTwoFramesRepeatsToTheBit) {
  driveOverHills();
  ok("add hills.glb 4WheelerExt --name Car --profile F1 --stand 3,0,5 -o fast.glb");
  ok("parent fast.glb Car_GravityDirectionMesh Terrain -o fast.glb");
  folder.Write("fast.csv",
               "time,Car:Gas Pedal (Forw/Backw),Car:External Force,Car:Steering Wheel (Right/Left)"
               "\n0,1,0.3,0.2\n9,1,0.1,-0.3\n");
  for (const std::string from : {"0.511", "1.03", "2.2", "2.777"}) {
    ok({"resim", "fast.glb", "--inputs", "fast.csv", "--range", from + ":3", "-o", "off.glb"});
    const auto report = json("verify off.glb");
    EXPECT_EQ(report["same"], true) << from;
    EXPECT_EQ(report["range"][0], std::stod(from)) << "keys ahead of the start";
  }
}

}  // namespace
}  // namespace orv::tests
