// Reads a scene from memory, plays it, changes it, writes it back in both forms and reads that.
// Inputs that are JSON are mutated as JSON, so that most of them get past the parser.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <vector>

#include "adaptor/headless/GltfReader.h"
#include "adaptor/headless/GltfWriter.h"
#include "adaptor/headless/Scene.h"

namespace {

using namespace orv::rws::adaptor::headless;

/// What is written must be read again; anything else is a finding.
void requireReadable(const Scene& scene, GltfForm form, const char* when) {
  std::string bytes;
  const WriteResult written = GltfWriter::WriteMemory(scene, form, bytes);
  if (!written) return;  // Refused aloud.
  std::string again;
  const ReadResult result = GltfReader::ReadMemory(bytes, "written");
  if (result && GltfWriter::WriteMemory(*result.scene, form, again) && again == bytes) return;
  std::fprintf(stderr, "%s: %s\n", when, result ? "a second save differs" : result.error.c_str());
  std::abort();
}

void play(const Scene& scene) {
  double sum = 0.0;
  std::size_t meshes = 0;
  for (const SceneNode* node : scene.GetNodes()) {
    for (const double time : {-1.0, 0.0, 0.5, 3.0, 1e9}) sum += node->WorldMatrix(time)[12];
    if (node->HasMesh() && ++meshes < 4 && !node->GetMesh()->isConsistent()) std::abort();
  }
  if (sum == 0.1234567) std::puts("");
}

void change(Scene& scene) {
  const auto nodes = scene.GetNodes();
  if (nodes.empty()) return;
  SceneNode& last = *nodes.back();
  last.ReplaceKeys(ChannelPath::kTranslation, 0.1, 0.3, {0.1, 0.2}, {1, 2, 3, 4, 5, 6}, 0.04);
  last.SetTag("tag");
  last.SetVisible(!last.IsVisible());
  last.SetColour({0.5f, 0.5f, 0.5f});
  SceneNode& added = scene.AddNode(last.GetName(), nodes.front());
  added.SetLens({});
  if (nodes.size() > 2) scene.Detach(*nodes[1]);
}

using Json = nlohmann::ordered_json;

void collect(Json& json, std::vector<Json*>& all) {
  all.push_back(&json);
  if (json.is_structured())
    for (Json& part : json) collect(part, all);
}

/// Puts a value that hurts, or a copy of another part, in a random place, or takes a part out.
void mutate(Json& json, std::mt19937& random) {
  static const Json values[] = {0,
                                1,
                                2,
                                3,
                                -1,
                                0.5,
                                1e300,
                                -1e-300,
                                4294967296,
                                nullptr,
                                false,
                                "x",
                                true,
                                65535,
                                "STEP",
                                "scale",
                                Json::array(),
                                Json::object(),
                                Json::array({0, 0, 0, 1})};
  std::vector<Json*> all;
  collect(json, all);
  Json& target = *all[random() % all.size()];
  const unsigned kind = random() % 8;
  if (kind < 3) {
    target = values[random() % std::size(values)];
  } else if (kind < 5) {
    const Json copy = *all[random() % all.size()];
    target = copy;
  } else if (kind == 5 && target.is_structured() && !target.empty()) {
    auto part = target.begin();
    std::advance(part, random() % target.size());
    target.erase(part);
  } else if (kind == 6 && target.is_array() && !target.empty()) {
    const Json copy = target[random() % target.size()];
    target.push_back(copy);
  } else if (target.is_number()) {
    target = static_cast<int>(random() % 8);
  }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t capacity, unsigned seed) {
  std::mt19937 random(seed);
  const std::string before(reinterpret_cast<const char*>(data), size);
  Json json = Json::parse(before, nullptr, false);
  if (json.is_discarded() || random() % 16 == 0) {
    if (size > 0) data[random() % size] = static_cast<std::uint8_t>(random());
    return size;
  }
  for (unsigned i = 0; i <= random() % 3; ++i) mutate(json, random);
  const std::string text = json.dump(-1, ' ', false, Json::error_handler_t::replace);
  if (text.size() > capacity) return size;
  std::memcpy(data, text.data(), text.size());
  return text.size();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const ReadResult result = GltfReader::ReadMemory(bytes, "fuzz");
  if (!result) return 0;
  play(*result.scene);
  requireReadable(*result.scene, GltfForm::kBinary, "as read");
  change(*result.scene);
  requireReadable(*result.scene, GltfForm::kBinary, "changed, binary");
  requireReadable(*result.scene, GltfForm::kText, "changed, text");
  return 0;
}
