// Pictures of a scene at 1280 x 720 with 300 nodes that move, from the look at the scene to the
// last pixel. Needs a display with OpenGL: xvfb-run -a build/release/bin/bench_stage.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "adaptor/headless/GltfWriter.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessDocument.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/HeadlessSession.h"
#include "adaptor/headless/Scene.h"
#include "app/studio/view/Graphics.h"
#include "app/studio/view/Renderer.h"
#include "app/studio/view/SceneFrames.h"
#include "app/studio/view/overlay/OverlayView.h"
#include "app/studio/view/packet/ViewCamera.h"
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "plugins/release/all/AllRigs.h"
#include "util/CMesh.h"

namespace {

using namespace orv::app::view;
using namespace orv::rws::adaptor;
using namespace orv::rws::adaptor::headless;

constexpr int kWidth = 1280, kHeight = 720, kNodes = 300, kFrames = 50;

/// A context without a window, made at the first use; it lives as long as the program.
class Screen {
 public:
  static Screen& Get() {
    static auto* const screen = new Screen;  // Qt's own statics go first
    return *screen;
  }
  const std::string& GetProblem() const { return m_problem; }
  Renderer& GetRenderer() { return *m_renderer; }
  void Finish() { m_context.functions()->glFinish(); }

 private:
  Screen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    m_application = std::make_unique<QGuiApplication>(m_argc, m_argv);
    m_problem = GetGraphics().problem;
    if (!m_problem.empty()) return;
    m_surface = std::make_unique<QOffscreenSurface>();
    m_surface->setFormat(MakeFormat(0));
    m_surface->create();
    m_context.setFormat(MakeFormat(0));
    m_context.create();
    m_context.makeCurrent(m_surface.get());
    m_target = std::make_unique<QOpenGLFramebufferObject>(
        kWidth, kHeight, QOpenGLFramebufferObject::CombinedDepthStencil);
    m_target->bind();
    m_renderer = std::make_unique<Renderer>();
    m_renderer->Begin(m_problem);
  }

  int m_argc = 1;
  char m_name[6] = "bench";
  char* m_argv[2] = {m_name, nullptr};
  std::unique_ptr<QGuiApplication> m_application;
  std::unique_ptr<QOffscreenSurface> m_surface;
  QOpenGLContext m_context;
  std::unique_ptr<QOpenGLFramebufferObject> m_target;
  std::unique_ptr<Renderer> m_renderer;
  std::string m_problem;
};

/// A wavy sheet of `side` by `side` squares, `size` metres wide.
orv::util::CMesh Sheet(int side, double size, double wave) {
  orv::util::CMesh mesh;
  for (int z = 0; z <= side; ++z)
    for (int x = 0; x <= side; ++x)
      mesh.vertices.emplace_back(size * x / side, wave * std::sin(0.3 * x) * std::cos(0.2 * z),
                                 size * z / side);
  for (std::int32_t z = 0; z < side; ++z)
    for (std::int32_t x = 0; x < side; ++x) {
      const std::int32_t a = z * (side + 1) + x, c = a + side + 1;
      mesh.faces.insert(mesh.faces.end(), {a, c, a + 1, a + 1, c, c + 1});
    }
  return mesh;
}

void Move(SceneNode& node, double x, double y, double z, double phase) {
  std::vector<double> times, values;
  for (int i = 0; i < kFrames; ++i) {
    times.push_back(i * 0.04);
    values.insert(values.end(), {x, y + 0.5 * std::sin(0.2 * i + phase), z});
  }
  node.ReplaceKeys(ChannelPath::kTranslation, 0.0, kFrames * 0.04, times, values, 0.04);
}

/// Nodes that each show a mesh of their own, so that nothing is gained by equal ones.
void FillWithSheets(Scene& scene, int triangles) {
  const int side = static_cast<int>(std::lround(std::sqrt(triangles / (2.0 * kNodes))));
  for (int i = 0; i < kNodes; ++i) {
    SceneNode& node = scene.AddNode("Sheet");
    node.SetMesh(Sheet(side, 0.9, 0.02 + 0.0001 * i));
    Move(node, i % 20, 0.0, i / 20, i);
  }
}

/// What of a hundred cars is seen: body, four wheels and a few marks each.
void FillWithCars(Scene& scene) {
  scene.AddNode("Ground").SetMesh(Sheet(200, 100.0, 0.2));
  const orv::util::CMesh parts[] = {Sheet(20, 2.0, 0.3), Sheet(8, 0.6, 0.1), Sheet(2, 0.3, 0.0)};
  for (int car = 0; car < 100; ++car) {
    SceneNode& body = scene.AddNode("Car");
    body.SetMesh(parts[0]);
    Move(body, 8.0 * (car % 10), 1.0, 8.0 * (car / 10), car);
    for (int i = 0; i < 23; ++i) {
      SceneNode& part = scene.AddNode("Part", &body);
      part.SetMesh(parts[i < 4 ? 1 : 2]);
      Move(part, 0.3 * (i % 6), 0.2, 0.3 * (i / 6), i);
    }
  }
}

/// Like a picture of the program's: the scene is read at the next frame's time.
class Film {
 public:
  explicit Film(HeadlessAdaptor& host) : m_host(host), m_frames(host) {
    m_packet.grid.visible = false;
  }
  void Picture(int frame) {
    m_host.SetCurrentTime(frame % kFrames * 0.04);
    m_frames.Read();
    if (frame == 0) {
      m_eye.yaw = m_eye.pitch = 0.6;
      m_eye.Frame(m_frames.GetBox(BoxOf::kAll), 45.0, kAspect);
    }
    Optics optics;
    ChooseClip(m_eye.GetPose(), m_frames.GetBox(BoxOf::kAll), optics);
    ChooseGrid(m_eye, m_packet.grid);
    SetEye(m_packet, m_eye.GetPose(), optics, kAspect);
    m_frames.Write(0, m_packet);
    m_packet.lines.clear();
    if (m_overlay) {
      m_overlay->Read();
      m_overlay->Write(m_packet, kHeight);
    }
    Screen::Get().GetRenderer().Draw(m_packet, {0, 0, kWidth, kHeight});
    Screen::Get().Finish();
  }
  SceneFrames& GetFrames() { return m_frames; }
  FramePacket& GetPacket() { return m_packet; }
  void SetOverlay(OverlayView* overlay) { m_overlay = overlay; }

 private:
  static constexpr double kAspect = static_cast<double>(kWidth) / kHeight;
  HeadlessAdaptor& m_host;
  SceneFrames m_frames;
  FramePacket m_packet;
  OrbitEye m_eye;
  OverlayView* m_overlay = nullptr;
};

/// True where there is something to measure with. A run of the tests does without it aloud.
bool HasScreen(benchmark::State& state) {
  const std::string& problem = Screen::Get().GetProblem();
  if (problem.empty()) return true;
  std::fprintf(stderr, "NOT MEASURED: %s (xvfb-run -a bench_stage)\n", problem.c_str());
  if (!std::getenv("ORV_BENCH_ONCE")) state.SkipWithError(problem.c_str());
  for (auto _ : state) {
  }
  return false;
}

/// What is in the picture besides the scene, and whether it has been open for a while.
enum class Show { kScene, kAll, kAllSettled };

void MeasureFilm(benchmark::State& state, void (*fill)(Scene&, int), int triangles, Show show) {
  if (!HasScreen(state)) return;
  Scene scene;
  HeadlessAdaptor host(scene);
  fill(scene, triangles);
  Film film(host);
  if (show != Show::kScene) {
    film.GetPacket().grid.visible = true;
    std::vector<const SceneNode*> chosen;
    for (const SceneNode* node : scene.GetNodes())
      if (chosen.size() < 10) chosen.push_back(node);
    film.GetFrames().Select(chosen);
  }
  int frame = 0;
  film.Picture(frame);
  LevelStore levels;
  if (show == Show::kAllSettled) {
    levels.Follow(film.GetPacket());
    while (levels.Work()) {
    }
    Screen::Get().GetRenderer().SetLevels(&levels);
    film.Picture(frame);
  }
  for (auto _ : state) film.Picture(++frame);
  state.counters["draws"] = Screen::Get().GetRenderer().GetCounts().meshes;
  state.counters["triangles"] =
      static_cast<double>(Screen::Get().GetRenderer().GetCounts().triangles);
  Screen::Get().GetRenderer().SetLevels(nullptr);
}

void SceneAlone(benchmark::State& state) {
  MeasureFilm(state, FillWithSheets, static_cast<int>(state.range(0)), Show::kScene);
}
void WithGridAndOutline(benchmark::State& state) {
  MeasureFilm(state, FillWithSheets, static_cast<int>(state.range(0)), Show::kAll);
}
/// With coarser forms of the meshes, as far as they can't be told from them.
void WithLevels(benchmark::State& state) {
  MeasureFilm(state, FillWithSheets, static_cast<int>(state.range(0)), Show::kAllSettled);
}
void HundredCars(benchmark::State& state) {
  MeasureFilm(
      state, [](Scene& scene, int) { FillWithCars(scene); }, 0, Show::kScene);
}

/// A hundred cars that have driven twice, with other parameters. 0: the scene alone, 1: with the
/// overlay as it is at first, 2: with all of it, of as many rigs as it shows.
void DrivenCars(benchmark::State& state) {
  if (!HasScreen(state)) return;
  HeadlessSession session(orv::rws::addon::AllRigs());
  auto& core = session.GetCore();
  session.GetScene().SetRange(0.0, kFrames * 0.04);
  orv::util::AVar_Linear<double> gas;
  for (int i = 0; i <= kFrames; ++i) gas.set(i * 0.04, i < 3 ? 0.0 : 1.0);
  std::vector<int> rows;
  for (int i = 0; i < 100; ++i) {
    auto* rig = core.CreateToolFromFactory("4WheelerExt", "Car" + std::to_string(i));
    Trs pose = static_cast<HeadlessNode*>(rig->GetNodes().front())->GetSceneNode()->GetPose();
    pose.translation = {8.0 * (i % 10), 0.54, 8.0 * (i / 10)};
    static_cast<HeadlessNode*>(rig->GetNodes().front())->GetSceneNode()->SetPose(pose);
    rig->SetTrack(0, gas);
    rows.push_back(rig->GetIdentity());
  }
  Overlay overlay(core, session.GetAdaptor());
  if (state.range(0) == 2) {
    core.SetSelection(rows);
    for (int kind = 0; kind < kOverlayKindCount; ++kind)
      overlay.Show(static_cast<OverlayKind>(kind), true);
  }
  Film film(session.GetAdaptor());
  OverlayView view(overlay, film.GetFrames());
  for (const char* maximum : {"3", "2"}) {
    std::string problem;
    for (auto* rig : core.List(false))
      for (auto* element : rig->GetConfig().FindAll("Gas Pedal (Forw/Backw) Maximum"))
        core.EditParameter(*rig, element->GetId(), maximum, problem);
    core.BeginResimulation(0.0, kFrames * 0.04);
    while (core.StepResimulation()) overlay.Read();
    core.EndResimulation();
  }
  if (state.range(0) > 0) film.SetOverlay(&view);
  film.Picture(0);
  int frame = kFrames / 2;  // by then the two drives have parted
  for (auto _ : state) film.Picture(++frame);
  state.counters["draws"] = Screen::Get().GetRenderer().GetCounts().all;
  state.counters["ghosts"] = static_cast<double>(film.GetPacket().ghostInstances.size());
}

/// The work that a scene of a million triangles leaves for idle moments.
void MakeLevels(benchmark::State& state) {
  auto mesh = std::make_shared<MeshData>(MakeMeshData(Sheet(708, 700.0, 2.0)));
  for (auto _ : state) {
    LevelMaker maker(mesh);
    while (maker.Work()) {
    }
    state.counters["indices"] = static_cast<double>(maker.Take()->indices.size());
  }
}

/// What of a picture is ours before the driver has it.
void PacketAlone(benchmark::State& state) {
  Scene scene;
  HeadlessAdaptor host(scene);
  FillWithCars(scene);
  SceneFrames frames(host);
  FramePacket packet;
  int frame = 0;
  for (auto _ : state) {
    host.SetCurrentTime(++frame % kFrames * 0.04);
    frames.Read();
    frames.Write(0, packet);
  }
}

/// From the file to the first picture.
void OpenAMillion(benchmark::State& state) {
  if (!HasScreen(state)) return;
  const std::string path =
      (std::filesystem::temp_directory_path() / ("stage_" + std::to_string(getpid()) + ".glb"))
          .string();
  {
    Scene scene;
    scene.AddNode("Ground").SetMesh(Sheet(708, 700.0, 2.0));
    if (!GltfWriter::Write(scene, path)) state.SkipWithError("the file can't be written");
  }
  for (auto _ : state) {
    HeadlessDocument document;
    std::string error;
    if (!document.Open(path, error)) state.SkipWithError(error.c_str());
    Film(document.GetAdaptor()).Picture(0);
  }
  std::filesystem::remove(path);
}

BENCHMARK(SceneAlone)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(WithGridAndOutline)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(WithLevels)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(HundredCars)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(DrivenCars)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(MakeLevels)->Unit(benchmark::kMillisecond);
BENCHMARK(PacketAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenAMillion)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
