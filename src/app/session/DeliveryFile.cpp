#include "app/session/DeliveryFile.h"

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string_view>

#include "adaptor/headless/GltfJson.h"
#include "adaptor/headless/GltfKeys.h"
#include "adaptor/headless/GltfWriter.h"
#include "adaptor/headless/Scene.h"
#include "app/session/anyhost/Names.h"
#include "util/AtomicFile.h"

namespace orv::app {

namespace {

namespace headless = rws::adaptor::headless;
using Json = nlohmann::ordered_json;

constexpr std::size_t kHeadSize = 12;      ///< magic, version, length of a .glb
constexpr std::size_t kChunkHeadSize = 8;  ///< length and kind of a chunk
constexpr std::string_view kMagic = "glTF";

/// A file that is gone at the end, whatever happens.
class TemporaryFile {
 public:
  explicit TemporaryFile(std::string path) : m_path(std::move(path)) {}
  ~TemporaryFile() { std::remove(m_path.c_str()); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::string& GetPath() const { return m_path; }

 private:
  std::string m_path;
};

/// Keys that floats hold need no doubles beside them.
void RoundKeys(headless::Scene& scene) {
  for (headless::SceneNode* node : scene.GetNodes()) {
    for (const auto path : {headless::ChannelPath::kTranslation, headless::ChannelPath::kRotation,
                            headless::ChannelPath::kScale}) {
      const headless::Channel* channel = node->GetChannel(path);
      if (!channel) continue;
      const headless::FloatKeys keys = headless::ToFloatKeys(*channel);
      headless::Channel rounded(path, channel->GetMode());
      if (rounded.SetKeys({keys.times.begin(), keys.times.end()},
                          {keys.values.begin(), keys.values.end()}) &&
          rounded != *channel)
        node->SetChannel(std::move(rounded));
    }
  }
}

void DropMarks(Json& document) {
  for (auto& [name, list] : document.items()) {
    if (!list.is_array()) continue;
    for (Json& element : list) {
      const auto extras = element.is_object() ? element.find("extras") : element.end();
      if (extras == element.end() || !extras->is_object()) continue;
      extras->erase(headless::kOwnKey);
      if (extras->empty()) element.erase("extras");
    }
  }
}

std::size_t WordAt(const std::string& bytes, std::size_t at) {
  std::size_t value = 0;
  for (std::size_t i = 4; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

void PutWord(std::string& bytes, std::size_t at, std::size_t value) {
  for (std::size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<char>(value >> (8 * i) & 0xFF);
}

/// The same file without our marks.
std::string WithoutMarks(const std::string& bytes) {
  const bool binary = bytes.compare(0, kMagic.size(), kMagic) == 0;
  const std::size_t start = binary ? kHeadSize + kChunkHeadSize : 0;
  const std::size_t size = binary ? WordAt(bytes, kHeadSize) : bytes.size();
  Json document = Json::parse(bytes.begin() + static_cast<std::ptrdiff_t>(start),
                              bytes.begin() + static_cast<std::ptrdiff_t>(start + size));
  DropMarks(document);
  if (!binary) return document.dump(2) + "\n";
  std::string json = document.dump();
  json.append((4 - json.size() % 4) % 4, ' ');
  std::string result = bytes.substr(0, start) + json + bytes.substr(start + size);
  PutWord(result, 8, result.size());
  PutWord(result, kHeadSize, json.size());
  return result;
}

}  // namespace

std::string WriteDelivery(headless::Scene& scene, const std::string& path,
                          std::vector<std::string>& warnings) {
  RoundKeys(scene);
  const std::string folder = path.substr(0, path.size() - FileNameOf(path).size());
  const TemporaryFile marked(folder + ".rigwright-" + std::to_string(getpid()) + EndingOf(path));
  // The user knows the file by the name that he gave.
  const auto renamed = [&](std::string text) {
    const std::size_t at = text.find(marked.GetPath());
    return at == std::string::npos ? text : text.replace(at, marked.GetPath().size(), path);
  };
  const headless::WriteResult written = headless::GltfWriter::Write(scene, marked.GetPath());
  if (!written) return renamed(written.error);
  for (const std::string& text : written.warnings) warnings.push_back(renamed(text));
  std::string bytes;
  std::string error;
  if (!util::readFile(marked.GetPath(), bytes, &error)) return renamed(error);
  util::writeFile(path, WithoutMarks(bytes), &error);
  return error;
}

}  // namespace orv::app
