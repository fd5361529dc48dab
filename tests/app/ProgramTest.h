// A folder with a scene, and the built program run in it.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstring>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "adaptor/headless/GltfWriter.h"
#include "adaptor/headless/Scene.h"
#include "support/TempFolder.h"

namespace orv::tests {

/// A command line, in one text cut at its blanks (but for those within '') or word by word.
struct Words : std::vector<std::string> {
  using vector::vector;
  Words(const char* line) {
    static const std::regex kWord("'([^']*)'|[^ ]+");
    for (std::cregex_iterator at(line, line + std::strlen(line), kWord), end; at != end; ++at)
      push_back((*at)[1].matched ? (*at)[1] : (*at)[0]);
  }
};
using Texts = std::vector<std::string>;

inline void expectTold(const std::string& text, const Texts& pieces) {
  for (const std::string& piece : pieces)
    EXPECT_NE(text.find(piece), std::string::npos) << "must tell \"" << piece << "\"\n" << text;
}

/// How a run of the program ended.
struct Outcome {
  int status = -1;
  std::string out;
  std::string err;
};

/// Poses of an exported CSV: per node, per row, the eleven numbers from `time` on.
using Poses = std::map<std::string, std::vector<std::vector<double>>>;

inline Poses parsePoses(const std::string& csv) {
  Poses poses;
  std::istringstream lines(csv);
  std::string line;
  std::getline(lines, line);
  EXPECT_EQ(line, "time,node,tx,ty,tz,qx,qy,qz,qw,sx,sy,sz");
  while (std::getline(lines, line)) {
    std::istringstream fields(line);
    std::string field, name;
    std::vector<double> row;
    for (int i = 0; std::getline(fields, field, ','); ++i)
      if (i == 1)
        name = field;
      else
        row.push_back(std::stod(field));
    EXPECT_EQ(row.size(), 11u) << line;
    poses[name].push_back(row);
  }
  return poses;
}

/// Each test has a folder with `shot.glb`: "Mover", keyed in position and rotation over 2 s at 25
/// fps, its child "Lamp", and "Wall", which stands still. The data root does not exist yet.
class ProgramTest : public testing::Test {
 protected:
  ProgramTest() {
    setenv("LSAN_OPTIONS",
           "print_suppressions=0:suppressions=" ORV_SOURCE_DIR "/tests/support/leaks.supp", 1);
    namespace headless = rws::adaptor::headless;
    headless::Scene scene;
    headless::SceneNode& mover = scene.AddNode("Mover");
    headless::Channel places(headless::ChannelPath::kTranslation);
    headless::Channel turns(headless::ChannelPath::kRotation);
    std::vector<double> times, positions, rotations;
    for (int i = 0; i <= 50; ++i) {
      const double t = static_cast<float>(i * 0.04);
      const double half = 0.2 * std::sin(9.0 * t);
      times.push_back(t);
      for (const double v : {2.0 * t, 1.0 + 0.1 * std::sin(25.0 * t), -t * t})
        positions.push_back(static_cast<float>(v));
      for (const double v : {0.0, std::sin(half), 0.0, std::cos(half)})
        rotations.push_back(static_cast<float>(v));
    }
    EXPECT_TRUE(places.SetKeys(times, positions) && turns.SetKeys(times, rotations));
    mover.SetChannel(places);
    mover.SetChannel(turns);
    scene.AddNode("Lamp", &mover).SetPose({{0.0, 0.5, 0.0}, {}, {1.0, 1.0, 1.0}});
    scene.AddNode("Wall").SetPose({{5.0, 0.0, 0.0}, {}, {1.0, 2.0, 1.0}});
    scene.SetRange(0.0, 2.0);
    EXPECT_TRUE(headless::GltfWriter::Write(scene, path("shot.glb")));
  }

  std::string path(const std::string& name) const { return folder.path + "/" + name; }

  /// Runs the program in the folder. With `signalAfter` it gets SIGINT after so many seconds. A
  /// status of 128 and more is that of a shell: ended by this signal less 128, as SIGINT does to a
  /// program that is still being loaded.
  Outcome run(const Words& words, double signalAfter = 0.0, const Texts& environment = {}) const {
    const pid_t child = fork();
    if (child == 0) exec(words, environment);
    if (signalAfter > 0.0) {
      std::this_thread::sleep_for(std::chrono::duration<double>(signalAfter));
      kill(child, SIGINT);
    }
    int status = 0;
    waitpid(child, &status, 0);
    Outcome result{WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
                   folder.Read(".out"), folder.Read(".err")};
    std::filesystem::remove(path(".out"));
    std::filesystem::remove(path(".err"));
    return result;
  }

  /// The same, with status 0 expected; stdout.
  std::string ok(const Words& words) const {
    const Outcome result = run(words);
    std::string all = "rigwright";
    for (const std::string& word : words) all += " " + word;
    EXPECT_EQ(result.status, 0) << all << "\n" << result.err;
    return result.out;
  }

  /// The same with this status, and with these pieces on stderr.
  void tells(const Words& words, int status, const Texts& pieces) const {
    const Outcome result = run(words);
    EXPECT_EQ(result.status, status) << result.err;
    expectTold(result.err, pieces);
  }

  nlohmann::json json(Words words) const {
    words.push_back("--json");
    return nlohmann::json::parse(ok(words), nullptr, false);
  }

  /// World poses from `export`.
  Poses poses(const std::string& scene) const {
    ok({"export", scene, "-o", "poses.csv"});
    return parsePoses(folder.Read("poses.csv"));
  }

  /// Names and contents of all files in the folder.
  std::map<std::string, std::string> files() const {
    std::map<std::string, std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path))
      if (entry.is_regular_file())
        result[entry.path().filename()] = folder.Read(entry.path().filename());
    return result;
  }

  TempFolder folder;

 private:
  [[noreturn]] void exec(const Words& words, const Texts& environment) const {
    std::vector<char*> arguments = {const_cast<char*>("rigwright")};
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    const bool ready = chdir(folder.path.c_str()) == 0;
    dup2(open(".out", O_CREAT | O_WRONLY | O_TRUNC, 0600), STDOUT_FILENO);
    dup2(open(".err", O_CREAT | O_WRONLY | O_TRUNC, 0600), STDERR_FILENO);
    setenv("RIGWRIGHT_DATA_ROOT", path("root").c_str(), 1);
    unsetenv("QT_QPA_PLATFORM");
    unsetenv("DISPLAY");
    for (const std::string& variable : environment) putenv(const_cast<char*>(variable.c_str()));
    if (ready) execv(RIGWRIGHT_PROGRAM, arguments.data());
    _exit(127);
  }
};

}  // namespace orv::tests
