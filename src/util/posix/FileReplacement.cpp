#include "util/FileReplacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>

namespace orv::util {

namespace {

constexpr int kMaxLinks = 40;
constexpr int kMaxNames = 1000;

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

int descriptorOf(std::intptr_t handle) {
  return static_cast<int>(handle);
}

}  // namespace

bool FileReplacement::open(const std::string& path) {
  m_target = path;
  // Before any link is followed: the one behind /dev/stdout may lead to a pipe without a name.
  struct stat old;
  const bool exists = ::stat(path.c_str(), &old) == 0;
  if (exists && !S_ISREG(old.st_mode) && !S_ISDIR(old.st_mode)) {
    m_handle = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
    return isOpen() || fail("cannot be opened");
  }
  if (!followLinks(m_target)) return fail("cannot follow its links");
  if (exists && ::access(m_target.c_str(), W_OK) != 0) return fail("cannot be written");
  if (exists && S_ISDIR(old.st_mode)) {
    errno = EISDIR;
    return fail("cannot be written");
  }
  return openTemporary() && (!exists || matchOldFile(&old));
}

bool FileReplacement::openTemporary() {
  const std::string stem = folderOf(m_target) + "." + std::to_string(::getpid()) + ".";
  for (int i = 0; i < kMaxNames; ++i) {
    const std::string candidate = stem + std::to_string(i) + ".tmp";
    m_handle = ::open(candidate.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (isOpen()) {
      m_temporary = candidate;
      return true;
    }
    if (errno != EEXIST) break;
  }
  return fail("cannot create a file beside it");
}

bool FileReplacement::matchOldFile(const void* old) {
  const auto& status = *static_cast<const struct stat*>(old);
  const int descriptor = descriptorOf(m_handle);
  // Only the superuser may give a file away; for all others the owner is the same already.
  if (::fchown(descriptor, status.st_uid, status.st_gid) != 0 && errno != EPERM) {
    return fail("cannot keep its owner");
  }
  if (::fchmod(descriptor, status.st_mode & 0777) != 0) return fail("cannot keep its permissions");
  return true;
}

std::ptrdiff_t FileReplacement::write(const char* data, std::size_t size) {
  const ssize_t written = ::write(descriptorOf(m_handle), data, size);
  if (written >= 0) return written;
  if (errno == EINTR) return 0;
  fail("cannot be written");
  return -1;
}

bool FileReplacement::close() {
  const int descriptor = descriptorOf(m_handle);
  // A pipe or a terminal has nothing to flush.
  if (::fsync(descriptor) != 0 && errno != EINVAL && errno != EROFS) {
    return fail("cannot be flushed to the disk");
  }
  m_handle = kNone;
  return ::close(descriptor) == 0 || fail("cannot be closed");
}

bool FileReplacement::replace() {
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

bool FileReplacement::fail(const char* action) {
  m_problem = {action, {errno, std::generic_category()}};
  return false;
}

void FileReplacement::discard() noexcept {
  if (isOpen()) ::close(descriptorOf(m_handle));
  m_handle = kNone;
  if (!m_temporary.empty()) ::unlink(m_temporary.c_str());
  m_temporary.clear();
}

std::FILE* openToRead(const std::string& path, std::error_code& reason) {
  std::FILE* file = std::fopen(path.c_str(), "rb");
  if (!file) reason = {errno, std::generic_category()};
  return file;
}

}  // namespace orv::util
