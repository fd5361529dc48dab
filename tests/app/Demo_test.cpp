// The demo's belts and gun, by the commands of scripts/demo.sh.
#include "app/ProgramTest.h"

namespace orv::tests {
namespace {

using Row = std::vector<double>;  ///< time, place, turn, scale
using Vector = util::Vector3<double>;

class Demo : public ProgramTest {
 protected:
  /// Runs the demo's part between two comments; what it writes lies in the folder.
  void runPart(const std::string& from, const std::string& to) const {
    std::ifstream file(ORV_SOURCE_DIR "/scripts/demo.sh");
    const std::string demo{std::istreambuf_iterator<char>(file), {}};
    const std::size_t begin = demo.find(from), end = demo.find(to);
    ASSERT_LT(begin, end);
    ASSERT_NE(end, std::string::npos);
    folder.Write("part.sh", "set -eu\nrigwright='" RIGWRIGHT_PROGRAM "'\nout='" + folder.path +
                                "'\ncd '" ORV_SOURCE_DIR "'\n" + demo.substr(begin, end - begin));
    const std::string shell = "cd '" + folder.path + "' && PYTHONDONTWRITEBYTECODE=1 " +
                              "RIGWRIGHT_DATA_ROOT=root bash -x part.sh >log 2>&1";
    ASSERT_EQ(std::system(shell.c_str()), 0) << folder.Read("log");
  }
};

Vector placeOf(const Row& row) {
  return {row[1], row[2], row[3]};
}

/// A point of the node's own Z axis, so far from its origin, in the world.
Vector alongZ(const Row& row, double distance) {
  const double x = row[4], y = row[5], z = row[6], w = row[7];
  return placeOf(row) +
         Vector(2 * (x * z + w * y), 2 * (y * z - w * x), 1 - 2 * (x * x + y * y)) * distance;
}

TEST_F(Demo, ABeltStaysWholeOnItsWheelsAndStandsOnTheGroundThatItCrosses) {
  if (std::system("command -v python3 >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "*** the demo's belts were NOT run: python3 is missing ***";
  runPart("# A vehicle on two belts", "# A turret that fires");
  const Poses poses = this->poses("crawler.glb");
  constexpr double kHalfStep = 0.09;  // m
  for (const std::string side : {"Left", "Right"}) {
    std::vector<const std::vector<Row>*> steps;
    for (const auto& [name, rows] : poses)
      if (name.rfind(side + "_step", 0) == 0) steps.push_back(&rows);
    ASSERT_EQ(steps.size(), 60u);
    const std::vector<Row>& drive = poses.at(side + "_driveWheel");
    double widest = 0.0, farthest = 0.0, slip = 0.0, way = 0.0;
    for (std::size_t i = 50; i < drive.size(); ++i) {
      const std::vector<Row>* lowest = steps.front();
      for (std::size_t k = 0; k < steps.size(); ++k) {
        const Row& step = (*steps[k])[i];
        const Vector gap =
            alongZ(step, kHalfStep) - alongZ((*steps[(k + 1) % steps.size()])[i], -kHalfStep);
        widest = std::max(widest, gap.length());
        farthest = std::max(farthest, std::abs(step[1] - drive[i][1]));
        if (step[2] < (*lowest)[i][2]) lowest = steps[k];
      }
      slip += (placeOf((*lowest)[i]) - placeOf((*lowest)[i - 1])).length();
      way += (placeOf(drive[i]) - placeOf(drive[i - 1])).length();
    }
    EXPECT_LT(widest, 0.1 * 2 * kHalfStep);
    EXPECT_LT(farthest, 0.05) << "beside the wheels";
    EXPECT_GT(way, 20.0);
    EXPECT_LT(slip, 0.1 * way) << "the step below stands while the vehicle passes";
  }
  expectTold(folder.Read("belt.svg"), {"Left at 4 s", "Widest gap between two steps (% of a step)",
                                       "Left, rim of the driveWheel", "Left, mean of the steps"});
}

TEST_F(Demo, ShotsStayInTheYardAndComeBackFromItsWalls) {
  if (std::system("command -v python3 >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "*** the demo's gun was NOT run: python3 is missing ***";
  runPart("# A turret that fires", "# What some of these");
  int shots = 0, turned = 0;
  for (const auto& [name, rows] : poses("gun.glb")) {
    if (name.rfind("Gun_bullet_", 0) != 0) continue;
    ++shots;
    double forward = 0.0;
    for (const Row& row : rows) {
      EXPECT_GT(row[2], 0.0) << name;
      EXPECT_GT(row[3], -15.0) << name;
      EXPECT_LT(std::abs(row[1]), 10.8) << name;
      forward = std::min(forward, row[3]);
    }
    if (rows.back()[3] > forward + 0.5) ++turned;
  }
  EXPECT_GT(shots, 40);
  EXPECT_GT(turned, shots / 2);
  expectTold(folder.Read("gun.svg"), {"Gun: the shots from the side", "Gun, shots and hits",
                                      "Shots fired", "Recoil of the barrel (m)"});
}

}  // namespace
}  // namespace orv::tests
