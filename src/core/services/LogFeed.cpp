#include "core/services/LogFeed.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>
#include <mutex>
#include <utility>
#include <vector>

#include "core/MessageQueue.h"

namespace orv::rws::core {

namespace {

/// Lines of other threads that wait for the main thread; of more the first are dropped.
constexpr std::size_t kMostLines = 1000;

}  // namespace

struct LogFeed::Inbox {
  std::mutex mutex;
  std::vector<LogLine> lines;
  LogFeed* feed = nullptr;  ///< null once it has gone

  /// True for a line of the main thread, which tells it at once.
  bool Take(LogLevel level, const std::string& text) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (!feed) return false;
    const bool isMain = QThread::currentThread() == feed->thread();
    if (isMain && feed->m_messages.GetPresent() == LogLine::kId) return false;
    if (!isMain && lines.empty()) QCoreApplication::postEvent(feed, new QEvent(QEvent::User));
    if (lines.size() == kMostLines) lines.erase(lines.begin());
    lines.push_back({level, text});
    return isMain;
  }
};

LogFeed::LogFeed(MessageQueue& messages)
    : m_messages(messages), m_inbox(std::make_shared<Inbox>()) {
  m_inbox->feed = this;
  m_listener = AddLogListener([this, inbox = m_inbox](LogLevel level, const std::string& text) {
    if (inbox->Take(level, text)) TellLines();
  });
}

LogFeed::~LogFeed() {
  RemoveLogListener(m_listener);
  const std::lock_guard<std::mutex> lock(m_inbox->mutex);
  m_inbox->feed = nullptr;
}

void LogFeed::customEvent(QEvent*) {
  TellLines();
}

void LogFeed::TellLines() {
  std::vector<LogLine> lines;
  {
    const std::lock_guard<std::mutex> lock(m_inbox->mutex);
    lines.swap(m_inbox->lines);
  }
  for (LogLine& line : lines) m_messages.Tell(std::move(line));
}

}  // namespace orv::rws::core
