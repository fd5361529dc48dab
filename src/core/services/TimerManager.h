// Qt timers under ids of the application's choice.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <map>

namespace orv::rws::core {

/// Gives Qt timers ids of the caller's choice and tells the milliseconds since construction with
/// each event. A known timer repeats until KillTimer.
class TimerManager : public QObject {
 public:
  TimerManager();

  /// Starts a coarse timer of `seconds`, cut to whole milliseconds, in place of any under `id`.
  void StartTimer(int id, double seconds);
  void KillTimer(int id);
  bool IsTimerRunning(int id) const { return m_timers.count(id) != 0; }
  /// `elapsedMs` are the low 32 bits of the milliseconds since construction. A Qt timer that nobody
  /// started here comes with the id -1 and is killed.
  virtual void OnTimer(int id, unsigned elapsedMs) = 0;

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  std::map<int, int> m_timers;  ///< application's id to Qt's id
  QElapsedTimer m_elapsed;
};

}  // namespace orv::rws::core
