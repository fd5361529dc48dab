// A display with OpenGL for tests that draw, made before the first test of a program.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QProcess>
#include <memory>

namespace orv::tests {

/// Where there is no display a server of its own is started; the application runs offscreen on it,
/// which opens no window but has the server's OpenGL. Without either there is none, and
/// ORV_NEEDS_OPENGL skips.
class Display : public testing::Environment {
 public:
  void SetUp() override {
    if (qEnvironmentVariableIsEmpty("DISPLAY")) Start();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    m_application = std::make_unique<QApplication>(m_argc, m_argv);
  }
  void TearDown() override {
    m_application.reset();
    if (m_server.state() == QProcess::NotRunning) return;
    m_server.terminate();
    m_server.waitForFinished(5000);
  }

 private:
  void Start() {
    // It writes the number that it found free.
    m_server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1600x1000x24", "-nolisten", "tcp"});
    if (m_server.waitForReadyRead(10000)) qputenv("DISPLAY", ":" + m_server.readLine().trimmed());
  }

  QProcess m_server;
  int m_argc = 1;
  char m_name[5] = "test";
  char* m_argv[2] = {m_name, nullptr};
  std::unique_ptr<QApplication> m_application;
};

inline testing::Environment* const kDisplay = testing::AddGlobalTestEnvironment(new Display);

}  // namespace orv::tests

#define ORV_NEEDS_OPENGL()                                                             \
  if (const auto& graphics = orv::app::view::GetGraphics(); !graphics.problem.empty()) \
  GTEST_SKIP() << "NOT TESTED: " << graphics.problem                                   \
               << "; install xvfb and libgl1-mesa-dri (scripts/setup.sh), or set DISPLAY"
