// How long work tells of itself and hears that it is to stop.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <utility>

namespace orv::app {

/// Given to long work, which tells how far it is and asks whether to go on, both on its own thread
/// and between steps that leave nothing half done.
class Monitor {
 public:
  /// `done` of `total` steps, mostly frames, `seconds` after the work began.
  using Progress = std::function<void(long done, long total, double seconds)>;

  /// Either may be empty. The flag, which any thread or a signal may set, must outlive the monitor.
  explicit Monitor(Progress progress = {}, const std::atomic<bool>* cancel = nullptr)
      : m_progress(std::move(progress)), m_cancel(cancel), m_begun(Clock::now()) {}

  void Tell(long done, long total) const {
    if (m_progress) m_progress(done, total, Seconds());
  }
  bool IsCancelled() const { return m_cancel && *m_cancel; }
  /// Since construction.
  double Seconds() const { return std::chrono::duration<double>(Clock::now() - m_begun).count(); }

 private:
  using Clock = std::chrono::steady_clock;

  Progress m_progress;
  const std::atomic<bool>* m_cancel;
  Clock::time_point m_begun;
};

}  // namespace orv::app
