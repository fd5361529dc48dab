// The lines of the log as messages.
#pragma once

#include <QObject>
#include <memory>

namespace orv::rws::core {

class MessageQueue;

/// Tells each line of the log while it lives. Lines of other threads come when the main thread, on
/// which this is made, gets to its events or logs itself.
class LogFeed : public QObject {
 public:
  explicit LogFeed(MessageQueue& messages);
  ~LogFeed() override;

 protected:
  void customEvent(QEvent* event) override;

 private:
  struct Inbox;

  void TellLines();

  MessageQueue& m_messages;
  std::shared_ptr<Inbox> m_inbox;  ///< a thread may be about to log when this goes
  int m_listener;
};

}  // namespace orv::rws::core
