#include "app/session/document/AutosaveFolder.h"

#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <utility>

#include "app/session/document/KeptText.h"
#include "core/services/DataRoot.h"
#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::app {

namespace fs = std::filesystem;

namespace {

constexpr char kAbout[] = "about";
constexpr char kOwner[] = "owner";

Problem FolderProblem(const std::string& why) {
  return {"the autosave", why, "see that the data root can be written and has room", {}};
}

bool ReadNumber(const std::vector<std::string>& lines, std::size_t line, std::int64_t& value) {
  return util::parseNumber(lines[line], value);
}

}  // namespace

std::string AutosaveFolder::Root() {
  return rws::core::DataRoot::Get() + "/autosave";
}

AutosaveFolder::AutosaveFolder(std::string path, FileLock lock)
    : m_path(std::move(path)), m_lock(std::move(lock)) {
  AutosaveNote note;
  if (ReadNote(note)) m_latest = note.file;
}

FileLock AutosaveFolder::LockAll() {
  constexpr double kPatience = 2.0;  // s
  std::error_code ignored;
  fs::create_directories(Root(), ignored);
  return FileLock(Root() + "/lock", kPatience);
}

FileLock AutosaveFolder::LockOwner(const std::string& folder) {
  return FileLock(folder + "/" + kOwner, 0.0);
}

Problem AutosaveFolder::Make() {
  std::error_code error;
  if (!m_path.empty() && fs::is_directory(m_path, error)) return {};
  // Between the folder's coming and its lock nobody may take it for one that a crash has left.
  const FileLock all = LockAll();
  if (all.IsBusy()) return FolderProblem("another program looks through " + Root());
  if (!all.IsHeld()) return FolderProblem(all.GetError());
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const auto stem =
      Root() + "/" +
      std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(now).count()) + "-" +
      std::to_string(::getpid());
  std::string path = stem;
  for (int i = 2; !fs::create_directory(path, error); ++i) {
    if (error) return FolderProblem(path + ": cannot be made (" + error.message() + ")");
    path = stem + "-" + std::to_string(i);
  }
  FileLock lock = LockOwner(path);
  if (!lock.IsHeld()) return FolderProblem(lock.GetError());
  m_path = path;
  m_lock = std::move(lock);
  m_latest.clear();
  return {};
}

std::string AutosaveFolder::NextFile() {
  std::string name;
  std::error_code error;
  do name = "scene-" + std::to_string(++m_number) + ".glb";
  while (fs::exists(PathOf(name), error));
  return name;
}

Problem AutosaveFolder::SetNote(const AutosaveNote& note) {
  const std::int64_t numbers[] = {note.stamp.size, note.stamp.seconds, note.stamp.nanoseconds,
                                  note.time, note.clip};
  std::string text = KeptText(note.scene) + "\n" + note.file + "\n";
  for (const std::int64_t number : numbers) text += std::to_string(number) + "\n";
  std::string error;
  if (!util::writeFile(PathOf(kAbout), text, &error)) return FolderProblem(error);
  std::error_code ignored;
  if (!m_latest.empty() && m_latest != note.file) fs::remove(PathOf(m_latest), ignored);
  m_latest = note.file;
  return {};
}

bool AutosaveFolder::ReadNote(AutosaveNote& note) const {
  std::string text;
  if (!util::readFile(PathOf(kAbout), text)) return false;
  const std::vector<std::string> lines = LinesOf(text);
  if (lines.size() != 7 || !ReadKeptText(lines[0], note.scene)) return false;
  note.file = lines[1];
  return note.file == fs::path(note.file).filename() && ReadNumber(lines, 2, note.stamp.size) &&
         ReadNumber(lines, 3, note.stamp.seconds) && ReadNumber(lines, 4, note.stamp.nanoseconds) &&
         ReadNumber(lines, 5, note.time) && util::parseNumber(lines[6], note.clip);
}

void AutosaveFolder::Clear() {
  if (m_path.empty()) return;
  std::error_code ignored;
  fs::remove(PathOf(kAbout), ignored);  // first: without it nothing is offered
  fs::remove(PathOf(kJournal), ignored);
  if (!m_latest.empty()) fs::remove(PathOf(m_latest), ignored);
  m_latest.clear();
}

void AutosaveFolder::Remove() {
  if (m_path.empty()) return;
  const FileLock all = LockAll();
  Clear();
  std::error_code ignored;
  fs::remove_all(m_path, ignored);
  m_path.clear();
  m_lock = FileLock();
}

}  // namespace orv::app
