#include "core/services/Log.h"

#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>

#include "core/services/DataRoot.h"
#include "util/xml/Element.h"

namespace orv::rws::core {

namespace {

struct LevelName {
  const char* name;
  LogLevel level;
  spdlog::level::level_enum sinkLevel;
};

constexpr LevelName kLevels[] = {{"debug", LogLevel::kDebug, spdlog::level::debug},
                                 {"info", LogLevel::kInfo, spdlog::level::info},
                                 {"warning", LogLevel::kWarning, spdlog::level::warn},
                                 {"error", LogLevel::kError, spdlog::level::err}};

constexpr char kGiveLevel[] =
    "the log's level stays as it is. Write <log level=\"info\"/> there (or debug, warning, error), "
    "or delete the file.";

struct LogState {
  std::mutex mutex;
  std::shared_ptr<spdlog::logger> logger;
  LogLevel level = LogLevel::kInfo;
  std::map<int, LogListener> listeners;  ///< by number; 0 is the program's own
  int lastNumber = 0;
};

/// Never destroyed: objects that end with the process may still log.
LogState& State() {
  static LogState& state = *new LogState;
  return state;
}

spdlog::level::level_enum SinkLevel(LogLevel level) {
  for (const LevelName& known : kLevels) {
    if (known.level == level) return known.sinkLevel;
  }
  return spdlog::level::err;
}

/// Null with `error` filled when the file can't be opened.
std::shared_ptr<spdlog::logger> OpenLogger(const std::string& path, std::string& error) {
  try {
    auto sink = std::make_shared<spdlog::sinks::basic_file_sink_mt>(path, true);
    auto logger = std::make_shared<spdlog::logger>("core", std::move(sink));
    logger->set_pattern("%Y-%m-%d %H:%M:%S.%e %-7l %v");
    logger->set_level(spdlog::level::trace);
    // A line must be there when the program dies in the next moment.
    logger->flush_on(spdlog::level::trace);
    logger->set_error_handler([](const std::string&) {});
    return logger;
  } catch (const std::exception& reason) {
    error = path + ": the log can't be opened: " + reason.what();
    return nullptr;
  }
}

}  // namespace

bool NewLog(const std::string& path, std::string* error) {
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
  std::string problem;
  std::shared_ptr<spdlog::logger> logger = OpenLogger(path, problem);
  const bool opened = logger != nullptr;
  {
    const std::lock_guard<std::mutex> lock(State().mutex);
    State().logger = std::move(logger);
  }
  if (!opened && error) *error = problem;
  const std::string settings = DataRoot::GetDataFolder() + "/log.xml";
  if (std::filesystem::exists(settings, ignored)) LoadLogSettings(settings);
  return opened;
}

void CloseLog() {
  const std::lock_guard<std::mutex> lock(State().mutex);
  State().logger.reset();
}

void LogEntry(LogLevel level, const std::string& text) {
  std::map<int, LogListener> listeners;
  {
    const std::lock_guard<std::mutex> lock(State().mutex);
    if (State().logger && level >= State().level) State().logger->log(SinkLevel(level), text);
    listeners = State().listeners;
  }
  // Outside of the lock: a listener may log.
  for (const auto& [number, listener] : listeners)
    if (listener) listener(level, text);
}

void SetLogLevel(LogLevel level) {
  const std::lock_guard<std::mutex> lock(State().mutex);
  State().level = level;
}

bool LoadLogSettings(const std::string& path) {
  util::xml::Element document;
  std::string problem;
  if (document.load(path, &problem) != 0) {
    LogEntry(LogLevel::kWarning, problem + "; " + kGiveLevel);
    return false;
  }
  for (const LevelName& known : kLevels) {
    if (document.name != "log" || document.attribute("level") != known.name) continue;
    SetLogLevel(known.level);
    return true;
  }
  LogEntry(LogLevel::kWarning, path + ": it holds no level; " + kGiveLevel);
  return false;
}

LogListener SetLogListener(LogListener listener) {
  const std::lock_guard<std::mutex> lock(State().mutex);
  listener.swap(State().listeners[0]);
  return listener;
}

int AddLogListener(LogListener listener) {
  const std::lock_guard<std::mutex> lock(State().mutex);
  State().listeners[++State().lastNumber] = std::move(listener);
  return State().lastNumber;
}

void RemoveLogListener(int number) {
  const std::lock_guard<std::mutex> lock(State().mutex);
  State().listeners.erase(number);
}

}  // namespace orv::rws::core
