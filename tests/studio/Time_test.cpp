// Time line, playback, sound, pictures behind cameras and previews, as a user has them.
#include <QImage>
#include <cmath>
#include <filesystem>

#include "core/windows/MainWindowIds.h"
#include "studio/DrivenStudio.h"
#include "studio/XDisplay.h"
#include "support/TempFolder.h"

namespace orv::tests {

namespace {

using Json = nlohmann::json;
namespace fs = std::filesystem;
using rws::core::windows::kMainNoticeText;
using rws::core::windows::kMainTimeline;
using rws::core::windows::kTakeFrame;

class Time : public testing::Test {
 protected:
  static int Frame(DrivenStudio& studio) { return studio.State()["frame"]; }

  /// A second and a half of one channel at 8 kHz; each sample tells its place.
  std::string WriteSound() const {
    std::string bytes;
    const auto put = [&bytes](std::uint32_t value, int size) {
      for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i));
    };
    constexpr std::uint32_t kSamples = 12000, kRate = 8000;
    bytes += "RIFF";
    put(36 + 2 * kSamples, 4);
    bytes += "WAVEfmt ";
    for (const auto& [value, size] :
         {std::pair{16u, 4}, {1u, 2}, {1u, 2}, {kRate, 4}, {2 * kRate, 4}, {2u, 2}, {16u, 2}})
      put(value, size);
    bytes += "data";
    put(2 * kSamples, 4);
    for (std::uint32_t i = 0; i < kSamples; ++i) put(1 + i, 2);
    return folder.Write("beep.wav", bytes);
  }
  /// A camera that looks at nothing but its sequence of two pictures, red and green, and an empty
  /// node that crosses its view.
  std::string WriteScene(const std::string& end = "0.16") const {
    for (int i = 1; i <= 2; ++i) {
      QImage picture(8, 6, QImage::Format_RGB888);
      picture.fill(i == 1 ? Qt::red : Qt::green);
      picture.save(QString::fromStdString(folder.path) + "/plate." + QString::number(i) + ".png");
    }
    return folder.Write("scene.gltf", R"({"asset": {"version": "2.0"}, "scene": 0,
      "scenes": [{"nodes": [0, 1], "extras": {"rigwright": {"version": 1, "frameRate": 25,
        "range": [0, )" + end + R"(], "sound": {"file": "beep.wav", "start": 0.04}}}}],
      "nodes": [{"name": "Eye", "camera": 0, "translation": [0, 5, 0],
        "extras": {"RWT_backdrop": {"file": "plate.1.png", "frame": 2, "opacity": 1}}},
        {"name": "Ball"}],
      "buffers": [{"byteLength": 32, "uri":
        "data:application/octet-stream;base64,AAAAAArXIz4AAADAAACgQAAAoMAAAABAAACgQAAAoMA="}],
      "bufferViews": [{"buffer": 0, "byteLength": 8}, {"buffer": 0, "byteOffset": 8,
        "byteLength": 24}],
      "accessors": [{"bufferView": 0, "componentType": 5126, "count": 2, "type": "SCALAR",
        "min": [0], "max": [0.16]}, {"bufferView": 1, "componentType": 5126, "count": 2,
        "type": "VEC3"}],
      "animations": [{"samplers": [{"input": 0, "output": 1}],
        "channels": [{"sampler": 0, "target": {"node": 1, "path": "translation"}}]}],
      "cameras": [{"type": "perspective",
                   "perspective": {"yfov": 0.8, "znear": 0.1, "aspectRatio": 1.3333}}]})");
  }

  TempFolder folder;
  const std::string root = folder.path + "/root";
};

}  // namespace

TEST_F(Time, IsScrubbedSteppedAndPlayedUntilATakeBegins) {
  DrivenStudio studio(root);
  // Its rows of parameters have found their places then.
  studio.DoAll({"click double id=321 row=\"Accessory/Orvel 1D positioner\"", "wait 0.5"});
  const Json shown = studio.Do("dump MainWindow")["windows"][0]["widgets"];
  int width = 0, height = 0;
  for (const Json& widget : shown)
    if (widget["id"] == std::to_string(kMainTimeline)) {
      width = widget["rect"][2];
      height = widget["rect"][3];
    }
  ASSERT_GT(width, 400);
  const std::string line = " id=" + std::to_string(kMainTimeline);
  const auto at = [&](double frame, int y) {
    // 250 frames, and 3 in a hundred of the line beside them on each side.
    const double x = width * (0.5 + 0.94 * (frame - 125.0) / 250.0);
    return line + " at=" + std::to_string(std::lround(x)) + "," + std::to_string(y);
  };
  studio.ExpectReadable("MainWindow");
  studio.Do("click" + at(100, 20));
  EXPECT_EQ(Frame(studio), 100);
  EXPECT_EQ(studio.ValueOf("MainWindow", kTakeFrame), "100");
  for (const auto& [key, frame] : {std::pair{"Right", 101},
                                   {"Shift+Left", 91},
                                   {"Alt+Left", 90},
                                   {"Alt+End", 250},
                                   {"Home", 0},
                                   {"PgDown", 25},
                                   {"Alt+Right", 26}}) {
    studio.Do(std::string("key ") + key);
    EXPECT_EQ(Frame(studio), frame) << key;
  }
  // The range by its end, which is one step; then at its new end there is nothing left to play.
  const std::size_t steps = studio.State()["undoPosition"];
  studio.Do("drag" + at(250, height - 6) + " to-at=" + at(50, 0).substr(at(50, 0).find("at=") + 3));
  EXPECT_EQ(studio.State()["undoPosition"], steps + 1);
  EXPECT_EQ(studio.State()["undo"].back(), "Playback range");
  studio.DoAll({"key Alt+End", "key F8", "wait 0.4"});
  const int played = Frame(studio);
  EXPECT_TRUE(studio.State()["playing"] && played > 1 && played < 30) << played;
  studio.DoAll({"key F8", "wait 0.1"});
  EXPECT_FALSE(studio.State()["playing"]);
  studio.DoAll({"click id=3049", "key Shift+F8", "wait 0.2"});
  EXPECT_TRUE(studio.State()["playing"]) << "round and round";
  studio.DoAll({"record", "wait 0.3"});
  EXPECT_FALSE(studio.State()["playing"]);
  const int taken = Frame(studio);
  studio.DoAll({"click" + at(0, 20), "wait 0.1"});
  EXPECT_GE(Frame(studio), taken);
  EXPECT_NE(studio.ValueOf("MainWindow", kMainNoticeText).find("take"), std::string::npos);
  studio.DoAll({"stop", "quit 0"});
}

TEST_F(Time, SoundIsHeardInPlaybackAndInTakesThatAreNotSlowed) {
  WriteSound();
  const std::string scene = WriteScene(), raw = folder.path + "/out.raw";
  DrivenStudio studio(root, {},
                      {"SDL_AUDIODRIVER=disk", QString::fromStdString("SDL_DISKAUDIOFILE=" + raw)});
  studio.DoAll({"open " + scene, "key F8", "wait 0.12"});
  studio.Do("wait 0.3");
  EXPECT_FALSE(studio.State()["playing"]) << "four frames are soon over";
  const std::string bytes = folder.Read("out.raw");
  const auto* played = reinterpret_cast<const std::int16_t*>(bytes.data());
  ASSERT_GT(bytes.size(), 1000u);
  // A frame of silence, but for what the first picture took; then the sound from its beginning.
  std::size_t first = 0;
  while (first < bytes.size() / 2 && played[first] == 0) ++first;
  EXPECT_LE(first, 0.14 * 8000);
  EXPECT_LT(played[first], 0.1 * 8000);
  // Where the machine was late it goes on as it should be.
  int jumps = 0;
  for (std::size_t i = first + 1; i < bytes.size() / 2; ++i)
    jumps += played[i] != played[i - 1] + 1 ? 1 : 0;
  EXPECT_LE(jumps, 2);
  EXPECT_LT(played[bytes.size() / 2 - 1], 0.3 * 8000) << "no longer than the range";

  studio.DoAll({"click double id=321 row=\"Accessory/Orvel 1D positioner\"", "key Alt+Home",
                "record", "wait 0.2"});
  EXPECT_EQ(studio.State()["run"], "recording");
  EXPECT_TRUE(studio.State()["heard"]);
  studio.DoAll({"key +", "wait 0.1"});
  EXPECT_FALSE(studio.State()["heard"]) << "slowed";
  studio.DoAll({"stop", "wait 0.1"});
  EXPECT_FALSE(studio.State()["heard"]);
  fs::remove(folder.path + "/beep.wav");
  studio.DoAll({"open " + scene, "wait 0.2"});
  const std::string told = studio.ValueOf("MainWindow", kMainNoticeText);
  EXPECT_NE(told.find("beep.wav is not heard: there is no such file"), std::string::npos) << told;
  studio.Do("quit 0");
}

TEST_F(Time, PreviewsAreWholeFoldersAndShowWhatStandsBehindTheCamera) {
  WriteSound();
  const std::string scene = WriteScene(), out = folder.path + "/out",
                    other = folder.path + "/other";
  if (const std::string missing = XDisplay::whatIsMissing(); !missing.empty())
    GTEST_SKIP() << missing;
  const XDisplay display;
  DrivenStudio studio(root, {"--quality", "fixed"}, {"DISPLAY=" + display.name, kNoLeaks});
  studio.DoAll({"open " + scene, "key Alt+Right"});
  studio.Send("preview " + out + " camera=Eye size=64x48");
  const Json answer = studio.Read(60000);
  if (answer.value("error", "").find("OpenGL") != std::string::npos)
    GTEST_SKIP() << answer["error"] << "; install libgl1-mesa-dri";
  ASSERT_TRUE(answer.value("ok", false)) << answer;
  EXPECT_EQ(Frame(studio), 1) << "where it was";
  studio.Do("preview " + other + " camera=Eye size=64x48");
  EXPECT_EQ(std::distance(fs::directory_iterator(out), {}), 5);
  for (int frame = 0; frame <= 4; ++frame) {
    const std::string name = "/frame.000" + std::to_string(frame) + ".png";
    EXPECT_EQ(folder.Read("out" + name), folder.Read("other" + name));
    const QImage picture(QString::fromStdString(out + name));
    ASSERT_EQ(picture.size(), QSize(64, 48));
    // The chosen picture shows at frame 2; the first stands before it, the last behind it.
    EXPECT_EQ(picture.pixelColor(5, 5), frame <= 2 ? QColor(Qt::red) : QColor(Qt::green)) << frame;
  }
  studio.Send("preview " + out);
  EXPECT_NE(studio.Read()["error"].get<std::string>().find("there are files already"),
            std::string::npos);
  studio.Send("preview " + folder.path + "/no/such/place");
  EXPECT_FALSE(studio.Read().value("ok", true));
  EXPECT_FALSE(fs::exists(out + ".part"));
  // What the view shows over its pictures: the way of what is selected, brighter behind it.
  studio.DoAll(
      {"click row=Ball", "preview " + folder.path + "/over camera=Eye size=64x48 overlay=yes"});
  const QImage over(QString::fromStdString(folder.path + "/over/frame.0002.png"));
  EXPECT_GT(over.pixelColor(20, 24).blue(), over.pixelColor(44, 24).blue() + 10);
  EXPECT_GT(over.pixelColor(44, 24).blue(), 10);
  EXPECT_EQ(over.pixelColor(44, 10), QColor(Qt::red));

  // One that is cancelled leaves nothing, whatever had been written.
  const std::string part = folder.path + "/some.part";
  studio.DoAll({"open " + WriteScene("60"), "click win=MainWindow menu=File",
                "click action=\"Export a preview...\""});
  studio.ExpectReadable("Preview");
  studio.DoAll({"click win=Preview id=15", "click win=Preview id=20",
                "type " + folder.path + "/some", "key Return"});
  for (int i = 0; i < 100 && !studio.Shows("Progress"); ++i) studio.Do("wait 0.1");
  EXPECT_TRUE(fs::exists(part));
  studio.DoAll({"click win=Progress id=12", "wait 0.2"});
  EXPECT_FALSE(fs::exists(part) || fs::exists(folder.path + "/some"));
  EXPECT_NE(studio.ValueOf("MainWindow", kMainNoticeText).find("nothing of it was kept"),
            std::string::npos);
  studio.Do("quit 0");
}

}  // namespace orv::tests
