// Undo of a change to one variable.
#pragma once

#include <utility>

#include "core/interface/CUndo.h"

namespace orv::rws {

/// Saves a copy of a variable at construction, so that whatever happens to the variable afterwards
/// is one undoable step. `T` is a plain type, an AVar kind or a vector of them.
/// The variable is not owned and must outlive the step's use; the core drops steps whose rig is
/// gone.
template <class T>
class CVariableModUndo : public CUndo {
 public:
  explicit CVariableModUndo(T* target) : variable(target), saved(*target) {}

  void Undo(bool keep) override {
    if (!keep) {
      *variable = saved;  // saved stays, so that the rollback can be applied again
      return;
    }
    if (swapped) return;
    std::swap(*variable, saved);
    swapped = true;
  }

  void Redo() override {
    if (!swapped) return;
    std::swap(*variable, saved);
    swapped = false;
  }

 private:
  T* variable;
  T saved;
  bool swapped = false;
};

}  // namespace orv::rws

namespace orv {
using rws::CVariableModUndo;
}
