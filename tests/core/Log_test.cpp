// The log file, its level and its listener.
#include <algorithm>
#include <thread>

#include "support/CoreTest.h"

namespace orv::tests {
namespace {

using rws::core::LogLevel;

class Log : public DataRootTest {
 protected:
  ~Log() override {
    rws::core::CloseLog();
    rws::core::SetLogLevel(LogLevel::kInfo);
  }
};

TEST_F(Log, HoldsWhatReachesItsLevelAndTheListenerGetsAll) {
  std::vector<std::string> heard;
  rws::core::SetLogListener([&](LogLevel level, const std::string& text) {
    heard.push_back(text);
    if (level == LogLevel::kError) rws::core::LogEntry(LogLevel::kDebug, "from the listener");
  });
  rws::core::LogEntry(LogLevel::kInfo, "before any log");
  folder.Write("data/log.xml", R"(<log level="warning"/>)");
  ASSERT_TRUE(rws::core::NewLog(folder.path + "/new/core.log"));
  rws::core::LogEntry(LogLevel::kInfo, "quiet");
  rws::core::LogEntry(LogLevel::kWarning, "loud {}");
  rws::core::LogEntry(LogLevel::kError, "louder");
  const std::string text = folder.Read("new/core.log");
  EXPECT_EQ(text.find("quiet"), std::string::npos);
  EXPECT_NE(text.find("warning loud {}\n"), std::string::npos);
  EXPECT_NE(text.find("error   louder\n"), std::string::npos);
  EXPECT_EQ(heard, (std::vector<std::string>{"before any log", "quiet", "loud {}", "louder",
                                             "from the listener"}));

  ASSERT_TRUE(rws::core::NewLog(folder.path + "/new/core.log"));
  EXPECT_EQ(folder.Read("new/core.log"), "");
}

TEST_F(Log, ThatCannotBeOpenedIsReportedAndEntriesGoNowhere) {
  folder.Write("file", "");
  std::string error;
  EXPECT_FALSE(rws::core::NewLog(folder.path + "/file/core.log", &error));
  EXPECT_NE(error.find("/file/core.log"), std::string::npos);
  rws::core::LogEntry(LogLevel::kError, "nowhere");

  std::string heard;
  rws::core::SetLogListener([&](LogLevel, const std::string& text) { heard += text; });
  folder.Write("data/log.xml", R"(<log level="shrill"/>)");
  ASSERT_TRUE(rws::core::NewLog(folder.path + "/core.log"));
  EXPECT_NE(heard.find("data/log.xml: it holds no level; "), std::string::npos) << heard;
  heard.clear();
  folder.Write("data/log.xml", "<log\n level=\"debug>");
  ASSERT_TRUE(rws::core::NewLog(folder.path + "/core.log"));
  EXPECT_NE(heard.find("data/log.xml: line 2, column 2: "), std::string::npos) << heard;
  EXPECT_NE(heard.find("Write <log level=\"info\"/> there"), std::string::npos) << heard;
  rws::core::LogEntry(LogLevel::kInfo, "still here");
  EXPECT_NE(folder.Read("core.log").find("still here"), std::string::npos);
}

TEST_F(Log, TakesWholeLinesFromSeveralThreads) {
  ASSERT_TRUE(rws::core::NewLog(folder.path + "/core.log"));
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      for (int j = 0; j < 200; ++j) rws::core::LogEntry(LogLevel::kInfo, std::string(100, 'x'));
    });
  }
  for (std::thread& thread : threads) thread.join();
  std::istringstream lines(folder.Read("core.log"));
  int count = 0;
  for (std::string line; std::getline(lines, line); ++count)
    EXPECT_EQ(std::count(line.begin(), line.end(), 'x'), 100);
  EXPECT_EQ(count, 800);
}

}  // namespace
}  // namespace orv::tests
