// Many variants of a scene, from file to folder.
#include "ProgramTest.h"

namespace orv::tests {
namespace {

namespace fs = std::filesystem;
using Cells = std::map<std::string, std::string>;

class Sweep : public ProgramTest {
 protected:
  Sweep() {
    ok("add shot.glb MotionFilterCam --name Cam -o cam.glb");
    ok("parent cam.glb Cam_AttachedCam Mover -o cam.glb");
  }

  /// Names and contents of all files below a folder.
  std::map<std::string, std::string> all(const std::string& name) const {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(path(name)))
      if (entry.is_regular_file())
        files[entry.path().lexically_relative(path(name))] =
            folder.Read(entry.path().lexically_relative(folder.path));
    return files;
  }

  std::vector<Cells> table(const std::string& name) const {
    std::istringstream lines(folder.Read(name + "/sweep.csv"));
    std::vector<Cells> rows;
    std::vector<std::string> heads;
    for (std::string line; std::getline(lines, line);) {
      std::istringstream cells(line + ",");
      std::vector<std::string> values;
      for (std::string cell; std::getline(cells, cell, ',');) values.push_back(cell);
      if (heads.empty()) {
        heads = values;
        continue;
      }
      EXPECT_EQ(values.size(), heads.size()) << line;
      rows.emplace_back();
      for (std::size_t i = 0; i < heads.size(); ++i) rows.back()[heads[i]] = values[i];
    }
    return rows;
  }
};

TEST_F(Sweep, ARowIsWhatAResimulationByHandComesTo) {
  ok({"sweep", "cam.glb", "--vary", "Cam:Translation Response Factor=20:80:3", "--vary",
      "Cam:Rotation Response Factor=5,60.5", "--near", "Wall", "--pick", "near<5,length>0.1",
      "--scenes", "-o", "runs"});
  const std::vector<Cells> rows = table("runs");
  ASSERT_EQ(rows.size(), 6u);
  for (const char* head : {"air time (s)", "error"}) EXPECT_EQ(rows[3].at(head), "");
  EXPECT_EQ(rows[3].at("Cam:Translation Response Factor"), "50");
  EXPECT_EQ(rows[3].at("Cam:Rotation Response Factor"), "60.5")
      << "what is given last changes fastest";
  ok("resim cam.glb --set 'Cam:Translation Response Factor=50' --set 'Cam:Rotation Response "
     "Factor=60.5' -o hand.glb");
  ok("sweep open runs 4 -o row.glb");
  const Poses poses = this->poses("hand.glb");
  EXPECT_TRUE(this->poses("row.glb") == poses);
  EXPECT_EQ(folder.Read("row.glb"), folder.Read("runs/scenes/000004.glb"));

  double length = 0.0, speed = 0.0, near = 1e9;
  const auto& path = poses.at("Cam_FollowCam");
  for (std::size_t i = 0; i < path.size(); ++i) {
    near = std::min(near, std::hypot(path[i][1] - 5.0, path[i][2], path[i][3]));
    if (i == 0) continue;
    const double way = std::hypot(path[i][1] - path[i - 1][1], path[i][2] - path[i - 1][2],
                                  path[i][3] - path[i - 1][3]);
    length += way;
    speed = std::max(speed, way / 0.04);
  }
  EXPECT_NEAR(std::stod(rows[3].at("length (m)")), length, 1e-9);
  EXPECT_NEAR(std::stod(rows[3].at("top speed (m/s)")), speed, 1e-9);
  EXPECT_NEAR(std::stod(rows[3].at("least distance (m)")), near, 1e-9);
  for (const Cells& row : rows)
    EXPECT_EQ(row.at("picked"), std::stod(row.at("least distance (m)")) < 5.0 ? "yes" : "no");
}

TEST_F(Sweep, IsTheSameWhereverAndHoweverOftenItIsEnded) {
  const Words sweep{"-q", "sweep", "cam.glb", "--vary", "Cam:Translation Response Factor=1:80:40"};
  const auto into = [&](const char* name, const char* jobs) {
    Words words = sweep;
    words.insert(words.end(), {"--jobs", jobs, "-o", name});
    return words;
  };
  ok(into("alone", "1"));
  int told = 0;
  for (const double seconds : {0.2, 0.3, 0.5}) {
    const Outcome ended = run(into("often", "3"), seconds);
    if (ended.status != 130) continue;  // it was not that far yet, or done
    ++told;
    EXPECT_NE(ended.err.find("interrupted"), std::string::npos) << ended.err;
  }
  // What a program that was killed leaves.
  if (fs::exists(path("often/rows"))) folder.Write("often/rows/.123.0.tmp", "{");
  ok(into("often", "2"));
  EXPECT_TRUE(all("often") == all("alone")) << told << " were ended";
  folder.Write("often/rows/000007.json", "{\"row\":7");
  fs::remove(path("often/contact.png"));
  ok(into("often", "2"));
  EXPECT_TRUE(all("often") == all("alone"));
}

TEST_F(Sweep, RefusesWhatCanNotBeMeant) {
  const auto refuses = [&](Words words, int status, const Texts& pieces) {
    words.insert(words.begin(), {"sweep", "cam.glb"});
    tells(words, status, pieces);
    EXPECT_FALSE(fs::exists(path("runs")));
  };
  const std::string response = "Cam:Translation Response Factor=";
  refuses("-o runs", 2, {"--vary"});
  refuses({"--vary", response + "1,2"}, 2, {"-o"});
  refuses({"--vary", "Cam:Translation Respons Factor=1,2", "-o", "runs"}, 1,
          {"did you mean Translation Response Factor"});
  refuses({"--vary", response + "1,,2", "-o", "runs"}, 1, {"empty value"});
  refuses({"--vary", response + "1,much", "-o", "runs"}, 1, {"much"});
  refuses({"--vary", response + "1,2", "--vary", response + "3", "-o", "runs"}, 1, {"twice"});
  refuses({"--vary", response + "1:2:1000", "--vary", "Cam:Rotation Response Factor=1:2:1001", "-o",
           "runs"},
          1, {"more than 1000000 rows"});
  refuses("--seeds 1:3 -o runs", 1, {"no rig has a seed"});
  refuses("--profiles Nothing -o runs", 1, {"Nothing"});
  refuses("--inputs none.csv -o runs", 1, {"none.csv"});
  refuses({"--vary", response + "1,2", "--pick", "near<3", "-o", "runs"}, 1, {"--near NODE"});
  refuses({"--vary", response + "1,2", "--pick", "weight<3", "-o", "runs"}, 1, {"weight", "lean"});
  // Anything else that is there stays as it is.
  const auto before = files();
  tells({"sweep", "cam.glb", "--vary", response + "1,2", "-o", "."}, 1, {"other things"});
  ok({"sweep", "cam.glb", "--vary", response + "1,2", "-o", "runs"});
  tells({"sweep", "cam.glb", "--vary", response + "1,3", "-o", "runs"}, 1, {"another sweep"});
  ok({"set", "cam.glb", "Cam:#0=on", "-o", "cam.glb"});
  tells("sweep open runs 1 -o out.glb", 1, {"has changed"});
  tells("sweep open runs 3 -o out.glb", 1, {"has changed"});
  EXPECT_EQ(files().size(), before.size());

  // What can be meant, and most likely is not.
  folder.Write("post.gltf", R"({"asset": {"version": "2.0"}, "nodes": [{"name": "Post"}]})");
  ok("add post.gltf MotionFilterCam --name Cam -o still.glb");
  for (const std::string scene : {"still.glb", "cam.glb"}) {
    const Outcome told = run({"sweep", scene, "--vary", response + "1,2", "--plan"});
    EXPECT_EQ(told.status, 0);
    EXPECT_EQ(told.err.find("at rest") != std::string::npos, scene[0] == 's') << told.err;
  }
}

}  // namespace
}  // namespace orv::tests
