// Publish and subscribe between named objects.
#pragma once

#include <string>
#include <vector>

#include "util/Message.h"

namespace orv::util {

/// A node of the message graph. B is a subject of A exactly when A is a listener of B; a link owns
/// nothing and ends by `disconnect`, `copyConnections` or a destructor. Main thread only. A node
/// must not be deleted while it delivers.
class MessageNode {
 public:
  explicit MessageNode(std::string name);
  MessageNode(const MessageNode&) = delete;
  MessageNode& operator=(const MessageNode&) = delete;

  virtual void setName(const std::string& name);
  /// The receiver's hook. `broadcast` is false when the message was addressed to this node alone.
  virtual void onMessage(Message& message, bool broadcast);
  /// Forwards to one node, keeping `origin`; null is ignored.
  virtual void send(MessageNode* node, Message& message);
  /// Forwards to all listeners, last first, keeping `origin`. A listener may unsubscribe meanwhile.
  virtual void broadcast(Message& message);
  /// As `send`, with this node as `origin`.
  virtual void post(MessageNode* node, Message& message);
  /// As `broadcast`, with this node as `origin`.
  virtual void postAll(Message& message);
  /// Subscribes this node to `subject`, which gets `MSG_CONNECTED`. True when the link stands
  /// afterwards; false for null, and when the two sides disagree about the link.
  virtual bool connect(MessageNode* subject);
  /// Ends a subscription, after `MSG_DISCONNECTED` to the subject. True when there is none
  /// afterwards; false for null, and when the two sides disagree about the link.
  virtual bool disconnect(MessageNode* subject);
  virtual std::string name() const;
  virtual int subjectCount() const;
  /// Null when `i` is out of range.
  virtual MessageNode* subject(int i) const;
  virtual int listenerCount() const;
  /// Null when `i` is out of range.
  virtual MessageNode* listener(int i) const;
  virtual bool hasListener(const MessageNode* node) const;
  virtual bool hasSubject(const MessageNode* node) const;
  /// Drops all links of this node, then gives it the same subjects and listeners as `other`, which
  /// keeps its own. Null and the node itself change nothing.
  virtual void copyConnections(MessageNode* other);
  /// Tells all listeners (`MSG_DESTROYED`), then takes the node out of the graph.
  virtual ~MessageNode();

 protected:
  std::string m_name;
  std::vector<MessageNode*> m_listeners;  ///< in order of subscription
  std::vector<MessageNode*> m_subjects;   ///< in order of subscription

 private:
  void dropAllLinks();
};

}  // namespace orv::util
