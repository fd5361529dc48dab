// The program killed at any moment; ORV_KILLS is how often.
#include <QElapsedTimer>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "app/session/SceneSession.h"
#include "app/session/document/Recovery.h"
#include "core/services/DataRoot.h"
#include "studio/DrivenStudio.h"
#include "support/TempFolder.h"
#include "support/WidgetApplication.h"

namespace orv::tests {

namespace {

/// What the program had answered when it died.
struct Seen {
  bool saved = false;
  double began = 0.0;      ///< time at which the last take began (s)
  double take = 0.0;       ///< its time as told last (s)
  bool recording = false;  ///< at the last answer
};

/// Edits, saves and performs by turns until `moment` (ms); then it is gone.
Seen LiveUntil(DrivenStudio& studio, const std::string& path, int moment) {
  QElapsedTimer clock;
  clock.start();
  Seen seen;
  const std::vector<std::string> commands{
      "click double id=321 row=\"Accessory/Orvel 1D positioner\"", "save " + path, "record",
      "state", "stop"};
  std::size_t next = 0;
  qint64 takeBegan = 0;
  while (clock.elapsed() < moment) {
    const std::string& command = commands[next];
    studio.Send(command);
    const auto answer = studio.Read(std::max<int>(1, moment - static_cast<int>(clock.elapsed())));
    if (answer.is_null()) break;
    EXPECT_TRUE(answer.value("ok", false)) << command << ": " << answer;
    if (next == 1) seen.saved = true;
    if (next == 2) takeBegan = clock.elapsed();
    if (next == 3) {
      if (!seen.recording) seen.began = answer["time"].get<double>();
      seen.recording = answer["run"] == "recording";
      seen.take = answer["time"].get<double>();
    }
    // A take of a second and a half, looked at all the time.
    const bool goesOn = next == 3 && clock.elapsed() < takeBegan + 1500;
    if (!goesOn) next = (next + 1) % commands.size();
    if (next == 0) seen.recording = false;
  }
  studio.Kill();
  return seen;
}

}  // namespace

TEST(Kills, LoseNoSaveNoAutosaveAndAtMostASecondOfATake) {
  const char* const wanted = std::getenv("ORV_KILLS");
  const int count = wanted ? std::atoi(wanted) : 5;
  std::mt19937 random(20261122);
  int takes = 0, saves = 0, autosaves = 0;
  for (int i = 0; i < count; ++i) {
    SCOPED_TRACE(i);
    const TempFolder folder;
    const std::string root = folder.path + "/root", path = folder.path + "/a.glb";
    folder.Write("root/data/core/preferences.xml",
                 "<?xml version=\"1.0\"?><preferences><preference name=\"Start Countdown time\">0"
                 "</preference></preferences>");
    DrivenStudio studio(root);
    studio.Do("device Pad");
    // Half of them early, where edits, the save and the autosave are.
    const int moment = std::uniform_int_distribution<int>(5, i % 2 ? 2400 : 150)(random);
    const Seen seen = LiveUntil(studio, path, moment);
    app::SceneSession session;
    if (seen.saved || std::filesystem::exists(path)) {
      EXPECT_EQ(session.Open(path), "") << "at " << moment << " ms";
      ++saves;
    }
    rws::core::DataRoot::Set(root);
    std::vector<app::Leftover> left = app::FindLeftovers();
    rws::core::DataRoot::Set("");
    for (app::Leftover& leftover : left) {
      ++autosaves;
      EXPECT_EQ(session.Open(leftover.GetAutosave()), "");
    }
    if (!seen.recording) continue;
    ++takes;
    ASSERT_EQ(left.size(), 1u);
    EXPECT_GE(left[0].hasTake ? left[0].take.end : seen.began, seen.take - 1.0)
        << "at " << moment << " ms";
  }
  std::printf("%d kills: %d saves and %d autosaves open, %d within a take\n", count, saves,
              autosaves, takes);
  EXPECT_GE(autosaves, takes);
}

TEST(Kills, AnInterruptedTakeIsOfferedAndTaken) {
  const TempFolder folder;
  const std::string root = folder.path + "/root";
  {
    DrivenStudio studio(root);
    studio.DoAll({"device Pad", "click double id=321 row=\"Accessory/Orvel 1D positioner\"",
                  "move Pad Axis0=0.5", "record", "wait 1.5"});
    studio.Send("crash");
    EXPECT_EQ(studio.Wait(), -1);
  }
  const auto offered = [&root](const char* answer) {
    DrivenStudio studio(root);
    studio.Do("wait 0.1");
    const std::string text = studio.ValueOf("MessageBox", 3);
    EXPECT_EQ(text.find("A take of") != std::string::npos, answer != nullptr) << text;
    if (answer) studio.Do(answer);
    const auto state = studio.State();
    studio.Do("quit");
    studio.Wait();
    return state;
  };
  EXPECT_EQ(offered("click win=MessageBox id=11")["dirty"], false) << "later";
  const auto state = offered("click win=MessageBox id=12");
  EXPECT_EQ(state["dirty"], true);
  EXPECT_EQ(state["undo"].size(), 1u) << state;
  offered(nullptr);  // who quit knew what there was
}

}  // namespace orv::tests
