// What crashed programs have left.
#pragma once

#include <string>
#include <vector>

#include "app/session/anyhost/Problem.h"
#include "app/session/document/AutosaveFolder.h"
#include "app/session/document/TakeJournal.h"

namespace orv::app {

/// The autosave of a program that is gone, and the take that it was in. Nobody else is offered it
/// while this lives; what is neither restored nor discarded is offered again.
struct Leftover {
  AutosaveFolder folder;
  AutosaveNote note;
  std::string title;         ///< of the scene: its file's name, or "Untitled"
  bool fileIsNewer = false;  ///< the scene's file was written after the autosave and the take
  bool hasTake = false;
  JournalledTake take;
  std::vector<std::string> warnings;  ///< what of it is damaged

  double takeSeconds() const { return take.end - take.head.start; }
  std::string autosave() const { return folder.pathOf(note.file); }
};

/// All of this data root, the latest first. Folders without an autosave are removed on the way.
std::vector<Leftover> findLeftovers();
/// Removes it for good.
void discard(Leftover leftover);

}  // namespace orv::app
