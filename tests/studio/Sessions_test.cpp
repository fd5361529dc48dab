// Whole sessions: a take that is repeated in three ways, and hands of the window system beside the
// script's.
#include <cmath>
#include <sstream>

#include "studio/StudioRun.h"
#include "studio/XDisplay.h"
#include "support/WithoutTakes.h"

namespace orv::tests {

namespace {

class Sessions : public StudioRun {
 protected:
  /// A scene of the program's own, with 2 s to fill.
  void MakeScene(const QString& name) {
    Script("new\nsave " + name.toStdString() + "\n");
    Rigwright({"range", name, "--end", "2", "-o", name});
  }
  std::string Poses(const QString& scene, const QString& end) {
    Rigwright({"export", scene, "--range", "0:" + end, "-o", "poses.csv"});
    return folder.Read("poses.csv");
  }
};

}  // namespace

TEST_F(Sessions, TakesAreRepeatedByWindowAndCommandLine) {
  MakeScene("base.glb");
  int inputs = 0;
  for (const char* kind : {"4WheelerExt", "DirectInputLink", "Firepower", "1DPositioner",
                           "1DRotator", "1DScaler", "MotionFilterCam"})
    Rigwright({"add", "base.glb", kind, "--name", QString(kind) + "A", "-o", "base.glb"});
  const Json info = Json::parse(Rigwright({"info", "base.glb", "--json"}));
  for (const Json& rig : info["rigs"])
    for (const Json& input : rig["inputs"])
      Rigwright({"map", "base.glb",
                 QString::fromStdString(rig["name"].get<std::string>() + ":" +
                                        input["name"].get<std::string>()),
                 "Pad", "Axis", QString::number(inputs++ % 4), "-o", "base.glb"});
  ASSERT_GT(inputs, 15);
  std::ostringstream feed;
  feed << "time,Axis0,Axis1,Axis2,Axis3\n";
  for (int i = 0; i <= 60; ++i)
    feed << i * 0.05 << "," << std::sin(0.3 * i) << "," << std::cos(0.2 * i) << ","
         << (i % 20 > 10 ? 1 : -0.5) << "," << (i < 30 ? 0.01 * i : 0.0)
         << "\n";  // no shot in the last frame, which a take leaves out
  folder.Write("feed.csv", feed.str());
  const auto answers = Script(
      "open base.glb\ndevice Pad\nfeed feed.csv\nclick id=113\nclick id=400\nwait-idle\n"
      "save take.glb\nclick id=112\nclick id=117\nwait-idle\nsave window.glb\n"
      // Thrown away while it runs, and the one that follows by undo.
      "click id=400\nwait 0.4\nkey Ctrl+Z\nwait 0.2\nstate\nkey Space\nwait-idle\nkey Ctrl+Z\n"
      "state\nsave retried.glb\n",
      {}, {"DISPLAY="});
  ASSERT_EQ(answers.size(), 21u);
  EXPECT_EQ(answers[15]["run"], "recording");
  EXPECT_EQ(answers[15]["undo"].size(), answers[19]["undoPosition"].get<std::size_t>());
  EXPECT_EQ(withoutTakes(folder.Read("retried.glb")) == withoutTakes(folder.Read("window.glb")),
            true);
  Rigwright({"resim", "take.glb", "-o", "line.glb"});
  const std::string taken = Poses("take.glb", "1.96");
  EXPECT_EQ(taken == Poses("window.glb", "1.96"), true);
  EXPECT_EQ(taken == Poses("line.glb", "1.96"), true);
  EXPECT_EQ(Poses("window.glb", "2") == Poses("line.glb", "2"), true);

  // Once more with the scene's picture, which the others went without.
  if (QStandardPaths::findExecutable("Xvfb").isEmpty())
    GTEST_SKIP() << "NOT TESTED with a picture: there is no Xvfb (scripts/setup.sh installs it)";
  XDisplay display;
  ASSERT_FALSE(display.name.isEmpty()) << "Xvfb does not start";
  const auto seen = Script(
      "open base.glb\ndump MainWindow\ndevice Pad\nfeed feed.csv\nclick id=400\n"
      "wait-idle\nsave seen.glb\n",
      {}, {"DISPLAY=" + display.name, kNoLeaks});
  ASSERT_EQ(seen.size(), 7u);
  EXPECT_NE(seen[1].dump().find("\"stage\""), std::string::npos) << "there is a picture";
  EXPECT_EQ(taken == Poses("seen.glb", "1.96"), true);
}

TEST_F(Sessions, ScriptAndWindowSystemLeaveOneScene) {
  if (!XDisplay::whatIsMissing().empty()) GTEST_SKIP() << XDisplay::whatIsMissing();
  XDisplay display;
  ASSERT_FALSE(display.name.isEmpty()) << "Xvfb does not start";
  MakeScene("script.glb");
  folder.Write("hands.glb", folder.Read("script.glb"));
  const QStringList variables{"QT_QPA_PLATFORM=xcb", "DISPLAY=" + display.name, kNoLeaks};
  const auto answers = Script(
      "dump MainWindow\nclick id=320\ntype rotat\nkey Return\nkey Ctrl+D\nclick id=406\nkey "
      "Ctrl+A\n"
      "type 4\nkey Return\nkey Ctrl+S\nstate\n",
      {"script.glb"}, variables);
  ASSERT_EQ(answers.size(), 11u);
  EXPECT_EQ(answers[10]["undoPosition"], 3) << answers[10];
  EXPECT_EQ(answers[10]["dirty"], false);
  const auto place = [&](const char* id) {
    for (const Json& widget : answers[0]["windows"][0]["widgets"])
      if (widget["id"] == id) {
        const auto r = widget["rect"].get<std::vector<int>>();
        return QString("mousemove %1 %2 click 1").arg(r[0] + r[2] / 2).arg(r[1] + r[3] / 2);
      }
    return QString();
  };
  QProcess studio;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const QString& variable : variables)
    environment.insert(variable.section('=', 0, 0), variable.section('=', 1));
  studio.setProcessEnvironment(environment);
  studio.setWorkingDirectory(QString::fromStdString(folder.path));
  studio.start(STUDIO_PROGRAM,
               {"hands.glb", "--geometry", "1300x850+0+0", "--lang", "en", "--data-root", "hands"});
  ASSERT_TRUE(studio.waitForStarted());
  display.Do("search --sync --onlyvisible --name hands.glb windowfocus");
  for (const QString& command :
       {place("320"), QString("type rotat"), QString("key Return"), QString("key ctrl+d"),
        place("406"), QString("key ctrl+a"), QString("type 4"), QString("key Return"),
        QString("key ctrl+s"), QString("key ctrl+q")})
    display.Do(command);
  EXPECT_TRUE(studio.waitForFinished(20000)) << "it does not quit";
  studio.kill();
  studio.waitForFinished();
  EXPECT_EQ(folder.Read("hands.glb") == folder.Read("script.glb"), true);
}

}  // namespace orv::tests
