// The application object that Qt's timers need, made before the first test of a program.
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <memory>

namespace orv::tests {

class QtApplication : public testing::Environment {
 public:
  void SetUp() override {
    if (!QCoreApplication::instance())
      m_application = std::make_unique<QCoreApplication>(m_argc, m_argv);
  }
  void TearDown() override { m_application.reset(); }

 private:
  int m_argc = 1;
  char m_name[5] = "test";
  char* m_argv[2] = {m_name, nullptr};
  std::unique_ptr<QCoreApplication> m_application;
};

/// One per program is enough; a second does nothing.
inline testing::Environment* const kQtApplication =
    testing::AddGlobalTestEnvironment(new QtApplication);

}  // namespace orv::tests
