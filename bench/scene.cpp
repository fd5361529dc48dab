// Opening a .glb with a mesh of a million triangles, beside tinygltf reading the same file.
//
// Each reader also runs once in a process of its own, which tells how far its memory rises above
// what the process had before.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/resource.h>
#include <tiny_gltf.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "Child.h"
#include "adaptor/headless/GltfReader.h"
#include "adaptor/headless/GltfWriter.h"
#include "adaptor/headless/Scene.h"
#include "util/CMesh.h"

namespace {

using namespace orv::rws::adaptor;
using namespace orv::rws::adaptor::headless;

constexpr int kSide = 708;  ///< squares along an edge: 2 * 708^2 triangles are a million

/// The file, written at the first use and removed at the end of the program.
class Landscape {
 public:
  static const Landscape& get() {
    static const Landscape instance;
    return instance;
  }
  ~Landscape() { std::filesystem::remove(m_path); }
  const std::string& path() const { return m_path; }
  double megabytes() const { return static_cast<double>(m_size) / 1e6; }

 private:
  Landscape() {
    m_path = (std::filesystem::temp_directory_path() /
              ("landscape_" + std::to_string(getpid()) + ".glb"))
                 .string();
    orv::util::CMesh mesh;
    for (int z = 0; z <= kSide; ++z)
      for (int x = 0; x <= kSide; ++x)
        mesh.vertices.emplace_back(x, 5.0 * std::sin(x * 0.05) * std::cos(z * 0.03), z);
    for (std::int32_t z = 0; z < kSide; ++z)
      for (std::int32_t x = 0; x < kSide; ++x) {
        const std::int32_t a = z * (kSide + 1) + x;
        const std::int32_t c = a + kSide + 1;
        mesh.faces.insert(mesh.faces.end(), {a, c, a + 1, a + 1, c, c + 1});
      }
    Scene scene;
    scene.AddNode("Ground").SetMesh(mesh);
    const WriteResult result = GltfWriter::Write(scene, m_path);
    if (!result) std::fprintf(stderr, "%s\n", result.error.c_str());
    m_size = std::filesystem::file_size(m_path);
  }

  std::string m_path;
  std::uintmax_t m_size = 0;
};

bool openWithOurs(const std::string& path) {
  const ReadResult result = GltfReader::Read(path);
  benchmark::DoNotOptimize(result.scene.get());
  return static_cast<bool>(result);
}

bool openWithTinygltf(const std::string& path) {
  tinygltf::TinyGLTF reader;
  tinygltf::Model model;
  std::string error;
  std::string warning;
  const bool done = reader.LoadBinaryFromFile(&model, &error, &warning, path);
  benchmark::DoNotOptimize(model.buffers.data());
  return done;
}

bool openAndBuildTriangles(const std::string& path) {
  const ReadResult result = GltfReader::Read(path);
  return result && result.scene->Find("Ground")->GetMesh()->faces.size() == 6u * kSide * kSide;
}

long peakKilobytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

/// Rise of the peak memory while `work` runs in a child process (MB); negative when it failed.
double peakRise(bool (*work)(const std::string&), const std::string& path) {
  // Free memory that the process keeps would hide what the child takes.
  malloc_trim(0);
  const auto rise = orv::bench::InChild([&] {
    const long before = peakKilobytes();
    return work(path) ? peakKilobytes() - before : -1;
  });
  return static_cast<double>(rise.value_or(-1)) * 1024.0 / 1e6;
}

void open(benchmark::State& state, bool (*work)(const std::string&)) {
  const Landscape& file = Landscape::get();
  const double rise = peakRise(work, file.path());
  for (auto _ : state)
    if (rise < 0.0 || !work(file.path())) state.SkipWithError("the file can't be read");
  state.counters["file_MB"] = file.megabytes();
  state.counters["peak_MB"] = rise;
  state.counters["peak_per_file"] = rise / file.megabytes();
}

BENCHMARK_CAPTURE(open, rigwright, openWithOurs)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(open, tinygltf, openWithTinygltf)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(open, rigwright_with_triangles, openAndBuildTriangles)
    ->Unit(benchmark::kMillisecond);

}  // namespace
