#include "app/session/SavingNote.h"

#include <chrono>
#include <system_error>
#include <utility>

namespace orv::app {

SavingNote::SavingNote(std::function<void()> tell) {
  if (!tell) return;
  try {
    m_thread = std::thread([this, tell = std::move(tell)] {
      std::unique_lock<std::mutex> lock(m_mutex);
      if (!m_change.wait_for(lock, std::chrono::seconds(1), [this] { return m_done; })) tell();
    });
  } catch (const std::system_error&) {
    // Without a thread to spare the save goes on in silence.
  }
}

SavingNote::~SavingNote() {
  if (!m_thread.joinable()) return;
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_done = true;
  }
  m_change.notify_one();
  m_thread.join();
}

}  // namespace orv::app
