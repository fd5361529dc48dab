// Takes in real time with the picture of the scene, by the program as a user has it.
#include <sstream>

#include "app/session/SceneSession.h"
#include "core/CoreImplementation.h"
#include "studio/DrivenStudio.h"
#include "studio/StudioRun.h"
#include "studio/XDisplay.h"

namespace orv::tests {

namespace {

class RealTime : public StudioRun {
 protected:
  /// The first rows of a table.
  static std::string Head(const std::string& text, int rows) {
    std::size_t end = 0;
    for (int i = 0; i < rows && end != std::string::npos; ++i) end = text.find('\n', end + 1);
    EXPECT_NE(end, std::string::npos) << "only:\n" << text;
    return text.substr(0, end);
  }
};

}  // namespace

TEST_F(RealTime, APlayedTakeIsTheSameWhateverIsPainted) {
  constexpr int kRows = 25;
  Script("new\nsave a.glb\n");
  Rigwright({"range", "a.glb", "--end", "60", "-o", "a.glb"});
  Rigwright({"add", "a.glb", "1DPositioner", "--name", "P", "-o", "a.glb"});
  const Json info = Json::parse(Rigwright({"info", "a.glb", "--json"}));
  const QString input =
      QString::fromStdString("P:" + info["rigs"][0]["inputs"][0]["name"].get<std::string>());
  Rigwright({"map", "a.glb", input, "Pad", "Axis", "0", "-o", "a.glb"});
  std::ostringstream pad, played;
  pad << "time,Axis0\n";
  played << "time," << input.toStdString() << "\n";
  for (int i = 0; i <= 400; ++i)
    for (std::ostringstream* file : {&pad, &played})
      *file << i * 0.013 << "," << ((i * i) % 17 - 8) / 8.0 << "\n";
  folder.Write("pad.csv", pad.str());
  folder.Write("played.csv", played.str());
  // Without any window.
  Rigwright({"take", "a.glb", "--seconds", "1.2", "--play", "played.csv", "-o", "take.glb"});
  Rigwright({"export", "take.glb", "-o", "poses.csv"});
  Rigwright({"inputs", "take.glb", "-o", "inputs.csv"});
  const std::string poses = Head(folder.Read("poses.csv"), kRows);
  const std::string inputs = Head(folder.Read("inputs.csv"), kRows);

  const auto perform = [&](const QString& size, const QStringList& variables, XDisplay* display) {
    DrivenStudio studio(Path("root"), {QString::fromStdString(Path("a.glb"))}, variables, size);
    studio.DoAll({"device Pad", "feed " + Path("pad.csv"), "record", "wait 0.6"});
    // All but a corner of it leaves the screen.
    if (display) display->Do("search --onlyvisible --name a.glb windowmove 1450 950");
    studio.Do("wait 0.8");
    const Json state = studio.State();
    studio.DoAll({"stop", "save " + Path("b.glb")});
    Rigwright({"export", "b.glb", "-o", "b.csv"});
    EXPECT_EQ(Head(folder.Read("b.csv"), kRows), poses) << size.toStdString();
    Rigwright({"inputs", "b.glb", "-o", "b.csv"});
    EXPECT_EQ(Head(folder.Read("b.csv"), kRows), inputs) << size.toStdString();
    return state;
  };
  perform("700x500", {}, nullptr);
  if (!XDisplay::whatIsMissing().empty()) GTEST_SKIP() << XDisplay::whatIsMissing();
  XDisplay display;
  for (const char* size : {"600x500", "1500x1000"}) {
    const Json state =
        perform(size, {"QT_QPA_PLATFORM=xcb", "DISPLAY=" + display.name, kNoLeaks}, &display);
    const Json pictures = state["pictures"];
    EXPECT_GT(pictures["painted"], 4) << pictures;
    EXPECT_GT(pictures["perSecond"], 3.0) << pictures;
    // One for each frame at most, but for what the user does besides.
    EXPECT_LE(pictures["painted"].get<int>(), state["frame"].get<int>() + 15) << pictures;
  }
  // What a hand moves, from the move to the picture.
  DrivenStudio studio(Path("root"), {QString::fromStdString(Path("a.glb"))},
                      {"QT_QPA_PLATFORM=xcb", "DISPLAY=" + display.name, kNoLeaks});
  studio.DoAll({"device Pad", "record", "wait 0.4", "move Pad Axis0=0.5", "wait 0.4",
                "move Pad Axis0=-0.5", "wait 0.6"});
  const Json pictures = studio.State()["pictures"];
  EXPECT_EQ(pictures["latencies"], 2) << pictures;
  EXPECT_GT(pictures["latencyMedian"], 0.0) << pictures;
  EXPECT_GE(pictures["latencyP95"], pictures["latencyMedian"]) << pictures;
}

TEST_F(RealTime, AScriptFindsNodesInThePictureAndMovesTheEye) {
  if (!XDisplay::whatIsMissing().empty()) GTEST_SKIP() << XDisplay::whatIsMissing();
  Script("new\nsave a.glb\n");
  Rigwright({"add", "a.glb", "4WheelerExt", "--name", "Car", "-o", "a.glb"});
  XDisplay display;
  DrivenStudio studio(Path("root"), {QString::fromStdString(Path("a.glb"))},
                      {"QT_QPA_PLATFORM=xcb", "DISPLAY=" + display.name, kNoLeaks});
  studio.DoAll({"wait 0.5", "view frame-all"});
  const std::string body = "Car_CarBodyMesh", camera = "Car_FollowCam";
  studio.Do("view eye target=0,0.5,0 distance=12 yaw=30 pitch=20");
  const Json at = studio.Do("project " + body);
  ASSERT_EQ(at["inside"], true) << at;
  const Json view = studio.Do("view");
  EXPECT_NEAR(view["eye"]["yaw"], 30.0, 1e-9);
  EXPECT_EQ(view["eye"]["distance"], 12.0);
  EXPECT_NEAR(at["x"], view["width"].get<double>() / 2.0, 60.0);
  const auto pick = [&](double x, double y) {
    return studio.Do("pick " + std::to_string(x) + " " + std::to_string(y))["node"];
  };
  EXPECT_FALSE(pick(at["x"], at["y"]).is_null());
  EXPECT_TRUE(pick(1.0, 1.0).is_null()) << "the sky";
  studio.Do("view eye yaw=210 pitch=0 target=0,0.5,30");  // between them, looking away
  EXPECT_EQ(studio.Do("project " + body)["inside"], false);
  EXPECT_EQ(studio.Do("view shading wire")["shading"], "wire");
  EXPECT_EQ(studio.Do("view grid off")["grid"], false);
  EXPECT_EQ(studio.Do("view look " + camera)["look"], camera);
  EXPECT_TRUE(studio.Do("view look")["look"].is_null());
  for (const std::string& wrong :
       {std::string("pick 9999 0"), std::string("project Nowhere"), "view look " + body,
        std::string("view shading pink"), std::string("view eye yaw=x"), std::string("view up")}) {
    studio.Send(wrong);
    const Json answer = studio.Read();
    EXPECT_EQ(answer["ok"], false) << wrong;
    EXPECT_FALSE(answer["error"].get<std::string>().empty()) << wrong;
  }
}

}  // namespace orv::tests
