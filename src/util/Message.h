// What travels through the graph of message nodes.
#pragma once

#include <cstdint>
#include <vector>

namespace orv::util {

class DynamicObject;
class MessageNode;

/// Ids that `MessageNode` itself sends; all others belong to the subsystem that defines them.
enum : std::int32_t {
  MSG_CONNECTED = -1,     ///< a listener (`origin`) has just subscribed to the receiver
  MSG_DISCONNECTED = -2,  ///< a listener (`origin`) is about to leave the receiver
  MSG_DESTROYED = -3      ///< the sender is being destroyed; reaches all its listeners
};

/// One message. It lives on the caller's stack for the whole delivery; receivers never keep it.
class Message {
 public:
  Message(std::int32_t idValue, std::int32_t paramValue, std::uint64_t dataValue)
      : id(idValue), param(paramValue), data(dataValue) {}
  Message(const Message&) = delete;
  Message& operator=(const Message&) = delete;
  /// Destroys the attachments, last first.
  virtual ~Message();

  MessageNode* origin = nullptr;  ///< node that started the delivery
  MessageNode* sender = nullptr;  ///< node that delivers right now
  std::int32_t id;
  std::int32_t param;
  std::uint64_t data;             ///< a number, or a pointer (as uintptr_t), by convention of `id`
  MessageNode* target = nullptr;  ///< the receiver, during a broadcast
  std::vector<DynamicObject*> attachments;  ///< owned
};

}  // namespace orv::util
