/// Files that are replaced whole or stay as they were.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

#include "util/FileReplacement.h"

namespace orv::util {

/// Writes a file through a temporary neighbour that is flushed to the disk and renamed by `commit`.
/// Without a successful `commit` the neighbour is removed and the old file stays untouched.
///
/// An existing file's permissions are kept (a write-protected file is refused), and a symbolic link
/// stays while its target is replaced. What exists and is no regular file, such as a device or a
/// pipe, is written to directly, as it cannot be replaced.
class AtomicFile {
 public:
  explicit AtomicFile(const std::string& path);
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  /// Asked by all files while they write and before they are put in place; true makes that step
  /// fail like any other. For the whole process, set while no file is open; empty for none.
  static void setCancelCheck(std::function<bool()> isCancelled);

  /// Appends bytes. False after this or any earlier step failed.
  bool write(const void* data, std::size_t size);
  bool write(std::string_view text) { return write(text.data(), text.size()); }
  /// Puts the file in place. False when any step failed; then nothing is left behind.
  bool commit();
  /// Names the path and the reason of the first failure; empty while all is well.
  const std::string& error() const { return m_error; }

 private:
  bool isCancelled();
  /// What the last step of `m_file` could not do.
  bool failStep();
  bool fail(const char* action, std::error_code reason);

  std::string m_path;  ///< as the caller named it, for messages
  std::string m_error;
  FileReplacement m_file;
};

/// Writes `bytes` as the whole of a file. On failure `error`, when given, names path and reason.
bool writeFile(const std::string& path, std::string_view bytes, std::string* error = nullptr);

/// Reads a whole file. On failure `bytes` is empty and `error`, when given, names path and reason.
bool readFile(const std::string& path, std::string& bytes, std::string* error = nullptr);

/// `path` from the root on, without "." and "..", and without a slash at its end. Links stay. What
/// can't be told (the folder of work has gone) leaves `path` as it is.
std::string absolutePath(const std::string& path);

}  // namespace orv::util
