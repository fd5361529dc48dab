// Kept takes, from file to file.
#include <cstdint>
#include <random>

#include "ProgramTest.h"

namespace orv::tests {
namespace {

class Takes : public ProgramTest {
 protected:
  void play(const std::string& name, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::string csv = "time,Hand:Yaw (Right/Left)\n";
    for (int i = 0; i < 30; ++i)
      csv += std::to_string(i * 0.04) + "," + std::to_string(random() % 2000 / 1000.0 - 1.0) + "\n";
    folder.Write(name, csv);
  }
};

TEST_F(Takes, EachComesBackToTheBit) {
  ok("add shot.glb DirectInputLink --name Hand -o hand.glb");
  ok("preferences keeptakes=on");
  play("a.csv", 1);
  play("b.csv", 2);
  play("c.csv", 3);
  ok("take hand.glb --seconds 0.8 --play a.csv -o 1.glb");
  ok("take 1.glb --from 0.4 --seconds 0.4 --play b.csv -o 2.glb");
  ok("takes 2.glb list");
  ok("take 2.glb --seconds 0.6 --play c.csv -o 3.glb");
  const std::map<int, Poses> performed{
      {1, poses("1.glb")}, {2, poses("2.glb")}, {3, poses("3.glb")}};
  EXPECT_FALSE(performed.at(1) == performed.at(2));

  auto list = json("takes 3.glb list")["takes"];
  ASSERT_EQ(list.size(), 3u);
  EXPECT_EQ(list[1]["predecessor"], 1);
  EXPECT_EQ(list[1]["mark"], "retried");
  EXPECT_EQ(list[2]["predecessor"], 0);
  EXPECT_EQ(list[2]["mark"], "in use");

  // Whatever stands in the scene, a take is what was performed.
  ok("set 3.glb 'Hand:#0=1' -o now.glb");
  std::mt19937 random(4);
  for (int i = 0; i < 8; ++i) {
    const int number = static_cast<int>(random() % 3) + 1;
    const std::string n = std::to_string(number);
    EXPECT_EQ(json({"takes", "now.glb", "use", n, "-o", "now.glb"})["same"], true) << n;
    const Poses now = poses("now.glb");
    for (const auto& [node, rows] : performed.at(number))
      for (const auto& row : rows) {
        if (row[0] > list[number - 1]["range"][1].get<double>() + 1e-6) break;
        const auto& mine = now.at(node);
        EXPECT_NE(std::find(mine.begin(), mine.end(), row), mine.end()) << n << node << row[0];
      }
  }

  ok({"takes", "now.glb", "name", "2", "best", "-o", "now.glb"});
  ok({"takes", "now.glb", "star", "2", "4", "-o", "now.glb"});
  ok({"takes", "now.glb", "export", "2", "-o", "two.takes"});
  ok({"takes", "hand.glb", "import", "two.takes", "-o", "other.glb"});
  list = json("takes other.glb list")["takes"];
  ASSERT_EQ(list.size(), 2u);
  EXPECT_EQ(list[1]["name"], "best");
  EXPECT_EQ(list[1]["stars"], 4);
  EXPECT_EQ(json("takes other.glb use 2 -o other.glb")["same"], true);

  ok({"rename", "other.glb", "Hand", "Left", "-o", "left.glb"});
  EXPECT_EQ(json("takes left.glb use 1 -o left.glb")["same"], true);
  ok("take left.glb --from 0.5 --seconds 0.2 --yes -o left.glb");
  EXPECT_EQ(json("takes left.glb list")["takes"][2]["predecessor"], 1);
  ok("verify left.glb");

  // A file that is played is no mapping, and a take that was thrown away none at all.
  ok({"map", "hand.glb", "Hand:Yaw (Right/Left)", "No such wheel", "Axis", "2", "-o", "m.glb"});
  ok("take m.glb --seconds 0.2 --play a.csv -o m.glb");
  ok("takes m.glb use 1 -o m.glb");
  const auto mapped = json("info m.glb");
  for (const auto& input : mapped["rigs"][0]["inputs"])
    if (input["name"] == "Yaw (Right/Left)") {
      EXPECT_EQ(input["mapping"]["control"]["device"], "No such wheel");
    }
  ok("preferences keeptakes=off");
  ok("take m.glb --seconds 0.2 --play b.csv -o m.glb");
  EXPECT_EQ(json("takes m.glb list")["takes"].size(), 1u);

  tells("takes now.glb delete 1 -o no.glb", 1, {"take 2 went on from it"});
  ok("takes now.glb delete 3 -o now.glb");
  EXPECT_EQ(json("takes now.glb list")["takes"].size(), 2u);
  tells("takes now.glb use 3 -o no.glb", 1, {"no take 3"});
  tells("takes now.glb star 1 9 -o no.glb", 2, {"from 0 to 5"});
  tells("takes hand.glb import a.csv -o no.glb", 1, {"a.csv", "damaged"});
  tells("takes now.glb export 1 -o now.glb", 2, {"no scene", ".takes"});
  tells("takes now.glb name 1 two words -o no.glb", 2, {"name N TEXT"});
  tells("take 1.glb --seconds 9 -o no/no.glb", 1, {"no/no.glb: cannot create"});
  EXPECT_FALSE(std::filesystem::exists(path("no.glb")));

  // Nobody performs the same again.
  ok("preferences keeptakes=on");
  std::filesystem::create_symlink("/dev/full", path("full.glb"));
  const Outcome full = run("take hand.glb --seconds 0.4 --play b.csv -o full.glb");
  EXPECT_EQ(full.status, 1);
  const std::size_t from = full.err.find(path("root")), to = full.err.find(".takes", from);
  ASSERT_NE(to, std::string::npos) << full.err;
  ok({"takes", "hand.glb", "import", full.err.substr(from, to + 6 - from), "-o", "saved.glb"});
  EXPECT_EQ(json("takes saved.glb use 1 -o saved.glb")["same"], true);
}

}  // namespace
}  // namespace orv::tests
