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

  const std::string& path() const { return m_path; }

 private:
  std::string m_path;
};

/// Keys that floats hold need no doubles beside them.
void roundKeys(headless::Scene& scene) {
  for (headless::SceneNode* node : scene.nodes()) {
    for (const auto path : {headless::ChannelPath::kTranslation, headless::ChannelPath::kRotation,
                            headless::ChannelPath::kScale}) {
      const headless::Channel* channel = node->channel(path);
      if (!channel) continue;
      const headless::FloatKeys keys = headless::toFloatKeys(*channel);
      headless::Channel rounded(path, channel->mode());
      if (rounded.setKeys({keys.times.begin(), keys.times.end()},
                          {keys.values.begin(), keys.values.end()}) &&
          rounded != *channel)
        node->setChannel(std::move(rounded));
    }
  }
}

void dropMarks(Json& document) {
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

std::size_t wordAt(const std::string& bytes, std::size_t at) {
  std::size_t value = 0;
  for (std::size_t i = 4; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

void putWord(std::string& bytes, std::size_t at, std::size_t value) {
  for (std::size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<char>(value >> (8 * i) & 0xFF);
}

/// The same file without our marks.
std::string withoutMarks(const std::string& bytes) {
  const bool binary = bytes.compare(0, kMagic.size(), kMagic) == 0;
  const std::size_t start = binary ? kHeadSize + kChunkHeadSize : 0;
  const std::size_t size = binary ? wordAt(bytes, kHeadSize) : bytes.size();
  Json document = Json::parse(bytes.begin() + static_cast<std::ptrdiff_t>(start),
                              bytes.begin() + static_cast<std::ptrdiff_t>(start + size));
  dropMarks(document);
  if (!binary) return document.dump(2) + "\n";
  std::string json = document.dump();
  json.append((4 - json.size() % 4) % 4, ' ');
  std::string result = bytes.substr(0, start) + json + bytes.substr(start + size);
  putWord(result, 8, result.size());
  putWord(result, kHeadSize, json.size());
  return result;
}

}  // namespace

std::string writeDelivery(headless::Scene& scene, const std::string& path,
                          std::vector<std::string>& warnings) {
  roundKeys(scene);
  const std::string folder = path.substr(0, path.size() - fileNameOf(path).size());
  const TemporaryFile marked(folder + ".rigwright-" + std::to_string(getpid()) + endingOf(path));
  // The user knows the file by the name that he gave.
  const auto renamed = [&](std::string text) {
    const std::size_t at = text.find(marked.path());
    return at == std::string::npos ? text : text.replace(at, marked.path().size(), path);
  };
  const headless::WriteResult written = headless::GltfWriter::write(scene, marked.path());
  if (!written) return renamed(written.error);
  for (const std::string& text : written.warnings) warnings.push_back(renamed(text));
  std::string bytes;
  std::string error;
  if (!util::readFile(marked.path(), bytes, &error)) return renamed(error);
  util::writeFile(path, withoutMarks(bytes), &error);
  return error;
}

}  // namespace orv::app
