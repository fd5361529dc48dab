// Undo steps that exchange what they saved with what stands.
#pragma once

#include <utility>

#include "core/interface/CUndo.h"

namespace orv::rws::core {

/// Keeps a `State` from before a change. Undo and redo take turns in exchanging it with the present
/// one.
template <class State>
class StateUndo : public CUndo {
 public:
  void Undo(bool keep) override {
    if (!keep)
      Apply(m_saved);  // stays, so that the rollback can be applied again
    else if (!m_undone)
      Exchange();
  }
  void Redo() override {
    if (m_undone) Exchange();
  }

 protected:
  explicit StateUndo(State saved) : m_saved(std::move(saved)) {}
  const State& Saved() const { return m_saved; }
  virtual State Present() = 0;
  virtual void Apply(const State& state) = 0;

 private:
  void Exchange() {
    State present = Present();
    Apply(m_saved);
    m_saved = std::move(present);
    m_undone = !m_undone;
  }

  State m_saved;
  bool m_undone = false;
};

}  // namespace orv::rws::core
