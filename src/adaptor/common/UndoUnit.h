// One step of the undo list.
#pragma once

#include <memory>
#include <string>

namespace orv::rws::adaptor {

/// A step that UndoManagement owns. The first `undo` follows the doing of the step; from there on
/// `redo` and `undo` take turns.
class UndoUnit {
 public:
  /// Takes the step back; with `keep` it can be redone afterwards.
  virtual void undo(bool keep) = 0;
  virtual void redo() = 0;
  virtual void destroy() { delete this; }
  virtual ~UndoUnit() = default;
  /// The class's name, for logging.
  virtual const char* typeName() const = 0;

  int id = 0;        ///< number of its block
  std::string name;  ///< of its block
};

/// Deletes a unit the way it wants to be.
struct UndoUnitDeleter {
  void operator()(UndoUnit* unit) const { unit->destroy(); }
};

using UndoUnitPtr = std::unique_ptr<UndoUnit, UndoUnitDeleter>;

}  // namespace orv::rws::adaptor
