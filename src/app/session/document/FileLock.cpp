#include "app/session/document/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>
#include <utility>

namespace orv::app {

FileLock::FileLock(const std::string& path, double seconds) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::duration<double>(seconds);
  m_descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  while (m_descriptor >= 0 && ::flock(m_descriptor, LOCK_EX | LOCK_NB) != 0) {
    m_busy = errno == EWOULDBLOCK;
    if (errno == EINTR) continue;
    if (!m_busy || Clock::now() >= end) {
      const int reason = errno;
      ::close(std::exchange(m_descriptor, -1));
      errno = reason;
      break;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  if (IsHeld())
    m_busy = false;
  else if (!m_busy)
    m_error = path + ": cannot be locked (" + std::strerror(errno) + ")";
}

FileLock::~FileLock() {
  if (IsHeld()) ::close(m_descriptor);
}

FileLock::FileLock(FileLock&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)),
      m_busy(other.m_busy),
      m_error(std::move(other.m_error)) {}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
  std::swap(m_descriptor, other.m_descriptor);
  std::swap(m_busy, other.m_busy);
  m_error.swap(other.m_error);
  return *this;
}

}  // namespace orv::app
