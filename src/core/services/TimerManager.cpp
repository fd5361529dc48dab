#include "core/services/TimerManager.h"

#include <QTimerEvent>

namespace orv::rws::core {

TimerManager::TimerManager() {
  m_elapsed.start();
}

void TimerManager::StartTimer(int id, double seconds) {
  KillTimer(id);
  m_timers[id] = startTimer(static_cast<int>(seconds * 1000.0), Qt::CoarseTimer);
}

void TimerManager::KillTimer(int id) {
  const auto found = m_timers.find(id);
  if (found == m_timers.end()) return;
  if (found->second != 0) killTimer(found->second);
  m_timers.erase(found);
}

void TimerManager::timerEvent(QTimerEvent* event) {
  const auto elapsedMs = static_cast<unsigned>(m_elapsed.elapsed());
  for (const auto& [id, qtId] : m_timers) {
    if (qtId != event->timerId()) continue;
    OnTimer(id, elapsedMs);  // may change the map: nothing of it is used afterwards
    return;
  }
  killTimer(event->timerId());
  OnTimer(-1, elapsedMs);
}

}  // namespace orv::rws::core
