// Where a running program keeps what a crash would lose.
#pragma once

#include <cstdint>
#include <string>

#include "app/session/anyhost/Problem.h"
#include "app/session/document/FileLock.h"
#include "app/session/document/FileStamp.h"

namespace orv::app {

/// What an autosave tells of itself.
struct AutosaveNote {
  std::string scene;      ///< path of the scene file that it belongs to; empty: it has none yet
  FileStamp stamp;        ///< of that file as it was read or written last
  std::string file;       ///< the autosave's own file, a name in the folder
  std::int64_t time = 0;  ///< when it was written (s since 1970)
};

/// A folder below "autosave" in the data root. It belongs to the process that holds the lock of its
/// file "owner"; a folder that nobody holds is what a crash has left. The latest autosave is the
/// one that the file "about" names; "take.journal" holds the inputs of a take on top of that.
class AutosaveFolder {
 public:
  static constexpr const char* kJournal = "take.journal";

  static std::string root();

  AutosaveFolder() = default;
  /// A folder whose lock the caller has got.
  AutosaveFolder(std::string path, FileLock lock);

  /// Makes a folder of this process's own, unless it has one.
  Problem make();
  /// Empty before `make`.
  const std::string& path() const { return m_path; }
  std::string pathOf(const std::string& name) const { return m_path + "/" + name; }
  /// A name that no autosave in the folder has; the latest stays until `setNote` names another.
  std::string nextFile();
  /// The autosave `note.file` stands written: from here on it is the latest, the one before goes.
  Problem setNote(const AutosaveNote& note);
  /// False when there is no autosave, or `note` can't be read.
  bool readNote(AutosaveNote& note) const;
  /// Takes autosave and journal away; side files of an opened autosave stay.
  void clear();
  /// Takes the folder away with all that is in it.
  void remove();

 private:
  std::string m_path;
  FileLock m_lock;
  std::string m_latest;  ///< name of the present autosave's file
  int m_number = 0;
};

}  // namespace orv::app
