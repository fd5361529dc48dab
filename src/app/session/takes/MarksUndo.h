// Undo of what runs mark in the list of takes.
#pragma once

#include <memory>
#include <utility>

#include "app/session/takes/KeptTakes.h"
#include "core/interface/CUndo.h"

namespace orv::app {

/// Exchanges the marks of before and after a step. Finds nothing to do when the scene has gone.
class KeptTakes::MarksUndo : public rws::CUndo {
 public:
  MarksUndo(KeptTakes& takes, Marks before, Marks after)
      : m_takes(takes),
        m_life(takes.m_life),
        m_before(std::move(before)),
        m_after(std::move(after)) {}
  void Undo(bool) override {
    if (!m_life.expired()) m_takes.PutMarks(m_before);
  }
  void Redo() override {
    if (!m_life.expired()) m_takes.PutMarks(m_after);
  }

 private:
  KeptTakes& m_takes;
  std::weak_ptr<int> m_life;
  Marks m_before, m_after;
};

}  // namespace orv::app
