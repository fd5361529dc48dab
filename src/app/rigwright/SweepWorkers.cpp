#include "app/rigwright/SweepWorkers.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>
#include <algorithm>
#include <memory>

#include "app/rigwright/Interrupt.h"
#include "app/session/anyhost/Names.h"

namespace orv::app {

namespace {

constexpr int kInterruptMs = 50;    // how often the flag is looked at
constexpr int kWorkerEndMs = 5000;  // that a worker has to end by itself

/// Hands rows to one worker after the other until none is left.
class Crew {
 public:
  Crew(const std::vector<long>& rows, const std::function<void(long)>& tell)
      : m_rows(rows), m_tell(tell) {
    QObject::connect(&m_look, &QTimer::timeout, [this] {
      if (IsInterrupted()) m_loop.quit();
    });
    m_look.start(kInterruptMs);
  }

  void Hire(const QStringList& arguments) {
    m_workers.push_back(std::make_unique<Worker>());
    Worker& worker = *m_workers.back();
    worker.process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QObject::connect(&worker.process, &QProcess::readyReadStandardOutput,
                     [this, &worker] { Hear(worker); });
    QObject::connect(&worker.process, &QProcess::errorOccurred, [this, &worker] {
      if (worker.process.state() == QProcess::NotRunning) Lose(worker, "could not be run");
    });
    QObject::connect(
        &worker.process,
        static_cast<void (QProcess::*)(int, QProcess::ExitStatus)>(&QProcess::finished),
        [this, &worker](int status, QProcess::ExitStatus how) {
          Lose(worker,
               how == QProcess::CrashExit ? "has crashed" : "ended with " + std::to_string(status));
        });
    worker.process.start(QCoreApplication::applicationFilePath(), arguments);
    Feed(worker);
  }

  /// What went wrong.
  std::string Work() {
    if (m_done < m_rows.size() && m_busy > 0) m_loop.exec();
    for (auto& worker : m_workers) {
      QObject::disconnect(&worker->process, nullptr, nullptr, nullptr);
      worker->process.closeWriteChannel();
      if (IsInterrupted()) worker->process.terminate();
    }
    for (auto& worker : m_workers)
      if (!worker->process.waitForFinished(kWorkerEndMs)) worker->process.kill();
    return Joined(m_problems, "; ");
  }

 private:
  struct Worker {
    QProcess process;
    long row = 0;  ///< that it has; 0: none
  };

  void Feed(Worker& worker) {
    worker.row = m_next < m_rows.size() ? m_rows[m_next++] : 0;
    if (worker.row == 0) return;
    ++m_busy;
    worker.process.write(QByteArray::number(static_cast<qlonglong>(worker.row)) + "\n");
  }

  void Hear(Worker& worker) {
    while (worker.process.canReadLine()) {
      const QByteArray line = worker.process.readLine().trimmed();
      if (worker.row == 0 ||
          line != "done " + QByteArray::number(static_cast<qlonglong>(worker.row)))
        continue;
      --m_busy;
      m_tell(static_cast<long>(++m_done));
      Feed(worker);
    }
    if (m_busy == 0) m_loop.quit();
  }

  void Lose(Worker& worker, const std::string& why) {
    if (worker.row == 0) return;
    m_problems.push_back("row " + std::to_string(worker.row) + ": its worker " + why);
    worker.row = 0;
    if (--m_busy == 0) m_loop.quit();
  }

  const std::vector<long>& m_rows;
  const std::function<void(long)>& m_tell;
  std::vector<std::unique_ptr<Worker>> m_workers;
  std::vector<std::string> m_problems;
  std::size_t m_next = 0, m_done = 0;
  int m_busy = 0;  ///< workers that have a row
  QEventLoop m_loop;
  QTimer m_look;
};

}  // namespace

std::string SweepWorkers::Run(const std::vector<long>& rows,
                              const std::function<void(long)>& tell) {
  QStringList arguments;
  for (const std::string& each : m_arguments) arguments << QString::fromStdString(each);
  Crew crew(rows, tell);
  for (int i = 0; i < std::min(m_count, static_cast<int>(rows.size())); ++i) crew.Hire(arguments);
  return crew.Work();
}

}  // namespace orv::app
