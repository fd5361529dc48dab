// A word for saves that take long.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace orv::app {

class Output;

/// Says on stderr that a file is being saved, once that has taken a second. Saving asks nobody in
/// between, so a thread of its own waits for it.
class SavingNote {
 public:
  SavingNote(Output& output, const std::string& path);
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
