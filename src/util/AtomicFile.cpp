#include "util/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

namespace orv::util {

namespace {

constexpr int kMaxLinks = 40;
constexpr int kMaxNames = 1000;
constexpr std::size_t kChunk = 1 << 20;  ///< bytes between two looks at the cancel check

std::function<bool()>& cancelCheck() {
  static std::function<bool()> check;
  return check;
}

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

/// Follows symbolic links, also those whose target does not exist yet. False when they go in a
/// circle, with errno set.
bool followLinks(std::string& path) {
  std::array<char, PATH_MAX> link;
  for (int i = 0; i < kMaxLinks; ++i) {
    const ssize_t length = ::readlink(path.c_str(), link.data(), link.size());
    if (length < 0) return true;
    const std::string target(link.data(), static_cast<std::size_t>(length));
    path = target.rfind('/', 0) == 0 ? target : folderOf(path) + target;
  }
  errno = ELOOP;
  return false;
}

std::string describe(const std::string& path, const char* action, int number) {
  return path + ": " + action + ": " + std::generic_category().message(number);
}

}  // namespace

AtomicFile::AtomicFile(const std::string& path) : m_path(path), m_target(path) {
  open();
}

void AtomicFile::setCancelCheck(std::function<bool()> isCancelled) {
  cancelCheck() = std::move(isCancelled);
}

AtomicFile::~AtomicFile() {
  discard();
}

bool AtomicFile::open() {
  // Before any link is followed: the one behind /dev/stdout may lead to a pipe without a name.
  struct stat old;
  const bool exists = ::stat(m_path.c_str(), &old) == 0;
  if (exists && !S_ISREG(old.st_mode) && !S_ISDIR(old.st_mode)) {
    m_descriptor = ::open(m_path.c_str(), O_WRONLY | O_CLOEXEC);
    return m_descriptor >= 0 || fail("cannot be opened");
  }
  if (!followLinks(m_target)) return fail("cannot follow its links");
  if (exists && ::access(m_target.c_str(), W_OK) != 0) return fail("cannot be written");
  if (exists && S_ISDIR(old.st_mode)) {
    errno = EISDIR;
    return fail("cannot be written");
  }
  return openTemporary() && (!exists || matchOldFile(old));
}

bool AtomicFile::openTemporary() {
  const std::string folder = folderOf(m_target);
  const std::string stem = folder + "." + std::to_string(::getpid()) + ".";
  for (int i = 0; i < kMaxNames; ++i) {
    const std::string candidate = stem + std::to_string(i) + ".tmp";
    m_descriptor = ::open(candidate.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (m_descriptor >= 0) {
      m_temporary = candidate;
      return true;
    }
    if (errno != EEXIST) break;
  }
  return fail("cannot create a file beside it");
}

bool AtomicFile::matchOldFile(const struct stat& old) {
  // Only the superuser may give a file away; for all others the owner is the same already.
  if (::fchown(m_descriptor, old.st_uid, old.st_gid) != 0 && errno != EPERM) {
    return fail("cannot keep its owner");
  }
  if (::fchmod(m_descriptor, old.st_mode & 0777) != 0) return fail("cannot keep its permissions");
  return true;
}

bool AtomicFile::write(const void* data, std::size_t size) {
  const char* at = static_cast<const char*>(data);
  while (size > 0 && m_descriptor >= 0) {
    if (isCancelled()) return false;
    const ssize_t written = ::write(m_descriptor, at, std::min(size, kChunk));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return fail("cannot be written");
    at += written;
    size -= static_cast<std::size_t>(written);
  }
  return m_descriptor >= 0;
}

bool AtomicFile::isCancelled() {
  if (!cancelCheck() || !cancelCheck()()) return false;
  errno = ECANCELED;
  fail("was not written");
  return true;
}

bool AtomicFile::commit() {
  if (m_descriptor < 0 || isCancelled()) return false;
  // A pipe or a terminal has nothing to flush.
  if (::fsync(m_descriptor) != 0 && errno != EINVAL && errno != EROFS) {
    return fail("cannot be flushed to the disk");
  }
  const int descriptor = m_descriptor;
  m_descriptor = -1;
  if (::close(descriptor) != 0) return fail("cannot be closed");
  if (m_temporary.empty()) return true;
  if (isCancelled()) return false;  // a flush may take long
  if (::rename(m_temporary.c_str(), m_target.c_str()) != 0) return fail("cannot be replaced");
  m_temporary.clear();
  // The new name reaches the disk with its folder; the content is safe already if this fails.
  const std::string folder = folderOf(m_target);
  const int opened = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_CLOEXEC);
  if (opened >= 0) {
    ::fsync(opened);
    ::close(opened);
  }
  return true;
}

bool AtomicFile::fail(const char* action) {
  if (m_error.empty()) m_error = describe(m_path, action, errno);
  discard();
  return false;
}

void AtomicFile::discard() noexcept {
  if (m_descriptor >= 0) ::close(m_descriptor);
  m_descriptor = -1;
  if (!m_temporary.empty()) ::unlink(m_temporary.c_str());
  m_temporary.clear();
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
  std::FILE* file = std::fopen(path.c_str(), "rb");
  int number = file ? 0 : errno;
  std::array<char, 1 << 16> block;
  while (file && number == 0 && !std::feof(file)) {
    bytes.append(block.data(), std::fread(block.data(), 1, block.size(), file));
    if (std::ferror(file)) number = errno;
  }
  if (file) std::fclose(file);
  if (number == 0) return true;
  bytes.clear();
  if (error) *error = describe(path, "cannot be read", number);
  return false;
}

std::string absolutePath(const std::string& path) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(path, error);
  std::string text = error ? path : absolute.lexically_normal().string();
  while (text.size() > 1 && text.back() == '/') text.pop_back();
  return text;
}

}  // namespace orv::util
