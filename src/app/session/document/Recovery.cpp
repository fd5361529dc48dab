#include "app/session/document/Recovery.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace orv::app {

namespace fs = std::filesystem;

namespace {

/// The journal counts when it goes on from the present autosave.
void ReadTake(Leftover& leftover) {
  const std::string path = leftover.folder.PathOf(AutosaveFolder::kJournal);
  if (!FileStamp::Of(path).Exists()) return;
  Problem problem;
  if (!ReadJournal(path, leftover.take, problem)) {
    leftover.warnings.push_back(problem.why);
    return;
  }
  leftover.hasTake =
      leftover.take.head.autosave == leftover.note.file && leftover.GetTakeSeconds() > 0.0;
  if (leftover.hasTake && leftover.take.dropped)
    leftover.warnings.push_back(path + ": its last record is not whole and was left out");
}

bool IsLater(const FileStamp& a, const FileStamp& b) {
  return a.seconds != b.seconds ? a.seconds > b.seconds : a.nanoseconds > b.nanoseconds;
}

/// False for a folder without an autosave.
bool Read(Leftover& leftover) {
  if (!leftover.folder.ReadNote(leftover.note)) return false;
  const FileStamp autosave = FileStamp::Of(leftover.GetAutosave());
  if (!autosave.Exists()) return false;
  ReadTake(leftover);
  const FileStamp journal = FileStamp::Of(leftover.folder.PathOf(AutosaveFolder::kJournal));
  const std::string& scene = leftover.note.scene;
  const FileStamp file = scene.empty() ? FileStamp() : FileStamp::Of(scene);
  leftover.fileIsNewer =
      IsLater(file, leftover.hasTake && IsLater(journal, autosave) ? journal : autosave);
  leftover.title = scene.empty() ? "Untitled" : fs::path(scene).filename().string();
  return true;
}

}  // namespace

std::vector<Leftover> FindLeftovers() {
  std::vector<Leftover> found;
  std::error_code error;
  if (!fs::is_directory(AutosaveFolder::Root(), error)) return found;
  std::vector<fs::path> folders;
  for (fs::directory_iterator at(AutosaveFolder::Root(), error), end; !error && at != end;
       at.increment(error))
    if (at->is_directory(error)) folders.push_back(at->path());
  std::vector<Leftover> empty;
  {
    const FileLock all = AutosaveFolder::LockAll();
    if (!all.IsHeld()) return found;
    for (const fs::path& folder : folders) {
      FileLock lock = AutosaveFolder::LockOwner(folder.string());
      if (!lock.IsHeld()) continue;
      Leftover leftover;
      leftover.folder = AutosaveFolder(folder.string(), std::move(lock));
      (Read(leftover) ? found : empty).push_back(std::move(leftover));
    }
  }
  for (Leftover& leftover : empty) Discard(std::move(leftover));
  std::sort(found.begin(), found.end(),
            [](const Leftover& a, const Leftover& b) { return a.note.time > b.note.time; });
  return found;
}

void Discard(Leftover leftover) {
  leftover.folder.Remove();
}

}  // namespace orv::app
