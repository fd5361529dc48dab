// The log, as it is written.
#pragma once

#include <deque>
#include <memory>

#include "core/CoreMessages.h"
#include "core/windows/Window.h"

namespace orv::rws::core::windows {

/// Keeps the latest lines of the log, from the program's start on, for whoever shows them.
class LogHistory : public util::MessageNode {
 public:
  static constexpr std::size_t kMost = 5000;

  struct Line {
    int number;  ///< counts up
    LogLevel level;
    std::string text;
  };

  explicit LogHistory(CoreImplementation& core);
  const std::deque<Line>& GetLines() const { return m_lines; }

 private:
  void onMessage(util::Message& message, bool broadcast) override;

  std::deque<Line> m_lines;
  int m_last = 0;
};

class LogWindow : public Window {
 public:
  LogWindow(Windows& windows, std::shared_ptr<LogHistory> history);

  void OnLive() override;

 protected:
  void OnBuilt() override { ShowAll(); }
  void OnComponent(gui::Component& source, util::Message& message) override;

 private:
  void ShowAll();
  void ShowCount();
  bool IsShownLine(const LogHistory::Line& line) const;
  void Copy();

  std::shared_ptr<LogHistory> m_history;
  int m_shown = 0;  ///< number of the last line that was looked at
  LogLevel m_least = LogLevel::kDebug;
};

}  // namespace orv::rws::core::windows
