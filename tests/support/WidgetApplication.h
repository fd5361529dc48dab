// The application object that widgets need, made before the first test of a program.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <memory>

namespace orv::tests {

class WidgetApplication : public testing::Environment {
 public:
  void SetUp() override { m_application = std::make_unique<QApplication>(m_argc, m_argv); }
  void TearDown() override { m_application.reset(); }

 private:
  int m_argc = 1;
  char m_name[5] = "test";
  char* m_argv[2] = {m_name, nullptr};
  std::unique_ptr<QApplication> m_application;
};

inline testing::Environment* const kWidgetApplication =
    testing::AddGlobalTestEnvironment(new WidgetApplication);

}  // namespace orv::tests
