// The one road on which the core's messages reach their listeners.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <vector>

#include "core/CoreMessages.h"
#include "util/MessageNode.h"

namespace orv::rws::core {

/// Delivers news to the listeners of a node, one at a time and in order, however the listeners act
/// on them. Without a listener nothing is kept. Main thread only.
class MessageQueue {
 public:
  /// Holds all back while one lives: what is half done is not shown.
  class Hold {
   public:
    explicit Hold(MessageQueue& queue) : m_queue(queue) { ++m_queue.m_holds; }
    ~Hold() {
      if (--m_queue.m_holds == 0) m_queue.Deliver();
    }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

   private:
    MessageQueue& m_queue;
  };

  explicit MessageQueue(util::MessageNode& node) : m_node(node) {}

  /// Whether anybody listens: worth asking before news that take work to put together.
  bool IsHeard() const { return m_node.listenerCount() > 0; }
  /// Whether something is being done that is told when it is done.
  bool IsHeld() const { return m_holds > 0; }
  /// At once, or behind what is under way. Of equal changes of values in a row one is told.
  void Tell(CoreNews news);
  /// To be called when `listener` subscribes: what came before is not told to it.
  void NoteListener(const util::MessageNode* listener);
  /// Id of the message that is being delivered, 0 for none.
  std::int32_t GetPresent() const { return m_present; }

 private:
  void Deliver();
  void DeliverOne(const CoreNews& news);

  util::MessageNode& m_node;
  std::deque<CoreNews> m_news;
  int m_holds = 0;
  std::int32_t m_present = 0;
  std::uint64_t m_told = 0;       ///< news that were ever put into the queue
  std::uint64_t m_delivered = 0;  ///< of them those that have left it, the present one too
  std::vector<util::MessageNode*> m_receivers;
  std::map<const util::MessageNode*, std::uint64_t> m_newcomers;  ///< m_told at their subscription
};

}  // namespace orv::rws::core
