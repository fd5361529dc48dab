// How a file is known to be the one that was read or written.
#pragma once

#include <cstdint>
#include <string>

namespace orv::app {

/// A regular file's size and the time of its last change, the latter with the file system's own
/// grain. All are -1 where there is no such file.
struct FileStamp {
  std::int64_t size = -1;
  std::int64_t seconds = -1;  ///< since 1970
  std::int64_t nanoseconds = -1;

  bool exists() const { return size >= 0; }
  static FileStamp of(const std::string& path);
};

inline bool operator==(const FileStamp& a, const FileStamp& b) {
  return a.size == b.size && a.seconds == b.seconds && a.nanoseconds == b.nanoseconds;
}
inline bool operator!=(const FileStamp& a, const FileStamp& b) {
  return !(a == b);
}

}  // namespace orv::app
