#include "util/FileReplacement.h"

#include <cerrno>
#include <vector>

#include "util/win32/WideText.h"
#include "util/win32/Windows.h"

namespace orv::util {

namespace {

constexpr int kMaxNames = 1000;
/// What others may do with a file that we have open.
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kKeptAttributes =
    FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

HANDLE handleOf(std::intptr_t handle) {
  return reinterpret_cast<HANDLE>(handle);
}

std::intptr_t numberOf(HANDLE handle) {
  return reinterpret_cast<std::intptr_t>(handle);
}

std::string folderOf(const std::string& path) {
  const std::size_t end = path.find_last_of("/\\:");
  return end == std::string::npos ? std::string() : path.substr(0, end + 1);
}

/// The path of an open file without any link. Empty on failure.
std::string pathBehind(HANDLE file) {
  const DWORD size = GetFinalPathNameByHandleW(file, nullptr, 0, FILE_NAME_NORMALIZED);
  std::wstring path(size, L'\0');
  if (size == 0) return {};
  path.resize(GetFinalPathNameByHandleW(file, path.data(), size, FILE_NAME_NORMALIZED));
  return toUtf8(path);
}

}  // namespace

bool FileReplacement::open(const std::string& path) {
  m_target = path;
  const std::wstring wide = toWide(path);
  const DWORD attributes = GetFileAttributesW(wide.c_str());
  const bool named = attributes != INVALID_FILE_ATTRIBUTES;
  if (named && (attributes & FILE_ATTRIBUTE_DIRECTORY)) {
    m_problem = {"cannot be written", std::make_error_code(std::errc::is_a_directory)};
    return false;
  }
  if (named && (attributes & FILE_ATTRIBUTE_READONLY)) {
    SetLastError(ERROR_ACCESS_DENIED);
    return fail("cannot be written");
  }
  // A link's target must exist: Windows doesn't tell where one leads that leads nowhere.
  const HANDLE old =
      CreateFileW(wide.c_str(), GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
  if (old == INVALID_HANDLE_VALUE) {
    if (named) return fail("cannot be written");
    const DWORD reason = GetLastError();
    if (reason == ERROR_FILE_NOT_FOUND) return openTemporary();
    SetLastError(reason);
    return fail("cannot create a file beside it");
  }
  m_handle = numberOf(old);
  if (GetFileType(old) != FILE_TYPE_DISK) return true;
  if (attributes & FILE_ATTRIBUTE_REPARSE_POINT) m_target = pathBehind(old);
  m_handle = kNone;
  CloseHandle(old);
  if (m_target.empty()) return fail("cannot follow its links");
  return openTemporary() && matchOldFile(&attributes);
}

bool FileReplacement::openTemporary() {
  const std::string stem = folderOf(m_target) + "." + std::to_string(GetCurrentProcessId()) + ".";
  for (int i = 0; i < kMaxNames; ++i) {
    const std::string candidate = stem + std::to_string(i) + ".tmp";
    m_handle = numberOf(CreateFileW(toWide(candidate).c_str(), GENERIC_WRITE, 0, nullptr,
                                    CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (isOpen()) {
      m_temporary = candidate;
      return true;
    }
    if (GetLastError() != ERROR_FILE_EXISTS) break;
  }
  return fail("cannot create a file beside it");
}

bool FileReplacement::matchOldFile(const void* old) {
  const std::wstring target = toWide(m_target);
  const std::wstring temporary = toWide(m_temporary);
  DWORD size = 0;
  GetFileSecurityW(target.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<unsigned char> bytes(size);
  // A disk without access rights, such as a stick, has none to keep.
  if (size > 0 &&
      (!GetFileSecurityW(target.c_str(), DACL_SECURITY_INFORMATION, bytes.data(), size, &size) ||
       !SetFileSecurityW(temporary.c_str(), DACL_SECURITY_INFORMATION, bytes.data())))
    return fail("cannot keep its permissions");
  const DWORD kept = *static_cast<const DWORD*>(old) & kKeptAttributes;
  return kept == 0 || SetFileAttributesW(temporary.c_str(), kept) ||
         fail("cannot keep its attributes");
}

std::ptrdiff_t FileReplacement::write(const char* data, std::size_t size) {
  DWORD written = 0;
  if (WriteFile(handleOf(m_handle), data, static_cast<DWORD>(size), &written, nullptr))
    return static_cast<std::ptrdiff_t>(written);
  fail("cannot be written");
  return -1;
}

bool FileReplacement::close() {
  // A pipe or a console has nothing to flush.
  if (!isInPlace() && !FlushFileBuffers(handleOf(m_handle)))
    return fail("cannot be flushed to the disk");
  const HANDLE handle = handleOf(m_handle);
  m_handle = kNone;
  return CloseHandle(handle) || fail("cannot be closed");
}

bool FileReplacement::replace() {
  // One renaming. ReplaceFile takes two, and may stop with the old file gone.
  if (!MoveFileExW(toWide(m_temporary).c_str(), toWide(m_target).c_str(),
                   MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
    return fail("cannot be replaced");
  m_temporary.clear();
  return true;
}

bool FileReplacement::fail(const char* action) {
  m_problem = {action, {static_cast<int>(GetLastError()), std::system_category()}};
  return false;
}

void FileReplacement::discard() noexcept {
  if (isOpen()) CloseHandle(handleOf(m_handle));
  m_handle = kNone;
  if (!m_temporary.empty()) DeleteFileW(toWide(m_temporary).c_str());
  m_temporary.clear();
}

std::FILE* openToRead(const std::string& path, std::error_code& reason) {
  std::FILE* file = _wfopen(toWide(path).c_str(), L"rb");
  if (!file) reason = {errno, std::generic_category()};
  return file;
}

}  // namespace orv::util
