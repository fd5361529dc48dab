// Reads a scene from memory, plays it, changes it, writes it back in both forms and reads that.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "adaptor/headless/GltfReader.h"
#include "adaptor/headless/GltfWriter.h"
#include "adaptor/headless/Scene.h"

namespace {

using namespace orv::rws::adaptor::headless;

/// What is written must be read again; anything else is a finding.
void requireReadable(const Scene& scene, GltfForm form, const char* when) {
  std::string bytes;
  const WriteResult written = GltfWriter::writeMemory(scene, form, bytes);
  if (!written) return;  // Refused aloud.
  std::string again;
  const ReadResult result = GltfReader::readMemory(bytes, "written");
  if (result && GltfWriter::writeMemory(*result.scene, form, again) && again == bytes) return;
  std::fprintf(stderr, "%s: %s\n", when, result ? "a second save differs" : result.error.c_str());
  std::abort();
}

void play(const Scene& scene) {
  double sum = 0.0;
  std::size_t meshes = 0;
  for (const SceneNode* node : scene.nodes()) {
    for (const double time : {-1.0, 0.0, 0.5, 3.0, 1e9}) sum += node->worldMatrix(time)[12];
    if (node->hasMesh() && ++meshes < 4 && !node->mesh()->isConsistent()) std::abort();
  }
  if (sum == 0.1234567) std::puts("");
}

void change(Scene& scene) {
  const auto nodes = scene.nodes();
  if (nodes.empty()) return;
  SceneNode& last = *nodes.back();
  last.replaceKeys(ChannelPath::kTranslation, 0.1, 0.3, {0.1, 0.2}, {1, 2, 3, 4, 5, 6}, 0.04);
  last.setTag("tag");
  last.setVisible(!last.visible());
  last.setColour({0.5f, 0.5f, 0.5f});
  SceneNode& added = scene.addNode(last.name(), nodes.front());
  added.setLens({});
  if (nodes.size() > 2) scene.detach(*nodes[1]);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const ReadResult result = GltfReader::readMemory(bytes, "fuzz");
  if (!result) return 0;
  play(*result.scene);
  requireReadable(*result.scene, GltfForm::kBinary, "as read");
  change(*result.scene);
  requireReadable(*result.scene, GltfForm::kBinary, "changed, binary");
  requireReadable(*result.scene, GltfForm::kText, "changed, text");
  return 0;
}
