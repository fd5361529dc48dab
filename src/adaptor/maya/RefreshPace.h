// How often the host's views are painted while a take runs.
#pragma once

#include <chrono>

namespace orv::rws::adaptor::maya {

/// Views are painted by force in a take. No more often than leaves as much time between two
/// paintings as one costs, but five times a second at least, so that a heavy scene does not hold up
/// what the performer does. Asks a clock: nothing that steps rigs may depend on it.
class RefreshPace {
 public:
  void Restart() { m_cost = Clock::duration::zero(), m_done = {}; }
  bool IsDue() const {
    const Clock::duration longest = std::chrono::milliseconds(200);
    return Clock::now() - m_done >= (m_cost < longest ? m_cost : longest);
  }
  template <class Paint>
  void Run(Paint paint) {
    const Clock::time_point start = Clock::now();
    paint();
    m_done = Clock::now();
    m_cost = m_done - start;
  }

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point m_done{};
  Clock::duration m_cost{};
};

}  // namespace orv::rws::adaptor::maya
