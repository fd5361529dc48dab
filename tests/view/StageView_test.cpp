// What the view draws and picks, against the scene.
#include "app/studio/view/StageView.h"

#include <QTest>
#include <cmath>
#include <random>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/studio/view/Graphics.h"
#include "app/studio/view/SceneFrames.h"
#include "support/Display.h"
#include "util/MeshRays.h"

namespace orv::tests {

namespace {

using namespace app::view;
using namespace rws::adaptor::headless;
using util::CMesh;
using util::Matrix;
using util::MeshRays;
using util::Vector3;

CMesh Box(double x, double y, double z) {
  CMesh mesh;
  for (int i = 0; i < 8; ++i)
    mesh.vertices.emplace_back(i & 1 ? x : -x, i & 2 ? y : -y, i & 4 ? z : -z);
  mesh.faces = {0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4,
                2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5};
  return mesh;
}

class StageView : public testing::Test {
 protected:
  void SetUp() override { ORV_NEEDS_OPENGL(); }

  /// Boxes of three shapes, turned anyhow, some mirrored, far away from the world's origin.
  void AddBoxes(int count) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    const CMesh shapes[] = {Box(1, 1, 1), Box(2, 0.3, 1), Box(0.2, 3, 0.4)};
    for (int i = 0; i < count; ++i) {
      SceneNode& node = scene.AddNode("Box");
      node.SetMesh(shapes[i % 3]);
      rws::adaptor::Trs pose;
      pose.translation = Vector3<double>(20000.0, 3.0, -5000.0) +
                         Vector3<double>(unit(random), unit(random), unit(random)) * 3.5;
      pose.rotation = {unit(random), unit(random), unit(random), unit(random)};
      pose.rotation.normalize();
      if (i % 5 == 0) pose.scale = {-1.0, 1.3, 0.8};
      node.SetPose(pose);
    }
  }
  void Show(app::view::StageView& view) {
    view.resize(640, 360);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    view.FrameAll();
    view.grabFramebuffer();
  }
  static void Move(QWidget& view, const QPoint& to, Qt::MouseButton held,
                   Qt::KeyboardModifiers keys) {
    QMouseEvent move(QEvent::MouseMove, to, held, held, keys);
    QApplication::sendEvent(&view, &move);
  }

  Scene scene;
  HeadlessAdaptor host{scene};
  SceneFrames frames{host};
};

/// The nearest node that a ray hits, by the scene's own numbers.
const SceneNode* HitBy(const std::vector<std::pair<SceneNode*, std::unique_ptr<MeshRays>>>& all,
                       const Vector3<double>& origin, const Vector3<double>& direction) {
  const SceneNode* nearest = nullptr;
  double least = 1e9;
  for (const auto& [node, rays] : all) {
    const Matrix<double> inverse = node->WorldMatrix(0.0).affineInverse();
    MeshRays::Hit hit;
    if (!rays->intersect(inverse.transformPoint(origin), inverse.transformVector(direction), least,
                         hit))
      continue;
    least = hit.t;
    nearest = node;
  }
  return nearest;
}

}  // namespace

TEST_F(StageView, PicksWhatRaysHit) {
  AddBoxes(40);
  std::vector<std::pair<SceneNode*, std::unique_ptr<MeshRays>>> all;
  for (SceneNode* node : scene.GetNodes())
    all.emplace_back(node, std::make_unique<MeshRays>(node->SharedMesh()));
  app::view::StageView view(frames, Quality::kFixed);
  Show(view);
  const int width = view.width(), height = view.height();
  const std::vector<std::uint32_t> ids = view.ReadIds(view.rect());
  ASSERT_EQ(ids.size(), static_cast<std::size_t>(width * height));
  // Row by row from the bottom.
  const auto idAt = [&](int x, int y) {
    return ids[static_cast<std::size_t>((height - 1 - y) * width + x)];
  };
  int compared = 0, hits = 0;
  for (int y = 1; y + 1 < height; y += 2)
    for (int x = 1; x + 1 < width; x += 2) {
      const std::uint32_t id = idAt(x, y);
      bool isEdge = false;
      for (int k = 0; k < 9; ++k) isEdge = isEdge || idAt(x + k % 3 - 1, y + k / 3 - 1) != id;
      if (isEdge) continue;
      Vector3<double> origin, direction;
      view.GetRay({x + 0.5, y + 0.5}, origin, direction);
      ASSERT_EQ(frames.FindNode(id), HitBy(all, origin, direction)) << x << ", " << y;
      ++compared;
      hits += id != 0;
    }
  EXPECT_GT(compared, 10000);
  EXPECT_GT(hits, 2000);
}

TEST_F(StageView, SelectsByClickAndRectangle) {
  scene.AddNode("Left").SetMesh(Box(1, 1, 1));
  scene.AddNode("Right").SetMesh(Box(1, 1, 1));
  rws::adaptor::Trs pose;
  pose.translation = {4.0, 0.0, 0.0};
  scene.Find("Right")->SetPose(pose);
  app::view::StageView view(frames, Quality::kFixed);
  std::vector<std::string> hit;
  PickMode mode{};
  view.picked = [&](const std::vector<std::uint32_t>& ids, PickMode how) {
    hit.clear();
    mode = how;
    for (const std::uint32_t id : ids) hit.push_back(frames.FindNode(id)->GetName());
  };
  Show(view);
  OrbitEye eye = view.GetEye();
  eye.yaw = eye.pitch = 0.0;
  view.SetEye(eye);
  using Names = std::vector<std::string>;
  const QPoint middle = view.rect().center();
  QTest::mouseClick(&view, Qt::LeftButton, {}, middle - QPoint(100, 0));
  EXPECT_EQ(hit, Names{"Left"});
  EXPECT_EQ(mode, PickMode::kReplace);
  QTest::mouseClick(&view, Qt::LeftButton, Qt::ControlModifier, {5, 5});
  EXPECT_EQ(hit, Names{});
  EXPECT_EQ(mode, PickMode::kToggle);
  QTest::mousePress(&view, Qt::LeftButton, Qt::ShiftModifier, {5, 5});
  Move(view, middle, Qt::LeftButton, Qt::ShiftModifier);
  QTest::mouseRelease(&view, Qt::LeftButton, Qt::ShiftModifier, {635, 355});
  EXPECT_EQ(hit.size(), 2u) << "all of the picture";
  EXPECT_EQ(mode, PickMode::kAdd);

  // What is selected gets an outline just outside of it, and nothing else changes.
  const QImage before = view.grabFramebuffer();
  frames.Select({scene.Find("Left")});
  const QImage after = view.grabFramebuffer();
  const std::vector<std::uint32_t> ids = view.ReadIds(view.rect());
  int changed = 0;
  for (int y = 0; y < 360; ++y)
    for (int x = 0; x < 640; ++x) {
      if (before.pixel(x, y) == after.pixel(x, y)) continue;
      ++changed;
      const std::uint32_t id = ids[static_cast<std::size_t>((359 - y) * 640 + x)];
      EXPECT_TRUE(!frames.FindNode(id) || frames.FindNode(id)->GetName() != "Left");
    }
  EXPECT_GT(changed, 300);
  EXPECT_LT(changed, 6000);
}

TEST_F(StageView, MovesTheEyeAsOtherProgramsDo) {
  AddBoxes(3);
  app::view::StageView view(frames, Quality::kFixed);
  Show(view);
  const OrbitEye start = view.GetEye();
  const auto drag = [&](Qt::MouseButton button, Qt::KeyboardModifiers keys) {
    view.SetEye(start);
    QTest::mousePress(&view, button, keys, {300, 180});
    Move(view, {360, 200}, button, keys);
    QTest::mouseRelease(&view, button, keys, {360, 200});
    const OrbitEye& now = view.GetEye();
    return now.distance != start.distance                ? 'd'
           : (now.target - start.target).length() > 1e-9 ? 'p'
           : now.yaw != start.yaw                        ? 'o'
                                                         : '-';
  };
  EXPECT_EQ(drag(Qt::MiddleButton, {}), 'o');
  EXPECT_EQ(drag(Qt::MiddleButton, Qt::ShiftModifier), 'p');
  EXPECT_EQ(drag(Qt::MiddleButton, Qt::ControlModifier), 'd');
  EXPECT_EQ(drag(Qt::LeftButton, {}), '-');
  view.SetNavigation(NavigationPreset::kMaya);
  EXPECT_EQ(drag(Qt::LeftButton, Qt::AltModifier), 'o');
  EXPECT_EQ(drag(Qt::MiddleButton, Qt::AltModifier), 'p');
  EXPECT_EQ(drag(Qt::RightButton, Qt::AltModifier), 'd');
  EXPECT_EQ(drag(Qt::LeftButton, {}), '-');
}

TEST_F(StageView, LooksThroughACameraWithinItsGate) {
  SceneNode& camera = scene.AddNode("Camera");
  Lens lens;
  lens.fieldOfView = 30.0;
  lens.aspectRatio = 1.0;
  camera.SetLens(lens);
  rws::adaptor::Trs pose;
  pose.translation = {0.0, 0.0, 10.0};
  camera.SetPose(pose);
  // As high as the camera's picture at ten metres.
  const double half = 10.0 * std::tan(15.0 * 3.14159265358979 / 180.0);
  scene.AddNode("Card").SetMesh(Box(0.5 * half, half, 1e-6));
  app::view::StageView view(frames, Quality::kFixed);
  Show(view);
  frames.LookThrough(&camera);
  view.grabFramebuffer();
  const Gate gate = view.GetPacket().gate;
  ASSERT_TRUE(gate.visible);
  EXPECT_NEAR(gate.width * 640.0, gate.height * 360.0, 1e-3) << "a square";
  const std::vector<std::uint32_t> ids = view.ReadIds(view.rect());
  int rows = 0;
  for (int y = 0; y < 360; ++y) rows += ids[static_cast<std::size_t>(y * 640 + 320)] != 0;
  EXPECT_NEAR(rows, gate.height * 360.0, 1.5);
  // Who turns away has the eye where the camera stood.
  bool left = false;
  view.cameraLeft = [&] {
    left = true;
    frames.LookThrough(nullptr);
  };
  QTest::keyClick(&view, Qt::Key_Left);
  EXPECT_TRUE(left);
  EXPECT_FALSE(frames.GetLookThrough());
  const Vector3<double> at = view.GetEye().GetPose().translation();
  EXPECT_NEAR(at.y, 0.0, 1e-9);
}

TEST_F(StageView, DrawsTheSameInAnotherContext) {
  AddBoxes(12);
  QWidget one, other;
  one.resize(640, 360);
  other.resize(640, 360);
  auto* view = new app::view::StageView(frames, Quality::kFixed, &one);
  one.show();
  view->resize(640, 360);
  view->FrameAll();
  const QImage before = view->grabFramebuffer();
  EXPECT_EQ(view->grabFramebuffer(), before);
  // The old context goes with the window.
  view->setParent(&other);
  view->resize(640, 360);
  view->show();
  other.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
  EXPECT_EQ(view->grabFramebuffer(), before);
}

TEST_F(StageView, ShowsTwoPanesAndACameraInTheCorner) {
  scene.AddNode("Left").SetMesh(Box(1, 1, 1));
  SceneNode& camera = scene.AddNode("Camera");
  camera.SetLens({});
  rws::adaptor::Trs pose;
  pose.translation = {0.0, 0.0, 9.0};
  camera.SetPose(pose);
  app::view::StageView view(frames, Quality::kFixed);
  Show(view);
  OrbitEye eye = view.GetEye();
  eye.target = {};
  view.SetEye(eye);
  view.SetLayout(PaneLayout::kColumns);
  frames.LookThrough(&camera, kInset);
  view.SetInsetVisible(true);
  view.grabFramebuffer();
  const QRect places[] = {view.GetPlace(0), view.GetPlace(1), view.GetPlace(kInset)};
  EXPECT_FALSE(places[0].intersects(places[1]));
  EXPECT_TRUE(places[0].contains(places[2]));
  EXPECT_EQ(places[0].width() + places[1].width() + 2, 640);
  EXPECT_NEAR(16.0 / 9.0, static_cast<double>(places[2].width()) / places[2].height(), 0.02);

  // Hands move the eye of the pane that they are in.
  const OrbitEye first = view.GetEye();
  QTest::mousePress(&view, Qt::MiddleButton, {}, places[1].center());
  Move(view, places[1].center() + QPoint(60, 20), Qt::MiddleButton, {});
  QTest::mouseRelease(&view, Qt::MiddleButton, {}, places[1].center() + QPoint(60, 20));
  EXPECT_EQ(view.GetActive(), 1u);
  EXPECT_NE(view.GetEye().yaw, first.yaw);
  EXPECT_EQ(view.GetPicture(0).GetEye().yaw, first.yaw);

  // Each picture has the node where its own ray meets it.
  std::vector<std::string> hit;
  view.picked = [&](const std::vector<std::uint32_t>& ids, PickMode) {
    for (const std::uint32_t id : ids) hit.push_back(frames.FindNode(id)->GetName());
  };
  for (std::size_t picture = 0; picture < kPictures; ++picture) {
    hit.clear();
    const QRect place = view.GetPlace(picture);
    Vector3<double> origin, direction;
    view.GetPicture(picture).GetRay(0.5, 0.5, origin, direction);
    const MeshRays rays(scene.Find("Left")->SharedMesh());
    MeshRays::Hit met;
    EXPECT_TRUE(rays.intersect(origin, direction, 1e3, met)) << picture;
    QTest::mouseClick(&view, Qt::LeftButton, {}, place.center());
    EXPECT_EQ(hit, std::vector<std::string>{"Left"}) << picture;
  }
  EXPECT_EQ(view.GetActive(), 1u) << "the inset takes no keys";
  scene.Detach(camera);
  view.grabFramebuffer();
  EXPECT_FALSE(view.IsShown(kInset)) << "its camera has gone";
}

TEST_F(StageView, TravelsWithANode) {
  SceneNode& car = scene.AddNode("Car");
  car.SetMesh(Box(1, 0.5, 2));
  scene.AddNode("Ground").SetMesh(Box(50, 0.1, 50));
  app::view::StageView view(frames, Quality::kFixed);
  Show(view);
  const auto drive = [&](double x, double turn) {
    rws::adaptor::Trs pose;
    pose.translation = {x, 1.0, 0.5 * x};
    pose.rotation = {0.0, std::sin(0.5 * turn), 0.0, std::cos(0.5 * turn)};
    car.SetPose(pose);
    view.grabFramebuffer();
  };
  const auto fromCar = [&](bool turned) {
    const Matrix<double> eye = view.GetEye().GetPose(), node = car.WorldMatrix(0.0);
    return turned ? node.affineInverse().transformPoint(eye.translation())
                  : eye.translation() - node.translation();
  };
  for (const bool turns : {false, true}) {
    drive(0.0, 0.3);
    frames.Follow(&car, turns);
    view.grabFramebuffer();
    const Vector3<double> start = fromCar(turns);
    for (int i = 1; i < 30; ++i) drive(2.0 * i, 0.3 + 0.4 * i);
    EXPECT_NEAR((fromCar(turns) - start).length(), 0.0, 1e-9) << turns;
    // The user's hands go on from there.
    QTest::keyClick(&view, Qt::Key_PageUp);
    const Vector3<double> nearer = fromCar(turns);
    EXPECT_LT(nearer.length(), start.length());
    drive(3.0, 2.0);
    EXPECT_NEAR((fromCar(turns) - nearer).length(), 0.0, 1e-9) << turns;
    frames.Follow(nullptr, false);
    view.grabFramebuffer();
    const Vector3<double> left = view.GetEye().target;
    drive(9.0, 1.0);
    EXPECT_EQ((view.GetEye().target - left).length(), 0.0) << "released";
  }
}

TEST_F(StageView, LetsRigsShineThrough) {
  SceneNode& wall = scene.AddNode("Wall");
  wall.SetMesh(Box(3, 3, 0.1));
  SceneNode& rig = scene.AddNode("Rig");
  rig.SetMesh(Box(1, 1, 1));
  rig.SetTag("of a rig");
  rig.SetColour({1.0f, 0.0f, 0.0f});
  rws::adaptor::Trs pose;
  pose.translation = {0.0, 0.0, -4.0};
  rig.SetPose(pose);
  app::view::StageView view(frames, Quality::kFixed);
  view.SetGridVisible(false);
  Show(view);
  OrbitEye eye = view.GetEye();
  eye.yaw = eye.pitch = 0.0;
  view.SetEye(eye);
  const QPoint middle = view.rect().center();
  const auto redness = [&] {
    const QColor colour = view.grabFramebuffer().pixelColor(middle);
    return colour.red() - colour.green();
  };
  EXPECT_LT(redness(), 8);
  view.SetShading(Shading::kXRay, 0);
  EXPECT_GT(redness(), 30) << "behind the wall";
  // What is seen anyway stays as it is.
  eye.yaw = 3.14159;
  view.SetEye(eye);
  const QImage through = view.grabFramebuffer();
  view.SetShading(Shading::kPlain, 0);
  EXPECT_EQ(through, view.grabFramebuffer());
}

TEST_F(StageView, DrawsCoarserMeshesThatLookTheSame) {
  CMesh sheet;
  constexpr std::int32_t kSide = 300;
  for (int z = 0; z <= kSide; ++z)
    for (int x = 0; x <= kSide; ++x)
      sheet.vertices.emplace_back(0.3 * x, 3.0 * std::sin(0.05 * x) * std::cos(0.04 * z), 0.3 * z);
  for (std::int32_t z = 0; z < kSide; ++z)
    for (std::int32_t x = 0; x < kSide; ++x) {
      const std::int32_t a = z * (kSide + 1) + x, c = a + kSide + 1;
      sheet.faces.insert(sheet.faces.end(), {a, c, a + 1, a + 1, c, c + 1});
    }
  scene.AddNode("Hills").SetMesh(sheet);
  app::view::StageView fixed(frames, Quality::kFixed), free(frames, Quality::kByMachine);
  Show(fixed);
  const QImage exact = fixed.grabFramebuffer();
  EXPECT_EQ(fixed.GetCounts().triangles, sheet.faces.size() / 3);
  Show(free);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !free.IsMakingLevels(); }, 60000));
  const QImage coarse = free.grabFramebuffer();
  EXPECT_LT(free.GetCounts().triangles, sheet.faces.size() / 3 / 3);
  int changed = 0;
  for (int y = 0; y < exact.height(); ++y)
    for (int x = 0; x < exact.width(); ++x)
      changed += std::abs(qGray(exact.pixel(x, y)) - qGray(coarse.pixel(x, y))) > 16;
  EXPECT_LT(changed, exact.width() * exact.height() / 200);
}

TEST_F(StageView, DrawsLinesOfAnyWidthAlsoWhereTheyAreHidden) {
  scene.AddNode("Box").SetMesh(Box(1, 1, 1));
  app::view::StageView view(frames, Quality::kFixed);
  LineSet hidden, onTop;
  onTop.onTop = true;
  bool isShown = false;
  view.linesWanted = [&](FramePacket& packet) {
    if (!isShown) return;
    hidden.Begin(packet.origin);
    onTop.Begin(packet.origin);
    // Behind the box, on top of it, from far ahead to behind the eye, and a point.
    hidden.AddLine({-50, 0, -3}, {50, 0, -3}, {255, 0, 0, 255}, 6.0f);
    onTop.AddLine({-50, 0.5, -3}, {50, 0.5, -3}, {0, 255, 0, 255}, 6.0f);
    hidden.AddLine({2.0, -3.0, -1e4}, {2.0, -3.0, 1e4}, {255, 255, 0, 255}, 2.0f);
    onTop.AddPoint({0, -0.5, 0}, {0, 0, 255, 255}, 20.0f);
    onTop.AddPoint({NAN, 0, 0}, {0, 0, 255, 255}, 20.0f);
    packet.lines = {&hidden, &onTop};
  };
  Show(view);
  OrbitEye eye = view.GetEye();
  eye.yaw = eye.pitch = 0.0;
  eye.target = {};
  eye.distance = 8.0;
  view.SetEye(eye);
  view.SetGridVisible(false);
  const QImage before = view.grabFramebuffer();
  isShown = true;
  const QImage after = view.grabFramebuffer();
  const auto count = [&](int x0, int x1, auto&& is) {
    int sum = 0;
    for (int x = x0; x < x1; ++x)
      for (int y = 0; y < 360; ++y) {
        const QColor now = after.pixelColor(x, y), was = before.pixelColor(x, y);
        sum += now != was && is(now, was);
      }
    return sum;
  };
  const auto isRed = [](const QColor& now, const QColor&) { return now.red() == 255; };
  const auto isReddish = [](const QColor& now, const QColor& was) {
    return now.red() > was.red() && now.red() < 250 && now.blue() < was.blue();
  };
  const auto isGreen = [](const QColor& now, const QColor&) {
    return now.green() == 255 && now.red() == 0;
  };
  const auto isBlue = [](const QColor& now, const QColor&) { return now.blue() == 255; };
  EXPECT_NEAR(count(10, 110, isRed), 600, 110) << "beside the box";
  EXPECT_EQ(count(310, 330, isRed), 0);
  EXPECT_NEAR(count(310, 330, isReddish), 120, 45) << "behind it";
  EXPECT_NEAR(count(310, 330, isGreen), 120, 21) << "over it";
  EXPECT_NEAR(count(0, 640, isBlue), 314, 40) << "a disc";
  EXPECT_GT(count(320, 640,
                  [](const QColor& now, const QColor&) {
                    return now.red() > 200 && now.green() > 200 && now.blue() < 100;
                  }),
            90)
      << "the part ahead of the eye";
  // Nothing of it is picked. What lines are made of is read once an update, for both panes, and not
  // for a pick.
  int updates = 0, pictures = 0;
  view.begun = [&] { ++updates; };
  view.linesWanted = [&](FramePacket&) { EXPECT_EQ(++pictures > 2, updates > 1); };
  view.SetLayout(PaneLayout::kColumns);
  for (const std::uint32_t id : view.ReadIds(view.rect())) ASSERT_LE(id, 1u);
  EXPECT_EQ(updates + pictures, 0);
  for (int i = 1; i <= 2; ++i) {
    view.grabFramebuffer();
    EXPECT_EQ(updates, i);
    EXPECT_EQ(pictures, 2 * i);
  }
}

}  // namespace orv::tests
