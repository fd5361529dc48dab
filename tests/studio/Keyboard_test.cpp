// A take by the keys of an X server.
#include <sstream>

#include "studio/DrivenStudio.h"
#include "studio/StudioRun.h"
#include "studio/XDisplay.h"

namespace orv::tests {

namespace {

using Keyboard = StudioRun;

}  // namespace

TEST_F(Keyboard, DrivesByPlaceWhileOurWindowHasTheFocus) {
  if (!XDisplay::whatIsMissing().empty()) GTEST_SKIP() << XDisplay::whatIsMissing();
  XDisplay display;
  ASSERT_FALSE(display.name.isEmpty()) << "Xvfb does not start";
  Script("new\nsave a.glb\n");
  Rigwright({"range", "a.glb", "--end", "60", "-o", "a.glb"});
  Rigwright({"add", "a.glb", "1DPositioner", "--name", "P", "-o", "a.glb"});
  const Json info = Json::parse(Rigwright({"info", "a.glb", "--json"}));
  const std::string input = info["rigs"][0]["inputs"][0]["name"];
  Rigwright(
      {"map", "a.glb", QString::fromStdString("P:" + input), "Keyboard", "Y", "0", "-o", "a.glb"});
  display.Run("setxkbmap", {"de"});
  const QStringList variables{"QT_QPA_PLATFORM=xcb", "DISPLAY=" + display.name, kNoLeaks};
  DrivenStudio studio(Path("root"), {QString::fromStdString(Path("a.glb"))}, variables);
  studio.Do("wait 1");
  const auto focus = [&](const QString& window) { display.Do(window + " windowfocus"); };
  const QString ours = "search --sync --onlyvisible --name a.glb";
  focus(ours);
  // A field that was typed in before does not keep the keys.
  studio.DoAll({"click id=406", "record", "wait 0.3"});
  ASSERT_EQ(studio.State()["run"], "recording");
  // The server's numbers of the keys that a German keyboard has for them.
  const QString letterZ = "29", letterY = "52";
  display.Do("keydown " + letterZ);  // at the place of Y
  studio.Do("wait 0.4");
  display.Do("keyup " + letterZ);
  display.Do("key " + letterY);
  display.Do("keydown " + letterZ);
  focus("search --maxdepth 0 --class .*");  // of the root
  studio.Do("wait 0.4");
  display.Do("keyup " + letterZ);
  focus(ours);
  EXPECT_GT(studio.State()["pictures"]["painted"].get<int>(), 3) << "seen in their own window";
  studio.DoAll({"wait 0.3", "stop", "save " + Path("b.glb")});
  Rigwright({"inputs", "b.glb", "-o", "keys.csv"});
  std::istringstream rows(folder.Read("keys.csv"));
  std::string row, states;
  for (std::getline(rows, row); std::getline(rows, row);) {
    const char now = row.substr(row.find(',') + 1)[0];
    if (states.empty() || states.back() != now) states += now;
  }
  EXPECT_EQ(states, "01010") << "held, let go, held, and let go with the focus";
}

}  // namespace orv::tests
