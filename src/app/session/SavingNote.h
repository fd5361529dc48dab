// A word for saves that take long.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace orv::app {

/// Tells that something is going on, once that has taken a second, for work that asks nobody in
/// between, such as saving: a thread of its own waits for it.
class SavingNote {
 public:
  /// `tell` is called from that thread, at most once; it may be empty.
  explicit SavingNote(std::function<void()> tell);
  ~SavingNote();
  SavingNote(const SavingNote&) = delete;
  SavingNote& operator=(const SavingNote&) = delete;

 private:
  std::mutex m_mutex;
  std::condition_variable m_change;
  bool m_done = false;
  std::thread m_thread;
};

}  // namespace orv::app
