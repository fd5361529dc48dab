#include "adaptor/maya/plugin/Platform.h"

#include <windows.h>

#include <algorithm>

namespace orv::rws::adaptor::maya {

void AddLibraryFolder(const std::string& folder) {
  std::string path = folder;
  std::replace(path.begin(), path.end(), '/', '\\');
  const int length = MultiByteToWideChar(CP_UTF8, 0, path.c_str(), -1, nullptr, 0);
  if (length <= 0) return;
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, path.c_str(), -1, wide.data(), length);
  AddDllDirectory(wide.c_str());
}

}  // namespace orv::rws::adaptor::maya
