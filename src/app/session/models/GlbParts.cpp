#include "app/session/models/GlbParts.h"

namespace orv::app {

using Json = nlohmann::ordered_json;

namespace {

constexpr std::size_t kHead = 12;      ///< magic, version, length
constexpr std::size_t kChunkHead = 8;  ///< length, kind

void AppendWord(std::string& bytes, std::size_t value) {
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift & 0xFF);
}

std::size_t WordAt(const std::string& bytes, std::size_t at) {
  std::size_t value = 0;
  for (std::size_t i = 4; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

void Pad(std::string& bytes, std::size_t to, char with) {
  bytes.append((to - bytes.size() % to) % to, with);
}

}  // namespace

bool SplitGlb(const std::string& bytes, GlbParts& parts) {
  if (bytes.size() < kHead + kChunkHead || bytes.compare(0, 4, "glTF") != 0) return false;
  const std::size_t size = WordAt(bytes, kHead);
  const std::size_t start = kHead + kChunkHead;
  if (size > bytes.size() - start) return false;
  parts.json =
      Json::parse(bytes.begin() + static_cast<std::ptrdiff_t>(start),
                  bytes.begin() + static_cast<std::ptrdiff_t>(start + size), nullptr, false);
  if (!parts.json.is_object()) return false;
  parts.binary.clear();
  const std::size_t next = start + size;
  if (bytes.size() - next < kChunkHead) return true;
  const std::size_t length = WordAt(bytes, next);
  if (length > bytes.size() - next - kChunkHead) return false;
  parts.binary = bytes.substr(next + kChunkHead, length);
  return true;
}

std::string JoinGlb(const GlbParts& parts) {
  std::string text = parts.json.dump(-1, ' ', false, Json::error_handler_t::replace);
  Pad(text, 4, ' ');
  std::string binary = parts.binary;
  Pad(binary, 4, '\0');
  std::string file = "glTF";
  AppendWord(file, 2);
  AppendWord(file,
             kHead + kChunkHead + text.size() + (binary.empty() ? 0 : kChunkHead + binary.size()));
  AppendWord(file, text.size());
  file += "JSON" + text;
  if (binary.empty()) return file;
  AppendWord(file, binary.size());
  file += std::string("BIN\0", 4) + binary;
  return file;
}

std::size_t AppendBinary(GlbParts& parts, const void* data, std::size_t size) {
  Pad(parts.binary, 8, '\0');
  const std::size_t place = parts.binary.size();
  parts.binary.append(static_cast<const char*>(data), size);
  return place;
}

}  // namespace orv::app
