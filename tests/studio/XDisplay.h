// An X server for tests, with hands of its own.
#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QThread>
#include <string>

namespace orv::tests {

/// For programs that draw on it: leaks of the graphics driver can't be told apart, since it is
/// unloaded when they are looked for.
inline const QString kNoLeaks = "ASAN_OPTIONS=detect_leaks=0";

/// An X server without a screen, which ends with this.
class XDisplay {
 public:
  /// What a test that needs one is skipped for; empty when all is there.
  static std::string whatIsMissing() {
    for (const char* program : {"Xvfb", "xdotool", "setxkbmap"})
      if (QStandardPaths::findExecutable(program).isEmpty())
        return std::string("there is no ") + program + " (scripts/setup.sh installs it)";
    return {};
  }
  XDisplay() {
    m_server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1500x1000x24", "-nolisten", "tcp"});
    if (m_server.waitForReadyRead(20000)) name = ":" + m_server.readLine().trimmed();
  }
  ~XDisplay() {
    m_server.terminate();
    m_server.waitForFinished();
  }
  /// Hands; each command of xdotool, and a while for it to arrive.
  void Do(const QString& command) { Run("xdotool", command.split(' ')); }
  void Run(const QString& program, const QStringList& words) {
    QProcess hands;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", name);
    hands.setProcessEnvironment(environment);
    hands.start(program, words);
    EXPECT_TRUE(hands.waitForFinished(20000) && hands.exitCode() == 0)
        << program.toStdString() << " " << words.join(' ').toStdString()
        << hands.readAllStandardError().toStdString();
    QThread::msleep(250);
  }

  QString name;

 private:
  QProcess m_server;
};

}  // namespace orv::tests
