#include "app/session/document/RecentFiles.h"

#include <algorithm>
#include <filesystem>
#include <functional>

#include "app/session/document/FileLock.h"
#include "app/session/document/FileStamp.h"
#include "app/session/document/KeptText.h"
#include "core/services/DataRoot.h"
#include "util/AtomicFile.h"

namespace orv::app {

namespace fs = std::filesystem;

namespace {

constexpr double kPatience = 2.0;  ///< s for which another program's change is waited for

std::vector<std::string> ReadPaths() {
  std::string text;
  std::vector<std::string> paths;
  if (!util::readFile(RecentFiles::Path(), text)) return paths;
  for (const std::string& line : LinesOf(text)) {
    std::string path;
    const bool good = !line.empty() && ReadKeptText(line, path);
    if (good && std::find(paths.begin(), paths.end(), path) == paths.end()) paths.push_back(path);
  }
  if (paths.size() > RecentFiles::kMost) paths.resize(RecentFiles::kMost);
  return paths;
}

Problem ListProblem(const std::string& why) {
  return {"the list of recent files", why, "see that the data root can be written", {}};
}

Problem Change(const std::function<void(std::vector<std::string>&)>& edit) {
  const fs::path file = RecentFiles::Path();
  std::error_code ignored;
  fs::create_directories(file.parent_path(), ignored);
  const FileLock lock((file.parent_path() / "recent.lock").string(), kPatience);
  if (lock.IsBusy()) return ListProblem("another program holds it");
  if (!lock.IsHeld()) return ListProblem(lock.GetError());
  std::vector<std::string> paths = ReadPaths();
  edit(paths);
  std::string text;
  for (std::size_t i = 0; i < std::min(paths.size(), RecentFiles::kMost); ++i)
    text += KeptText(paths[i]) + "\n";
  std::string error;
  return util::writeFile(file.string(), text, &error) ? Problem() : ListProblem(error);
}

void Take(std::vector<std::string>& paths, const std::string& path) {
  paths.erase(std::remove(paths.begin(), paths.end(), path), paths.end());
}

}  // namespace

std::string RecentFiles::Path() {
  return rws::core::DataRoot::GetDataFolder() + "/core/recent.txt";
}

std::vector<RecentFile> RecentFiles::List() {
  std::vector<RecentFile> files;
  for (std::string& path : ReadPaths()) {
    const bool isThere = FileStamp::Of(path).Exists();
    files.push_back({std::move(path), isThere});
  }
  return files;
}

Problem RecentFiles::Add(const std::string& path) {
  return Change([file = util::absolutePath(path)](std::vector<std::string>& paths) {
    Take(paths, file);
    paths.insert(paths.begin(), file);
  });
}

Problem RecentFiles::Remove(const std::string& path) {
  return Change([&path](std::vector<std::string>& paths) { Take(paths, path); });
}

Problem RecentFiles::Clear() {
  return Change([](std::vector<std::string>& paths) { paths.clear(); });
}

}  // namespace orv::app
