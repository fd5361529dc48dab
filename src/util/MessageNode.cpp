#include "util/MessageNode.h"

#include <algorithm>
#include <utility>

#include "util/DynamicObject.h"

namespace orv::util {

namespace {

using Nodes = std::vector<MessageNode*>;

bool contains(const Nodes& nodes, const MessageNode* node) {
  return std::find(nodes.begin(), nodes.end(), node) != nodes.end();
}

void eraseOne(Nodes& nodes, const MessageNode* node) {
  const auto found = std::find(nodes.begin(), nodes.end(), node);
  if (found != nodes.end()) nodes.erase(found);
}

MessageNode* at(const Nodes& nodes, int i) {
  return i >= 0 && i < static_cast<int>(nodes.size()) ? nodes[i] : nullptr;
}

/// Gives a message's field back its value at the end of a delivery.
class Restored {
 public:
  explicit Restored(MessageNode*& field) : m_field(field), m_value(field) {}
  Restored(const Restored&) = delete;
  Restored& operator=(const Restored&) = delete;
  ~Restored() { m_field = m_value; }

 private:
  MessageNode*& m_field;
  MessageNode* m_value;
};

}  // namespace

Message::~Message() {
  while (!attachments.empty()) {
    DynamicObject* last = attachments.back();
    attachments.pop_back();
    destroy(last);
  }
}

MessageNode::MessageNode(std::string name) : m_name(std::move(name)) {}

void MessageNode::setName(const std::string& name) {
  m_name = name;
}

void MessageNode::onMessage(Message&, bool) {}

void MessageNode::send(MessageNode* node, Message& message) {
  if (!node) return;
  const Restored sender(message.sender), target(message.target);
  message.sender = this;
  node->onMessage(message, false);
}

void MessageNode::broadcast(Message& message) {
  const Restored sender(message.sender), target(message.target);
  message.sender = this;
  // From the last to the first, so that a listener that unsubscribes itself does not disturb the
  // walk.
  for (int i = listenerCount() - 1; i >= 0; --i) {
    if (i >= static_cast<int>(m_listeners.size())) continue;
    message.target = m_listeners[i];
    m_listeners[i]->onMessage(message, true);
  }
}

void MessageNode::post(MessageNode* node, Message& message) {
  const Restored origin(message.origin);
  message.origin = this;
  send(node, message);
}

void MessageNode::postAll(Message& message) {
  const Restored origin(message.origin);
  message.origin = this;
  broadcast(message);
}

bool MessageNode::connect(MessageNode* subject) {
  if (!subject) return false;
  if (contains(m_subjects, subject)) return true;
  if (contains(subject->m_listeners, this)) return false;
  m_subjects.push_back(subject);
  subject->m_listeners.push_back(this);
  Message message(MSG_CONNECTED, 0, 0);
  post(subject, message);
  return true;
}

bool MessageNode::disconnect(MessageNode* subject) {
  if (!subject) return false;
  if (!contains(m_subjects, subject)) return true;
  if (!contains(subject->m_listeners, this)) return false;
  Message message(MSG_DISCONNECTED, 0, 0);
  post(subject, message);
  eraseOne(m_subjects, subject);
  eraseOne(subject->m_listeners, this);
  return true;
}

std::string MessageNode::name() const {
  return m_name;
}

int MessageNode::subjectCount() const {
  return static_cast<int>(m_subjects.size());
}

MessageNode* MessageNode::subject(int i) const {
  return at(m_subjects, i);
}

int MessageNode::listenerCount() const {
  return static_cast<int>(m_listeners.size());
}

MessageNode* MessageNode::listener(int i) const {
  return at(m_listeners, i);
}

bool MessageNode::hasListener(const MessageNode* node) const {
  return contains(m_listeners, node);
}

bool MessageNode::hasSubject(const MessageNode* node) const {
  return contains(m_subjects, node);
}

void MessageNode::copyConnections(MessageNode* other) {
  if (!other || other == this) return;
  dropAllLinks();
  for (int i = 0; i < other->listenerCount(); ++i) other->listener(i)->connect(this);
  for (int i = 0; i < other->subjectCount(); ++i) connect(other->subject(i));
}

void MessageNode::dropAllLinks() {
  // An entry that survives its disconnect (the sides disagree, or an override refuses) is taken out
  // here, so that no list keeps a pointer to a dead node.
  while (!m_subjects.empty()) {
    MessageNode* last = m_subjects.back();
    disconnect(last);
    if (!contains(m_subjects, last)) continue;
    eraseOne(m_subjects, last);
    eraseOne(last->m_listeners, this);
  }
  while (!m_listeners.empty()) {
    MessageNode* last = m_listeners.back();
    last->disconnect(this);
    if (!contains(m_listeners, last)) continue;
    eraseOne(m_listeners, last);
    eraseOne(last->m_subjects, this);
  }
}

MessageNode::~MessageNode() {
  Message message(MSG_DESTROYED, 0, 0);
  MessageNode::postAll(message);
  dropAllLinks();
}

}  // namespace orv::util
