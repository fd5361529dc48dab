#include "adaptor/headless/GltfUri.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>
#include <vector>

#include "util/AtomicFile.h"
#include "util/xml/Base64.h"

namespace orv::rws::adaptor::headless {

namespace {

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool DecodePercent(std::string_view text, std::string& result) {
  result.clear();
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      result += text[i];
      continue;
    }
    if (text.size() - i < 3) return false;
    const int high = HexDigit(text[i + 1]);
    const int low = HexDigit(text[i + 2]);
    if (high < 0 || low < 0) return false;
    result += static_cast<char>(high * 16 + low);
    i += 2;
  }
  return true;
}

bool IsUnreserved(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '_' || c == '.' || c == '~' || c == '/';
}

}  // namespace

bool IsDataUri(std::string_view uri) {
  return uri.substr(0, 5) == "data:";
}

bool DecodeDataUri(std::string_view uri, std::string& bytes) {
  const std::size_t comma = uri.find(',');
  if (!IsDataUri(uri) || comma == std::string_view::npos) return false;
  const std::string_view type = uri.substr(0, comma);
  const std::string_view body = uri.substr(comma + 1);
  constexpr std::string_view kMark = ";base64";
  if (type.size() < kMark.size() || type.substr(type.size() - kMark.size()) != kMark)
    return DecodePercent(body, bytes);
  std::vector<unsigned char> decoded;
  if (!util::xml::decodeBase64(body, decoded)) return false;
  bytes.assign(decoded.begin(), decoded.end());
  return true;
}

std::string EncodeDataUri(std::string_view bytes) {
  return "data:application/octet-stream;base64," +
         util::xml::encodeBase64(bytes.data(), bytes.size());
}

bool DecodeRelativeUri(std::string_view uri, std::string& path) {
  // A colon before the first slash ends a scheme, such as "https:".
  const std::size_t colon = uri.find(':');
  if (colon != std::string_view::npos && colon < uri.find('/')) return false;
  if (!DecodePercent(uri, path) || path.empty()) return false;
  return path[0] != '/' && path[0] != '\\' && path.find('\0') == std::string::npos;
}

std::string EncodeRelativeUri(std::string_view path) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string result;
  for (const char c : path) {
    if (IsUnreserved(c)) {
      result += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      result += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
  return result;
}

bool ReadWhole(const std::string& path, std::string& bytes, std::string& error) {
  std::error_code code;
  const bool regular = std::filesystem::is_regular_file(path, code);
  const std::uintmax_t size = regular ? std::filesystem::file_size(path, code) : 0;
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
      regular && !code ? std::fopen(path.c_str(), "rb") : nullptr, &std::fclose);
  // Pipes, and whatever goes wrong, are told by the general way.
  if (file == nullptr) return util::readFile(path, bytes, &error);
  bytes.resize(size);
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
  if (std::ferror(file.get()) == 0) return true;
  return util::readFile(path, bytes, &error);
}

bool ReadSideFile(const std::string& path, std::string& bytes, std::string& error) {
  std::error_code code;
  const auto status = std::filesystem::status(path, code);
  if (!std::filesystem::exists(status)) {
    error = path + ": there is no such file";
    return false;
  }
  if (!std::filesystem::is_regular_file(status)) {
    error = path + ": is no regular file";
    return false;
  }
  return ReadWhole(path, bytes, error);
}

}  // namespace orv::rws::adaptor::headless
