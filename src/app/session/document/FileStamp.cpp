#include "app/session/document/FileStamp.h"

#include <sys/stat.h>

namespace orv::app {

FileStamp FileStamp::Of(const std::string& path) {
  struct stat found;
  if (::stat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) return {};
  return {found.st_size, found.st_mtim.tv_sec, found.st_mtim.tv_nsec};
}

}  // namespace orv::app
