// The undo list of a host.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "adaptor/common/UndoUnit.h"

namespace orv::rws::adaptor {

/// All steps in the order of execution, in numbered blocks; a block is one entry of the host's undo
/// queue. Blocks do not nest here: the adaptor passes on its outermost alone. Main thread only.
class UndoManagement {
 public:
  using UndoUnit = adaptor::UndoUnit;

  ~UndoManagement();

  /// Opens a block; ignored while one is open or steps run.
  void begin(const std::string& name);
  /// Takes the unit. False, with the unit destroyed, while no block is open or steps run. The
  /// first unit of new work cuts what stands undone off.
  bool push(UndoUnitPtr unit);
  /// Closes the block under `name` and returns its id; an empty one leaves nothing behind, and -1.
  int commit(const std::string& name);
  /// Closes the block and takes its steps back for good. What stood undone ahead of it can be
  /// redone again.
  void cancel();
  /// Undoes the latest block in force; false when there is none, or one is open.
  bool stepBack();
  /// Redoes the block that was undone last; false when there is none, or one is open.
  bool stepForward();
  /// Drops all steps; an open block is closed.
  void clearHistory();

  bool isOpen() const { return open; }
  /// Steps are being undone or redone.
  bool isBusy() const { return busy; }
  /// Id of the open block; 0 when none is.
  int openId() const { return open ? currentId : 0; }
  /// Id of the block that stepBack would undo, or stepForward redo; -1 when there is none.
  int undoId() const { return position > 0 ? units[position - 1]->id : -1; }
  int redoId() const;
  /// Id of the block in force that has the latest unit for which `counts`; -1 when there is none.
  int latestId(const std::function<bool(const UndoUnit&)>& counts) const;
  /// The latest unit of the open block, or null.
  UndoUnit* lastInBlock() const;
  /// Names of the blocks in force, oldest first.
  std::vector<std::string> entryNames() const;
  /// Names of the blocks that stand undone, in the order in which they would be redone.
  std::vector<std::string> redoNames() const;
  /// Name of the block that stepForward would redo; empty when there is none.
  std::string redoName() const;

 private:
  void discardTail();

  bool blockEmpty = true;
  std::vector<UndoUnitPtr> units;
  std::vector<UndoUnitPtr> discarded;  ///< cut off by new work; kept until the history is cleared
  std::size_t cutByBlock = 0;          ///< units that the open block's first one has cut off
  int position = 0;                    ///< units in force; those behind stand undone
  int lastCommandId = -1;              ///< block of the latest entry, -1 when none
  int currentId = 0;
  std::string blockName;
  bool open = false;
  bool busy = false;  ///< steps run or the tail is being cut; pushes are refused
};

}  // namespace orv::rws::adaptor
