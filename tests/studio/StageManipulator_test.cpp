// The manipulator by mouse and keys, in a program of its own.
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
    ASSERT_TRUE(document.Save(Path("a.glb"), error)) << error;
  }
  const auto read = [&](const char* name) {
    HeadlessDocument document;
    EXPECT_TRUE(document.Open(Path(name), error)) << error;
    return document.GetScene().Find("Load")->WorldMatrix(0.0);
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
  studio.DoAll({"wait 0.5", "click id=stage " + click(middle), "wait 0.3"});
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
}

}  // namespace orv::tests
