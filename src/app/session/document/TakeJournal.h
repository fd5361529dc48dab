// The inputs of a take, on the disk while it runs.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "app/session/anyhost/Problem.h"
#include "util/AVar_Linear.h"

namespace orv::rws::core {
class CoreImplementation;
class Instance;
}  // namespace orv::rws::core

namespace orv::app {

/// What is known of a take when it begins.
struct JournalHead {
  std::string autosave;     ///< name of the autosave that holds the scene as it was before
  double start = 0.0;       ///< s
  double frameRate = 25.0;  ///< frames per second
};

/// Appends the raw values of all inputs of a take to a file, a checked record at a time. A record
/// is one plain write: what has been written outlives the process, however that ends. Nothing waits
/// for the disk, so a failing computer may lose more.
class TakeJournal {
 public:
  TakeJournal() = default;
  ~TakeJournal();
  TakeJournal(const TakeJournal&) = delete;
  TakeJournal& operator=(const TakeJournal&) = delete;

  /// Puts a new file in the place of an old one.
  Problem begin(const std::string& path, const JournalHead& head);
  bool isOpen() const { return m_descriptor >= 0; }
  /// Writes what the rigs of the take have recorded since the last call. Where that fails the
  /// journal ends there, with what it holds.
  Problem write(rws::core::CoreImplementation& core);
  /// The same at the take's end, and that it has ended.
  Problem end(rws::core::CoreImplementation& core);
  /// Stops writing; the file stays.
  void close();

 private:
  struct Input {
    std::uint32_t number;  ///< in the journal
    double written;        ///< time of the last sample in the journal (s)
  };
  /// Inputs of one rig by their index.
  using Rig = std::vector<Input>;

  void collect(rws::core::Instance& rig, std::string& record);
  Problem append(const std::string& record);

  std::string m_path;
  int m_descriptor = -1;
  double m_start = 0.0;
  std::uint32_t m_inputs = 0;  ///< that the journal knows
  std::map<int, Rig> m_rigs;   ///< by identity
  bool m_listed = false;       ///< m_rigs has those of the take
};

/// A take as its journal tells it.
struct JournalledTake {
  struct Input {
    std::string rig;
    std::string input;
    util::AVar_Linear<double> track;
  };
  JournalHead head;
  std::vector<Input> inputs;
  double end = 0.0;      ///< of the last frame (s), at least head.start
  bool ended = false;    ///< the take had come to its end
  bool dropped = false;  ///< the last record was not whole and does not count
};

/// Reads a journal. False, with `problem` told, for a file that is none.
bool readJournal(const std::string& path, JournalledTake& take, Problem& problem);

/// What a journalled take has come to in a scene.
struct RestoredTake {
  Problem problem;                    ///< why nothing has changed
  std::vector<std::string> warnings;  ///< inputs that the scene does not have
};

/// Puts the inputs in as tracks and resimulates from the take's start to its end, by which the take
/// is there again: one undo step. The scene must be as it was before the take.
RestoredTake restoreTake(rws::core::CoreImplementation& core, const JournalledTake& take);

}  // namespace orv::app
