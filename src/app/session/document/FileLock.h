// A lock that the system takes back when its process ends, however it ends.
#pragma once

#include <string>

namespace orv::app {

/// An exclusive lock by a file, which is made when it is not there and stays. Every other program,
/// and every other lock of this one, has to wait; a killed process holds none.
class FileLock {
 public:
  /// Holds nothing.
  FileLock() = default;
  /// Tries for `seconds` (0: once).
  FileLock(const std::string& path, double seconds);
  ~FileLock();
  FileLock(FileLock&& other) noexcept;
  FileLock& operator=(FileLock&& other) noexcept;

  bool isHeld() const { return m_descriptor >= 0; }
  /// Whether it is another that holds it.
  bool isBusy() const { return m_busy; }
  /// Names path and reason when it is neither held nor busy.
  const std::string& error() const { return m_error; }

 private:
  int m_descriptor = -1;
  bool m_busy = false;
  std::string m_error;
};

}  // namespace orv::app
