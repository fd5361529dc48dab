// What verify tells against the poses of both simulations.
#include <random>

#include "app/ProgramTest.h"

namespace orv::tests {
namespace {

class Verify : public ProgramTest {};

/// By node, how far apart two simulations are in each frame (m), and from when on any bit differs.
struct Apart {
  std::map<std::string, std::vector<double>> ways;
  double first = 1e9;
};

Apart apart(const Poses& before, const Poses& after) {
  Apart result;
  for (const auto& [node, rows] : before)
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const std::vector<double>& now = after.at(node)[i];
      if (now != rows[i]) result.first = std::min(result.first, rows[i][0]);
      result.ways[node].push_back(
          std::hypot(now[1] - rows[i][1], now[2] - rows[i][2], now[3] - rows[i][3]));
    }
  return result;
}

TEST_F(Verify, FirstLargestAndGrowthAreThoseOfTheExportedPoses) {
  ok("add shot.glb MotionFilterCam --name Cam -o both.glb");
  ok("parent both.glb Cam_AttachedCam Mover -o both.glb");
  ok("add both.glb DirectInputLink --name Hand -o both.glb");
  folder.Write("hand.csv",
               "time,Hand:Yaw (Right/Left),Hand:Forw/Backw Transl\n0,0,0\n"
               "0.5,0.8,-1\n1,-0.3,0.4\n2,0.6,1\n");
  ok("resim both.glb --inputs hand.csv -o take.glb");
  const Poses before = poses("take.glb");
  std::mt19937 random(7);
  const auto number = [&random](double from, double to) {
    return std::to_string(from + (to - from) * (random() % 1000) / 1000.0);
  };
  for (int turn = 0; turn < 12; ++turn) {
    if (turn % 2 == 0) {
      const std::string which = turn % 4 == 0 ? "Translation" : "Rotation";
      ok({"set", "take.glb", "Cam:" + which + " Response Factor=" + number(1, 90), "-o",
          "changed.glb"});
    } else {
      const std::string from = number(0.1, 1.7);
      ok({"edit-inputs", "take.glb", "cut", turn % 4 == 1 ? "Hand:Yaw (Right/Left)" : "Hand:*",
          "--range", from + ":", "--keep-keys", "-o", "changed.glb"});
    }
    ok("resim changed.glb -o again.glb");
    const Apart truth = apart(before, poses("again.glb"));
    const Outcome told = run("verify changed.glb --json");
    ASSERT_EQ(told.status, 3) << turn << told.err;
    const auto report = nlohmann::json::parse(told.out, nullptr, false);
    EXPECT_EQ(report["first"]["time"], truth.first) << turn;
    // The nodes that a rig keys stand in the world, so keys and world poses are the same numbers.
    const double still = 1e-12;
    double largest = 0.0;
    std::map<double, double> growth;
    for (const auto& [node, ways] : truth.ways)
      for (std::size_t i = 0; i < ways.size(); ++i) {
        largest = std::max(largest, ways[i]);
        double& inSecond = growth[std::floor(before.at(node)[i][0])];
        inSecond = std::max(inSecond, ways[i]);
      }
    if (largest > still) {
      EXPECT_EQ(report["largest"]["channel"], "translation");
      EXPECT_NEAR(report["largest"]["amount"], largest, 1e-9) << turn;
    } else {
      EXPECT_EQ(report["largest"]["channel"], "rotation") << turn;
    }
    for (const auto& each : report["growth"])
      EXPECT_NEAR(each["amount"], growth.at(std::floor(each["time"].get<double>())), 1e-9) << turn;
    EXPECT_EQ(report["growth"].size() > 0, largest > still) << turn;
  }
}

}  // namespace
}  // namespace orv::tests
