// Recorded inputs edited, from file to file.
#include "ProgramTest.h"

namespace orv::tests {
namespace {

class EditInputs : public ProgramTest {};

TEST_F(EditInputs, KeysFollowFromTheEditAlone) {
  ok("add shot.glb DirectInputLink --name Hand -o hand.glb");
  folder.Write("drive.csv", "time,Hand:Yaw (Right/Left)\n0,0\n0.5,0.8\n1,-0.3\n2,0.6\n");
  ok("resim hand.glb --inputs drive.csv -o take.glb");
  const Poses before = poses("take.glb");
  ok({"edit-inputs", "take.glb", "draw", "Hand:Yaw (Right/Left)", "--points", "1.2=0,1.5=1",
      "--fade", "0.1", "-o", "edited.glb"});
  const Poses after = poses("edited.glb");
  // What was simulated ahead of the edit is the same to the bit, and nothing else than a
  // resimulation from the edited inputs.
  ok("inputs edited.glb -o edited.csv");
  ok("resim hand.glb --inputs edited.csv -o again.glb");
  EXPECT_TRUE(poses("again.glb") == after);
  EXPECT_FALSE(before == after);
  for (const auto& [name, rows] : before)
    for (std::size_t i = 0; i <= 30; ++i) EXPECT_EQ(after.at(name)[i], rows[i]) << name;
  ok({"edit-inputs", "take.glb", "cut", "Hand:*", "--range", "0:1", "--keep-keys", "-o",
      "cut.glb"});
  EXPECT_TRUE(poses("cut.glb") == before);

  // Which of these keys follow from their inputs.
  for (const char* scene : {"take.glb", "edited.glb", "again.glb"})
    EXPECT_EQ(ok({"verify", scene}).rfind("same: ", 0), 0u) << scene;
  const auto kept = files();
  const Outcome differs = run("verify cut.glb --json");
  EXPECT_EQ(differs.status, 3);
  EXPECT_TRUE(files() == kept) << "nothing is written";
  const auto report = nlohmann::json::parse(differs.out, nullptr, false);
  const Poses cut = [&] {
    ok("resim cut.glb -o recut.glb");
    return poses("recut.glb");
  }();
  double first = 1e9;
  for (const auto& [name, rows] : before)
    for (std::size_t i = 0; i < rows.size(); ++i)
      if (cut.at(name)[i] != rows[i]) first = std::min(first, rows[i][0]);
  EXPECT_EQ(report["first"]["time"], first) << differs.out;
  EXPECT_EQ(report["same"], false);
  EXPECT_GT(report["largest"]["amount"], 0.0);
  tells("verify shot.glb", 1, {"no rig"});
  tells("verify hand.glb", 1, {"has keys", "resim"});

  const auto refuses = [&](Words words, int status, const Texts& pieces) {
    words.insert(words.begin(), {"edit-inputs", "take.glb"});
    words.insert(words.end(), {"-o", "no.glb"});
    tells(words, status, pieces);
    EXPECT_FALSE(std::filesystem::exists(path("no.glb")));
  };
  refuses("shift Hand:*", 2, {"needs --by"});
  refuses("cut Hand:* --by 2", 2, {"takes no --by"});
  refuses("draw Hand:* --points 2=1,1=0", 2, {"must rise"});
  refuses("wobble Hand:*", 2, {"wobble", "smooth"});
  refuses("shift Hand:* --by 1e300", 2, {"--by", "1e+09"});
  // A track that holds an infinite value would be refused, and its rig with it, when it is opened.
  refuses("scale Hand:* --by 1e308 --about -1e308", 1, {"Hand:", "nearer to 1"});
  tells("verify take.glb --range 50:60", 1, {"no rig has keys from 50 to 60 s"});
  tells({"edit-inputs", "hand.glb", "cut", "Hand:Yaw (Right/Left)", "-o", "no.glb"}, 1,
        {"nothing has been recorded"});
  refuses("cut Hand:Yaww", 1, {"Yaww"});
  refuses({"blend", "Hand:Pitch (Up/Down)", "--with", "drive.csv"}, 1, {"Hand:Pitch"});
}

}  // namespace
}  // namespace orv::tests
