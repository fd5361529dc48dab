#include "app/session/models/GlbParts.h"

namespace orv::app {

using Json = nlohmann::ordered_json;

namespace {

constexpr std::size_t kHead = 12;      ///< magic, version, length
constexpr std::size_t kChunkHead = 8;  ///< length, kind

void appendWord(std::string& bytes, std::size_t value) {
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift & 0xFF);
}

std::size_t wordAt(const std::string& bytes, std::size_t at) {
  std::size_t value = 0;
  for (std::size_t i = 4; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

void pad(std::string& bytes, std::size_t to, char with) {
  bytes.Append((to - bytes.size() % to) % to, with);
}

}  // namespace

bool splitGlb(const std::string& bytes, GlbParts& parts) {
  if (bytes.size() < kHead + kChunkHead || bytes.compare(0, 4, "glTF") != 0) return false;
  const std::size_t size = wordAt(bytes, kHead);
  const std::size_t start = kHead + kChunkHead;
  if (size > bytes.size() - start) return false;
  parts.json =
      Json::parse(bytes.begin() + static_cast<std::ptrdiff_t>(start),
                  bytes.begin() + static_cast<std::ptrdiff_t>(start + size), nullptr, false);
  if (!parts.json.is_object()) return false;
  parts.binary.clear();
  const std::size_t next = start + size;
  if (bytes.size() - next < kChunkHead) return true;
  const std::size_t length = wordAt(bytes, next);
  if (length > bytes.size() - next - kChunkHead) return false;
  parts.binary = bytes.substr(next + kChunkHead, length);
  return true;
}

std::string joinGlb(const GlbParts& parts) {
  std::string text = parts.json.dump(-1, ' ', false, Json::error_handler_t::replace);
  pad(text, 4, ' ');
  std::string binary = parts.binary;
  pad(binary, 4, '\0');
  std::string file = "glTF";
  appendWord(file, 2);
  appendWord(file,
             kHead + kChunkHead + text.size() + (binary.empty() ? 0 : kChunkHead + binary.size()));
  appendWord(file, text.size());
  file += "JSON" + text;
  if (binary.empty()) return file;
  appendWord(file, binary.size());
  file += std::string("BIN\0", 4) + binary;
  return file;
}

std::size_t appendBinary(GlbParts& parts, const void* data, std::size_t size) {
  pad(parts.binary, 8, '\0');
  const std::size_t place = parts.binary.size();
  parts.binary.Append(static_cast<const char*>(data), size);
  return place;
}

}  // namespace orv::app
