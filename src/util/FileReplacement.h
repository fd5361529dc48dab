// The platform's calls by which a file is replaced.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <system_error>

namespace orv::util {

/// New content for a file, written to a temporary neighbour until `replace` puts it in place, or to
/// what can't be replaced (a device, a pipe) itself. Paths are UTF-8. What is not put in place by
/// the end is removed. Use it by AtomicFile.
class FileReplacement {
 public:
  /// What a step that gave false could not do, and why.
  struct Problem {
    const char* action = "";
    std::error_code reason;
  };

  FileReplacement() = default;
  ~FileReplacement() { discard(); }
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  bool open(const std::string& path);
  bool isOpen() const { return m_handle != kNone; }
  /// The number of bytes that went out, which may be fewer than `size`; negative when it failed.
  std::ptrdiff_t write(const char* data, std::size_t size);
  /// Flushes to the disk and closes; what was written is complete then, but not yet in place.
  bool close();
  /// True for what is written directly; then there is nothing to `replace`.
  bool isInPlace() const { return m_temporary.empty(); }
  /// Puts it in place of the old file, in one step, and brings that to the disk.
  bool replace();
  void discard() noexcept;

  const Problem& problem() const { return m_problem; }

 private:
  bool openTemporary();
  /// Gives the new file the permissions of the old one, which `old` describes in the platform's
  /// way.
  bool matchOldFile(const void* old);
  /// Notes the platform's last error.
  bool fail(const char* action);

  static constexpr std::intptr_t kNone = -1;

  std::intptr_t m_handle = kNone;  ///< descriptor, or handle of Windows
  std::string m_target;            ///< behind all symbolic links
  std::string m_temporary;         ///< empty when the target is written directly
  Problem m_problem;
};

/// Opens a file to read its bytes. On failure null, and `reason` is set.
std::FILE* openToRead(const std::string& path, std::error_code& reason);

}  // namespace orv::util
