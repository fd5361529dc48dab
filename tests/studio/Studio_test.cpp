// The desktop program by its windows, as a user has it.
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <filesystem>

#include "app/session/SceneSession.h"
#include "app/studio/Studio.h"
#include "core/CoreImplementation.h"
#include "core/services/DataRoot.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/MenuIds.h"
#include "studio/DrivenStudio.h"
#include "support/TempFolder.h"
#include "support/WidgetApplication.h"

namespace orv::tests {

namespace {

using Json = nlohmann::json;

constexpr const char* kOk = "click win=MessageBox id=10";
constexpr const char* kCancel = "click win=MessageBox id=11";
constexpr const char* kYes = "click win=MessageBox id=12";
constexpr const char* kNo = "click win=MessageBox id=13";
constexpr int kBoxText = 3, kNoticeText = 309;
constexpr const char* kNoRig = "There is no rig. Add one from the list of tools.";

class Studio : public testing::Test {
 protected:
  static void Choose(DrivenStudio& studio, const std::string& menu, const std::string& entry) {
    studio.DoAll({"click win=MainWindow menu=" + menu, "click action=\"" + entry + "\""});
  }
  static void ChooseFrom(DrivenStudio& studio, const std::string& menu, const std::string& below,
                         const std::string& entry) {
    Choose(studio, menu, below);
    // A menu that has just opened takes no click yet.
    studio.DoAll({"wait 0.4", "click action=\"" + entry + "\""});
  }
  static void AddRig(DrivenStudio& studio) {
    studio.Do("click double id=321 row=\"Camera/Orvel SoftMotionCam\"");
  }
  static std::size_t Steps(DrivenStudio& studio) { return studio.State()["undoPosition"]; }
  static std::string LastStep(DrivenStudio& studio) {
    const Json undo = studio.State()["undo"];
    return undo.empty() ? std::string() : undo.back().get<std::string>();
  }

  TempFolder folder;
  const std::string root = folder.path + "/root";
};

}  // namespace

TEST_F(Studio, BeginsNoTakeByScriptOrHotKeyThatTheButtonWouldNot) {
  DrivenStudio studio(root);
  studio.Send("record");
  EXPECT_EQ(studio.Read()["error"], kNoRig);
  studio.DoAll({"key Ctrl+Alt+Space", "wait 0.1"});
  EXPECT_EQ(studio.State()["run"], "idle");
  EXPECT_EQ(studio.ValueOf("MainWindow", rws::core::windows::kTakeStatus), kNoRig);
  studio.Send("click row=Nowhere");
  const std::string searched = studio.Read()["error"];
  EXPECT_NE(searched.find("id=321"), std::string::npos) << searched;
  studio.DoAll({"click double row=\"Accessory/Orvel 1D positioner\"", "record", "quit 0"});
}

TEST_F(Studio, ImportsWhatIsDroppedByUnitAndUp) {
  const std::string model = folder.Write(
      "car.obj", "o Cube\nv 0 0 0\nv 420 0 0\nv 420 140 0\nv 0 0 180\nf 1 2 3\nf 1 2 4\n");
  DrivenStudio studio(root);
  studio.Do("drop " + model);
  EXPECT_EQ(studio.ValueOf("Import", 16), "4.2 m wide, 1.4 m high, 1.8 m deep");
  studio.ExpectReadable("Import");
  studio.Do("click win=Import id=21");
  EXPECT_EQ(Steps(studio), 0u) << "cancelled";
  studio.DoAll({"drop " + model, "click win=Import id=14", "key Down", "key Return"});
  EXPECT_EQ(studio.ValueOf("Import", 16), "4.2 m wide, 1.8 m high, 1.4 m deep");
  // A number of the user's own, by either separator.
  studio.DoAll({"click win=Import id=13", "key Ctrl+A", "type 0,1", "key Tab"});
  EXPECT_EQ(studio.ValueOf("Import", 16), "42 m wide, 18 m high, 14 m deep");
  studio.Do("click win=Import id=20");
  EXPECT_EQ(LastStep(studio), "Import car.obj");
  EXPECT_EQ(studio.ValueOf("MainWindow", kNoticeText), "car.obj is in the scene.");
  Choose(studio, "Edit", "Undo Import car.obj");
  EXPECT_EQ(Steps(studio), 0u);
  EXPECT_EQ(studio.State()["dirty"], false);

  const std::string other = folder.Write("thing.xyz", "x"), bad = folder.Write("bad.fbx", "x");
  for (const std::string& file : {other, bad}) {
    studio.Do("drop " + file);
    const std::string told = studio.ValueOf("MessageBox", kBoxText);
    EXPECT_EQ(told.rfind(file, 0), 0u) << told;
    EXPECT_NE(told.find(".glb"), std::string::npos) << "what to do: " << told;
    studio.Do(kOk);
  }

  // A take goes on whatever is dropped or pressed.
  studio.DoAll({"device Pad", "click double id=321 row=\"Accessory/Orvel 1D positioner\"", "record",
                "wait 0.2", "drop " + model, "key Ctrl+S", "wait 0.2"});
  EXPECT_EQ(studio.State()["run"], "recording");
  EXPECT_NE(studio.ValueOf("MainWindow", kNoticeText).find("has to wait"), std::string::npos);
  EXPECT_FALSE(studio.Shows("MessageBox") || studio.Shows("Import"));
  studio.DoAll({"stop", "quit 3"});
  EXPECT_EQ(studio.Wait(), 3);
}

TEST_F(Studio, MakesModelsAndAddsThemUnderFreeNames) {
  DrivenStudio studio(root);
  AddRig(studio);
  const std::string rig = studio.State()["selection"][0];
  Choose(studio, "File", "Make a pre-rigged model...");
  studio.ExpectReadable("MakeModel");
  // The rig that is selected is ticked; only the title is missing.
  studio.DoAll({"type Mine", "click win=MakeModel id=20", "key Return"});
  EXPECT_EQ(Steps(studio), 1u);
  EXPECT_TRUE(std::filesystem::exists(root + "/models/Mine.prm"));
  for (const char* model : {"Mine", "Mine", "Tank"}) {
    const std::size_t before = Steps(studio);
    Choose(studio, "File", "Open a pre-rigged model...");
    studio.DoAll({std::string("click win=Models id=10 row=") + model, "click win=Models id=20"});
    EXPECT_EQ(Steps(studio), before + 1);
    EXPECT_EQ(LastStep(studio), std::string("Add ") + model);
  }
  const std::string path = folder.path + "/scene.glb";
  studio.Do("save " + path);
  app::SceneSession session;
  ASSERT_EQ(session.Open(path), "");
  EXPECT_EQ(session.GetCore().List(false).size(), 7u) << "three of one kind, four of the tank";
  EXPECT_TRUE(session.GetCore().FindInstance(rig));
  Choose(studio, "Edit", "Undo Add Tank");
  EXPECT_EQ(Steps(studio), 3u);

  // By drag and drop; one that is none can't be added.
  const std::string none = folder.Write("none.prm", "x");
  studio.DoAll({"drop " + root + "/models/Mine.prm", "click win=Models id=20"});
  EXPECT_EQ(Steps(studio), 4u);
  studio.Do("drop " + none);
  EXPECT_NE(studio.ValueOf("Models", 14).find("no pre-rigged model"), std::string::npos);
  studio.Do("click win=Models id=20");
  EXPECT_TRUE(studio.Shows("Models")) << "its button is disabled";
  studio.ExpectReadable("Models");
  studio.Do("click win=Models id=21");
}

TEST_F(Studio, ALineIsDrivenOnceMoreByACopyAsOneStep) {
  DrivenStudio studio(root);
  const std::string follow = "Follow a rig's line...";
  Choose(studio, "Take", follow);
  EXPECT_NE(studio.ValueOf("MainWindow", kNoticeText).find("4WheelerExt"), std::string::npos);
  ChooseFrom(studio, "Help", "Examples", "A drive over hills");
  Choose(studio, "Take", follow);
  studio.DoAll({"click win=Follow id=12", "type Second", "click win=Follow id=20"});
  for (int i = 0; i < 100 && !studio.Shows("MessageBox"); ++i) studio.Do("wait 0.1");
  EXPECT_EQ(studio.ValueOf("MessageBox", kBoxText).rfind("Second follows the line of 29", 0), 0u);
  studio.Do(kOk);
  EXPECT_EQ(studio.State()["selection"], Json({"Second"}));
  EXPECT_EQ(LastStep(studio), "Follow Car");
  EXPECT_EQ(Steps(studio), 1u);
  // The name is taken now, and nothing changes.
  Choose(studio, "Take", follow);
  studio.DoAll({"click win=Follow id=12", "type Second", "click win=Follow id=20", "wait 0.2"});
  EXPECT_NE(studio.ValueOf("MessageBox", kBoxText).find("named Second"), std::string::npos);
  studio.Do(kOk);
  EXPECT_EQ(Steps(studio), 1u);
}

TEST_F(Studio, AsksBeforeChangesAreLost) {
  const std::string path = folder.path + "/a.glb";
  const auto size = [&path] { return std::filesystem::file_size(path); };
  DrivenStudio studio(root);
  studio.Do("save " + path);
  const auto empty = size();
  AddRig(studio);
  for (const char* way : {"New", "Open...", "Quit", "Example"}) {
    if (way == std::string("Example"))
      ChooseFrom(studio, "Help", "Examples", "A shaky camera, smoothed");
    else
      Choose(studio, "File", way);
    EXPECT_TRUE(studio.Shows("MessageBox")) << way;
    studio.Do(kCancel);
    EXPECT_EQ(studio.State()["dirty"], true);
    EXPECT_EQ(studio.State()["path"], path);
  }
  studio.DoAll({"drop " + path, kYes});
  EXPECT_EQ(studio.State()["dirty"], false);
  EXPECT_GT(size(), empty) << "saved, and opened again";
  EXPECT_EQ(Steps(studio), 0u);
  AddRig(studio);
  const auto saved = size();
  ChooseFrom(studio, "Help", "Examples", "A drive over hills");
  studio.Do(kNo);
  EXPECT_EQ(size(), saved);
  EXPECT_EQ(studio.State()["path"], "") << "an example is nobody's file";
  EXPECT_EQ(studio.State()["dirty"], false);
  ChooseFrom(studio, "File", "Open recent", "a.glb");
  EXPECT_EQ(studio.State()["path"], path);
  Choose(studio, "File", "Export poses...");
  studio.DoAll({"key Ctrl+A", "type " + folder.path + "/poses.csv", "key Return"});
  EXPECT_EQ(studio.ValueOf("MainWindow", kNoticeText), folder.path + "/poses.csv was written.");
  EXPECT_EQ(folder.Read("poses.csv").rfind("time,node,", 0), 0u);
  Choose(studio, "File", "Export animation...");
  studio.DoAll({"key Ctrl+A", "type " + folder.path + "/poses.usda", "key Return"});
  // The script goes on while it is written.
  const std::string told = folder.path + "/poses.usda was written.";
  for (int i = 0; i < 100 && studio.ValueOf("MainWindow", kNoticeText) != told; ++i)
    studio.Do("wait 0.1");
  EXPECT_EQ(folder.Read("poses.usda").rfind("#usda 1.0", 0), 0u);
  // A delivery has no rigs, and so is never the scene's own file.
  const std::string own = folder.Read("a.glb");
  Choose(studio, "File", "Export for delivery...");
  studio.DoAll(
      {"key Ctrl+A", "type " + path, "key Return", "wait 0.1", "click name=Yes", "wait 0.1"});
  EXPECT_NE(studio.ValueOf("MessageBox", kBoxText).find("own file"), std::string::npos);
  studio.Do(kOk);
  EXPECT_TRUE(folder.Read("a.glb") == own);
  Choose(studio, "Help", "Help");
  EXPECT_NE(studio.ValueOf("Help", 12).find("A car in five minutes"), std::string::npos);
  studio.ExpectReadable("Help");
  studio.Do("click win=MainWindow menu=File");
  studio.Send("click action=Quit");
  EXPECT_EQ(studio.Wait(), 0) << "nothing is lost, nothing is asked";
}

/// A server that takes connections and never answers.
class SilentServer {
 public:
  SilentServer() : m_socket(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (::bind(m_socket, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
        ::listen(m_socket, 4) != 0)
      ADD_FAILURE() << "no socket";
    ::getsockname(m_socket, reinterpret_cast<sockaddr*>(&address), &size);
    port = ntohs(address.sin_port);
  }
  ~SilentServer() { ::close(m_socket); }
  /// Whether somebody has come within so many ms.
  bool IsAsked(int patience) const {
    pollfd look{m_socket, POLLIN, 0};
    return ::poll(&look, 1, patience) == 1;
  }
  int port = 0;

 private:
  int m_socket;
};

TEST_F(Studio, AsksNoServerWithoutConsentAndQuitsAtOnce) {
  rws::core::DataRoot::Set(root);
  const SilentServer server;
  int boxes = 0;
  const auto begin = [&](const char* answer) {
    auto studio = std::make_unique<app::Studio>(app::StudioOptions());
    studio->ScriptedCore().SetQuery(
        {"http://127.0.0.1:" + std::to_string(server.port), "test", "7.0", true});
    std::string problem;
    EXPECT_TRUE(studio->Begin(problem)) << problem;
    QTimer::singleShot(100, [&boxes, answer] {
      if (QWidget* box = QApplication::activeModalWidget())
        ++boxes, box->findChild<QPushButton*>(answer)->click();
    });
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < 200;) QApplication::processEvents();
    return studio;
  };
  begin("13");
  EXPECT_EQ(boxes, 1);
  auto studio = begin("13");
  EXPECT_EQ(boxes, 1) << "asked once";
  EXPECT_TRUE(studio->HasCommand(rws::core::windows::kCommandUpdate));
  EXPECT_FALSE(server.IsAsked(0));
  QTimer::singleShot(
      100, [] { QApplication::activeModalWidget()->findChild<QPushButton*>("12")->click(); });
  studio->RunCommand(rws::core::windows::kCommandUpdate);
  EXPECT_TRUE(server.IsAsked(2000));

  // What a licence leaves out is saved all the same, and told.
  auto& core = studio->ScriptedCore();
  ASSERT_TRUE(core.CreateToolFromFactory("SteadyCam", "Cam"));
  core.SetLicensing(rws::core::Licensing(std::string(32, 'k')));
  EXPECT_EQ(studio->ScriptSave(folder.path + "/a.glb"), "");
  studio->RunCommand(rws::core::windows::kCommandSave);
  std::string told;
  for (QWidget* window : QApplication::topLevelWidgets())
    if (const auto* label = window->findChild<QLabel*>("309")) told = label->text().toStdString();
  EXPECT_NE(told.find("Cam. " + rws::core::Licensing::GetPath()), std::string::npos) << told;

  QElapsedTimer clock;
  clock.start();
  studio.reset();
  EXPECT_LT(clock.elapsed(), 1000);
  rws::core::DataRoot::Set("");
}

}  // namespace orv::tests
