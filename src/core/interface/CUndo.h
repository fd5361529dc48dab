// One undoable step.
#pragma once

namespace orv::rws {

/// A step in the host's undo queue, which owns it from PushUndo on.
class CUndo {
 public:
  /// Takes the step back. With `keep` the step can be redone; without, it is a one-way rollback
  /// that may be applied again.
  virtual void Undo(bool keep) = 0;
  virtual void Redo() = 0;
  /// Deletes the step.
  virtual void Destroy() { delete this; }
  virtual ~CUndo() = default;
};

}  // namespace orv::rws
