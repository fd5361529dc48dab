// One step of a user's undo that happens whole or not at all.
#pragma once

#include <string>

#include "core/host/AdaptorInterface.h"

namespace orv::app {

/// An undo block for the length of a scope. Unless it is kept, what was done in it is rolled back
/// at its end, and the host's time goes back to where it was. Not within another's block, such as a
/// take's, all of which would be rolled back.
class UndoBlock {
 public:
  UndoBlock(rws::AdaptorInterface& adaptor, const std::string& name)
      : m_adaptor(adaptor), m_time(adaptor.GetCurrentTime()) {
    m_adaptor.BeginUndoBlock(name);
  }
  ~UndoBlock() {
    if (m_kept) {
      m_adaptor.EndUndoBlock();
    } else {
      m_adaptor.CancelUndoBlock();
      if (m_adaptor.GetCurrentTime() != m_time) m_adaptor.SetCurrentTime(m_time);
    }
  }
  UndoBlock(const UndoBlock&) = delete;
  UndoBlock& operator=(const UndoBlock&) = delete;

  void Keep() { m_kept = true; }

 private:
  rws::AdaptorInterface& m_adaptor;
  const double m_time;  ///< s
  bool m_kept = false;
};

}  // namespace orv::app
