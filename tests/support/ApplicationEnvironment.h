// The application object of a test program.
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <memory>

namespace orv::tests {

/// Makes it before the first test; one per program is enough, a second does nothing.
template <class Application>
class ApplicationEnvironment : public testing::Environment {
 public:
  void SetUp() override {
    if (!QCoreApplication::instance())
      m_application = std::make_unique<Application>(m_argc, m_argv);
  }
  void TearDown() override { m_application.reset(); }

 private:
  int m_argc = 1;
  char m_name[5] = "test";
  char* m_argv[2] = {m_name, nullptr};
  std::unique_ptr<Application> m_application;
};

}  // namespace orv::tests
