#include "util/AtomicFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <utility>

namespace orv::util {

namespace {

constexpr std::size_t kChunk = 1 << 20;  ///< bytes between two looks at the cancel check

std::function<bool()>& cancelCheck() {
  static std::function<bool()> check;
  return check;
}

std::string describe(const std::string& path, const char* action, std::error_code reason) {
  return path + ": " + action + ": " + reason.message();
}

}  // namespace

AtomicFile::AtomicFile(const std::string& path) : m_path(path) {
  if (!m_file.open(path)) failStep();
}

void AtomicFile::setCancelCheck(std::function<bool()> isCancelled) {
  cancelCheck() = std::move(isCancelled);
}

bool AtomicFile::write(const void* data, std::size_t size) {
  const char* at = static_cast<const char*>(data);
  while (size > 0 && m_file.isOpen()) {
    if (isCancelled()) return false;
    const std::ptrdiff_t written = m_file.write(at, std::min(size, kChunk));
    if (written < 0) return failStep();
    at += written;
    size -= static_cast<std::size_t>(written);
  }
  return m_file.isOpen();
}

bool AtomicFile::isCancelled() {
  if (!cancelCheck() || !cancelCheck()()) return false;
  fail("was not written", {ECANCELED, std::generic_category()});
  return true;
}

bool AtomicFile::commit() {
  if (!m_file.isOpen() || isCancelled()) return false;
  if (!m_file.close()) return failStep();
  if (m_file.isInPlace()) return true;
  if (isCancelled()) return false;  // a flush may take long
  return m_file.replace() || failStep();
}

bool AtomicFile::failStep() {
  return fail(m_file.problem().action, m_file.problem().reason);
}

bool AtomicFile::fail(const char* action, std::error_code reason) {
  if (m_error.empty()) m_error = describe(m_path, action, reason);
  m_file.discard();
  return false;
}

bool writeFile(const std::string& path, std::string_view bytes, std::string* error) {
  AtomicFile file(path);
  file.write(bytes);
  const bool done = file.commit();
  if (!done && error) *error = file.error();
  return done;
}

bool readFile(const std::string& path, std::string& bytes, std::string* error) {
  bytes.clear();
  std::error_code reason;
  std::FILE* file = openToRead(path, reason);
  std::array<char, 1 << 16> block;
  while (file && !reason && !std::feof(file)) {
    bytes.append(block.data(), std::fread(block.data(), 1, block.size(), file));
    if (std::ferror(file)) reason = {errno, std::generic_category()};
  }
  if (file) std::fclose(file);
  if (!reason) return true;
  bytes.clear();
  if (error) *error = describe(path, "cannot be read", reason);
  return false;
}

std::string absolutePath(const std::string& path) {
  std::error_code error;
  const std::filesystem::path absolute =
      std::filesystem::absolute(std::filesystem::u8path(path), error).lexically_normal();
  std::string text = error ? path : absolute.generic_u8string();
  // The slash of a root, such as that of a drive, is no end.
  const std::size_t root = error ? 0 : absolute.root_path().generic_u8string().size();
  while (text.size() > std::max<std::size_t>(1, root) && text.back() == '/') text.pop_back();
  return text;
}

}  // namespace orv::util
