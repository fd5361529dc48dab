// The manipulator by mouse and keys, in a program of its own.
#include <QImage>
#include <map>

#include "adaptor/headless/HeadlessDocument.h"
#include "app/studio/view/manipulator/Handles.h"
#include "studio/DrivenStudio.h"
#include "studio/LoadedScene.h"
#include "studio/StudioRun.h"
#include "studio/XDisplay.h"

namespace orv::tests {

namespace {

namespace view = app::view;
using Vector = util::Vector3<double>;
using StageManipulator = StudioRun;

/// Letters that two entries of one menu share, and entries of ours without one.
std::string CheckLetters(const nlohmann::json& entries, const std::string& where) {
  std::string wrong;
  std::map<QChar, std::string> taken;
  for (const auto& entry : entries) {
    const std::string text = entry["text"];
    const QString shown = QString::fromStdString(text);
    const int at = shown.indexOf('&') + 1;
    if (at == 0 && shown != "Eye") wrong += where + ": no letter: " + text + "\n";
    if (at > 0) {
      std::string& other = taken[shown[at].toLower()];
      if (!other.empty()) wrong += where + ": " + other + ", " + text + "\n";
      other = text;
    }
    if (entry.contains("entries")) wrong += CheckLetters(entry["entries"], text);
  }
  return wrong;
}

}  // namespace

TEST_F(StageManipulator, FollowsRealHandsInThePicture) {
  if (!XDisplay::whatIsMissing().empty())
    GTEST_SKIP() << "NOT TESTED: " << XDisplay::whatIsMissing();
  XDisplay display;
  ASSERT_FALSE(display.name.isEmpty()) << "Xvfb does not start";
  using rws::adaptor::headless::HeadlessDocument;
  std::string error;
  {
    HeadlessDocument document;
    FillScene(document.GetScene());
    document.GetScene().AddNode("Eye").SetLens(rws::adaptor::headless::Lens());
    ASSERT_TRUE(document.Save(Path("a.glb"), error)) << error;
  }
  const auto read = [&](const char* name, const char* node = "Load") {
    HeadlessDocument document;
    EXPECT_TRUE(document.Open(Path(name), error)) << error;
    return document.GetScene().Find(node)->WorldMatrix(0.0);
  };
  DrivenStudio studio(Path("root"), {QString::fromStdString(Path("a.glb"))},
                      {"DISPLAY=" + display.name, kNoLeaks});
  Json shown;
  const Json dump = studio.Do("dump MainWindow");
  for (const Json& widget : dump["windows"][0]["widgets"])
    if (widget["id"] == "stage") shown = widget["rect"];
  if (shown.is_null()) GTEST_SKIP() << "NOT TESTED: the server has no OpenGL 3.3";
  const double width = shown[2], height = shown[3];
  const auto click = [&](const view::Pixel& at) {
    return "at=" + std::to_string(std::lround(at.x)) + "," + std::to_string(std::lround(at.y));
  };
  // All of the scene is the load, in whose middle its origin is.
  const view::Pixel middle{width / 2, height / 2};
  studio.DoAll({"wait 0.5", "view frame-all", "click id=stage " + click(middle), "wait 0.3"});
  const util::Matrix<double> start = read("a.glb");
  util::Box box;
  for (const auto& vertex : util::CMesh_Box(1.0, 1.0, 1.0).vertices)
    box.add(start.transformPoint(vertex));
  view::OrbitEye eye;
  eye.Frame(box, 45.0, width / height);
  const view::ViewFrame view(eye.GetPose(), view::Optics(), width, height);
  view::Frame frame;
  frame.origin = start.translation();
  const double size = view::Handles(view::Tool::kMove, frame, view, 1.0).GetSize();
  view::Pixel grip, to;
  ASSERT_TRUE(view.Project(frame.origin + frame.axes[0] * (0.7 * size), grip));
  ASSERT_TRUE(view.Project(frame.origin + frame.axes[0] * (1.7 * size), to));
  const auto drag = [&](const view::Pixel& way) {
    return "drag id=stage " + click(grip) + " by=" + std::to_string(std::lround(way.x)) + "," +
           std::to_string(std::lround(way.y)) + " steps=6";
  };
  studio.DoAll({drag(to - grip), "save " + Path("b.glb")});
  EXPECT_EQ(studio.State()["undo"], Json({"Move #Load"}));
  const Vector way = read("b.glb").translation() - start.translation();
  EXPECT_NEAR(way.x, size, 3.0 * view.PixelSize(frame.origin));
  EXPECT_LT(std::abs(way.y) + std::abs(way.z), 1e-12);
  // The same by the verb, whose numbers are the carrier's.
  const auto number = [](double value) { return QString::number(value, 'g', 17); };
  const auto place = [&](double x) {
    Rigwright({"place", "a.glb", "Load", "--translate", "0.25,0.5," + number(0.75 + 0.5 * x), "-o",
               "c.glb"});
    return read("c.glb");
  };
  const auto off = [](const util::Matrix<double>& a, const util::Matrix<double>& b) {
    double off = 0.0;
    for (int i = 0; i < 16; ++i) off = std::max(off, std::abs(a[i] - b[i]));
    return off;
  };
  EXPECT_LT(off(place(way.x), read("b.glb")), 1e-12);
  studio.DoAll({"key Ctrl+Z", "key G", "key X", "type 1,5", "key Escape"});
  EXPECT_EQ(studio.State()["undoPosition"], 0);
  studio.DoAll({"key G", "key X", "type 1,5", "key Return", "save " + Path("b.glb")});
  EXPECT_EQ(studio.State()["undoPosition"], 1);
  EXPECT_LT(off(place(1.5), read("b.glb")), 1e-12);
  // A click on a handle is none of the picture's, and no movement.
  studio.DoAll({"key Ctrl+Z", "wait 0.3", "click id=stage " + click(grip), "key Ctrl+Right"});
  EXPECT_EQ(studio.State()["undoPosition"], 1);

  // What snaps does so as soon as Ctrl is down, wherever the pointer is, and until it is up.
  const auto told = [&] {
    const Json all = studio.Do("dump MainWindow");
    for (const Json& widget : all["windows"][0]["widgets"])
      if (widget["id"] == "manipulatorNumbers") return widget["value"].get<std::string>();
    return std::string();
  };
  const auto hover = [&](double by) {
    return "hover id=stage " + click({middle.x + by, middle.y});
  };
  studio.DoAll({"key Ctrl+Z", hover(0), "key G", "key X", hover(37)});
  const std::string free = told();
  studio.Do("press Ctrl");
  const std::string snapped = told();
  EXPECT_NE(snapped, free);
  studio.Do(hover(37) + " with=ctrl");
  EXPECT_EQ(told(), snapped);
  studio.Do("release Ctrl");
  EXPECT_EQ(told(), free);
  studio.Do("key Escape");
  EXPECT_EQ(told(), "");
  // Keys of the other preset choose, and take hold of nothing.
  studio.DoAll({"view mouse maya", "key E", hover(60)});
  EXPECT_EQ(told(), "");
  for (const auto& [key, steps] : {std::pair{"W", 1}, {"Q", 0}}) {
    studio.DoAll({std::string("key ") + key, "wait 0.2", drag(to - grip), "wait 0.2"});
    EXPECT_EQ(studio.State()["undoPosition"], steps) << key;
    studio.DoAll(
        {"click row=Carrier/Load", "click middle id=stage " + click(middle), "key Ctrl+Z"});
  }
  // A camera that one looks through goes with the pointer, and not after itself.
  studio.DoAll({"view mouse blender", "click row=Eye", "view look Eye",
                "click middle id=stage " + click(middle), hover(0), "key G", "key X", hover(60)});
  const auto amount = [&] { return QString::fromStdString(told()).section(' ', 2, 2).toDouble(); };
  const double once = amount();
  EXPECT_GT(once, 0.1) << "told: " << told();
  studio.DoAll({"wait 0.2", hover(120)});
  EXPECT_NEAR(amount(), 2.0 * once, 0.02 * once);
  studio.DoAll({"key Return", "save " + Path("d.glb")});
  const Vector gone = read("d.glb", "Eye").translation();
  EXPECT_NEAR(gone.x, 2.0 * once, 0.02 * once);
  EXPECT_LT(std::abs(gone.y) + std::abs(gone.z), 1e-12);
}

TEST_F(StageManipulator, EachEntryOfThePicturesMenuHasALetterOfItsOwn) {
  if (!XDisplay::whatIsMissing().empty())
    GTEST_SKIP() << "NOT TESTED: " << XDisplay::whatIsMissing();
  XDisplay display;
  std::string error;
  {
    rws::adaptor::headless::HeadlessDocument document;
    FillScene(document.GetScene());
    document.GetScene().AddNode("Eye").SetLens(rws::adaptor::headless::Lens());
    ASSERT_TRUE(document.Save(Path("a.glb"), error)) << error;
  }
  for (const char* language : {"en", "de"}) {
    DrivenStudio studio(Path("root"), {QString::fromStdString(Path("a.glb")), "--lang", language},
                        {"DISPLAY=" + display.name, kNoLeaks});
    studio.DoAll({"wait 1", "click row=Carrier/Load", "click right id=stage at=20,20", "wait 0.4"});
    std::size_t menus = 0;
    const Json all = studio.Do("dump");
    for (const Json& window : all["windows"])
      for (const Json& widget : window["widgets"])
        if (widget.contains("entries") && widget["entries"].size() > 8) {
          ++menus;
          EXPECT_EQ(CheckLetters(widget["entries"], language), "");
        }
    EXPECT_EQ(menus, 1u);
    // It is seen in pictures too, where it sticks out of the window as well.
    studio.DoAll({"shot " + Path("menu.png"), "key Escape", "shot " + Path("none.png")});
    const QImage menu(QString::fromStdString(Path("menu.png")));
    const QImage none(QString::fromStdString(Path("none.png")));
    EXPECT_EQ(none.size(), QSize(1200, 800));
    int changed = 0;
    for (int x = 0; x < none.width(); ++x)
      for (int y = 0; y < none.height(); ++y) changed += menu.pixel(x, y) != none.pixel(x, y);
    EXPECT_GT(changed, 20000);
  }
}

}  // namespace orv::tests
