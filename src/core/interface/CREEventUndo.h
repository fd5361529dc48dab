// Undo of a change that a rig makes by an event.
#pragma once

#include <string>
#include <utility>

#include "core/interface/CInterface.h"
#include "core/interface/CUndo.h"

namespace orv::rws {

/// Prefixes of the event names that undo and redo replay.
inline constexpr char kRealUndo[] = "REALUNDO";
inline constexpr char kRealRedo[] = "REALREDO";

/// Rig event undo: Undo and Redo each replay one event name to a callback, which is not owned.
class CREEventUndo : public CUndo {
 public:
  CREEventUndo(CInterface::Callback* callback, std::string undoEvent, std::string redoEvent)
      : m_callback(callback),
        m_undoEvent(std::move(undoEvent)),
        m_redoEvent(std::move(redoEvent)) {}

  void Undo(bool) override { m_callback->OnCallback(m_undoEvent); }
  void Redo() override { m_callback->OnCallback(m_redoEvent); }

 private:
  CInterface::Callback* m_callback;
  std::string m_undoEvent;
  std::string m_redoEvent;
};

}  // namespace orv::rws
