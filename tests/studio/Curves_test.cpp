// Curves of inputs, arming, marks and kept takes, as a user has them.
#include <filesystem>

#include "core/windows/MainWindowIds.h"
#include "studio/DrivenStudio.h"
#include "support/TempFolder.h"

namespace orv::tests {

namespace {

using Json = nlohmann::json;

class Curves : public testing::Test {
 protected:
  /// A place of the strip, as words of a command.
  static std::string At(DrivenStudio& studio, double time, double value) {
    const Json place = studio.Do("curves at=" + std::to_string(time) + "," + std::to_string(value));
    return std::to_string(place["x"].get<int>()) + "," + std::to_string(place["y"].get<int>());
  }
  /// Of the inputs that were recorded, as the command line tells them.
  std::string Inputs(DrivenStudio& studio) {
    const std::string scene = folder.path + "/scene.glb", csv = folder.path + "/inputs.csv";
    studio.Do("save " + scene);
    EXPECT_EQ(
        QProcess::execute(RIGWRIGHT_PROGRAM, {"--quiet", "inputs", QString::fromStdString(scene),
                                              "-o", QString::fromStdString(csv)}),
        0);
    return folder.Read("inputs.csv");
  }
  bool IsVerified() {
    return QProcess::execute(
               RIGWRIGHT_PROGRAM,
               {"--quiet", "verify", QString::fromStdString(folder.path + "/scene.glb")}) == 0;
  }

  TempFolder folder;
};

}  // namespace

TEST_F(Curves, ADragIsOneStepAndTheSceneIsVerified) {
  DrivenStudio studio(folder.path + "/root");
  studio.DoAll({"click double id=321 row=\"Vehicle/Orvel 4-Wheeler Extended\"", "wait 0.5",
                "device Pad", "record", "wait 2.0", "stop", "wait-idle", "curves on", "wait 0.3"});
  const std::string recorded = Inputs(studio);
  EXPECT_TRUE(IsVerified());
  const Json shown = studio.Do("curves");
  ASSERT_GT(shown["inputs"].size(), 2u);
  studio.ExpectReadable("MainWindow");
  const auto steps = [&] { return studio.State()["undoPosition"].get<int>(); };
  const int before = steps();
  // The tools draw and smooth what is next to the pointer, and a box takes points up.
  const std::string strip = " id=317 at=";
  studio.DoAll({"curves tool=draw",
                "drag" + strip + At(studio, 0.4, 0.3) + " to-at=" + At(studio, 1.2, 0.8)});
  EXPECT_EQ(steps(), before + 1);
  const std::string drawn = Inputs(studio);
  EXPECT_NE(drawn, recorded);
  EXPECT_TRUE(IsVerified());
  studio.DoAll({"curves tool=points",
                "drag" + strip + At(studio, 0.3, 1.0) + " to-at=" + At(studio, 1.3, 0.05)});
  EXPECT_EQ(steps(), before + 1) << "choosing is no step";
  studio.DoAll({"key Up", "key Right"});
  EXPECT_EQ(steps(), before + 3);
  EXPECT_NE(Inputs(studio), drawn);
  EXPECT_TRUE(IsVerified());
  studio.DoAll({"key Ctrl+Z", "key Ctrl+Z"});
  EXPECT_EQ(Inputs(studio), drawn);
  EXPECT_TRUE(IsVerified());
  studio.Do("key Ctrl+Z");
  EXPECT_EQ(Inputs(studio), recorded);
  studio.Do("quit 0");
}

TEST_F(Curves, OnlyArmedInputsAreRecordedBetweenTheMarksAndTakesComeBack) {
  DrivenStudio studio(folder.path + "/root");
  studio.DoAll({"click double id=321 row=\"Vehicle/Orvel 4-Wheeler Extended\"", "wait 0.5",
                "device Pad", "record", "wait 1.6", "stop", "wait-idle"});
  const auto status = [&] { return studio.ValueOf("MainWindow", rws::core::windows::kTakeStatus); };
  EXPECT_EQ(status(), "Ready.");
  const std::string recorded = Inputs(studio);
  const std::string rig = studio.State()["selection"][0];
  // None is armed but one, so that a take between marks leaves the others.
  const std::string input = studio.Do("curves on")["inputs"][0]["name"];
  studio.DoAll({"arm \"" + rig + ":" + input + "\"", "wait 0.2"});
  EXPECT_NE(status().find(" 1 of "), std::string::npos) << status();
  studio.DoAll({"marks 0.4 0.8", "punch blend=0", "wait-idle", "wait 0.3"});
  EXPECT_EQ(Inputs(studio), recorded) << "a pad at rest";
  EXPECT_TRUE(IsVerified());
  studio.DoAll({"arm", "wait 0.2"});
  EXPECT_EQ(status(), "Ready.");
  studio.DoAll({"click id=373", "wait 0.3"});
  studio.ExpectReadable("MainWindow");
  const Json takes = studio.Do("takes")["takes"];
  ASSERT_EQ(takes.size(), 2u) << takes;
  EXPECT_TRUE(takes[1]["current"]);
  const int steps = studio.State()["undoPosition"];
  EXPECT_TRUE(studio.Do("takes use 1")["takes"][0]["current"]);
  EXPECT_EQ(studio.State()["undoPosition"], steps + 1);
  studio.Do("key Ctrl+Z");
  EXPECT_TRUE(studio.Do("takes")["takes"][1]["current"]);
  studio.DoAll({"save " + folder.path + "/scene.glb", "quit 0"});
  // Another machine has shown none of them: their pictures come, but not of a scene that is edited.
  const std::filesystem::path root = folder.path + "/other", pictures = root / "data/takes";
  DrivenStudio other(root);
  const auto count = [&] {
    std::error_code none;
    using Files = std::filesystem::directory_iterator;
    return std::distance(Files(pictures, none), Files());
  };
  other.DoAll({"open " + folder.path + "/scene.glb", "click id=373", "takes use 2", "wait 2.5"});
  EXPECT_TRUE(other.State()["dirty"]);
  EXPECT_EQ(count(), 1) << "that of the take which is used";
  other.Do("open " + folder.path + "/scene.glb");
  for (int i = 0; i < 100 && count() < 2; ++i) other.Do("wait 0.1");
  EXPECT_EQ(count(), 2);
  EXPECT_FALSE(other.State()["dirty"]);
  other.Do("quit 0");
}

TEST_F(Curves, StripAndListAreReadInGermanAndTwiceAsLarge) {
  DrivenStudio studio(folder.path + "/root", {"--lang", "de", "--scale", "2"}, {}, "1500x1000");
  studio.DoAll({"click double id=321 row=\"Fahrzeug/Orvel 4-Wheeler Extended\"", "wait 0.5",
                "record", "wait 0.5", "stop", "wait-idle", "curves on", "click id=373",
                "wait 0.5"});
  studio.ExpectReadable("MainWindow");
  studio.Do("quit 0");
}

}  // namespace orv::tests
