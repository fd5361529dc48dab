// The frame around what somebody asks of the core.
#pragma once

#include "core/CoreImplementation.h"

namespace orv::rws::core {

/// Ends an edit that is open, so that its undo step stands ahead of what comes, and holds the news
/// back until all is done.
class CoreRequest {
 public:
  explicit CoreRequest(CoreImplementation& core) : m_hold(core.GetMessages()) { core.EndEdit(); }

 private:
  MessageQueue::Hold m_hold;
};

}  // namespace orv::rws::core
