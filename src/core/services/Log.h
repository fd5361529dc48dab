// The log of the program.
#pragma once

#include <functional>
#include <string>

namespace orv::rws::core {

enum class LogLevel { kDebug, kInfo, kWarning, kError };

/// Receives every entry, whatever the level of the file, on the thread that wrote it.
using LogListener = std::function<void(LogLevel, const std::string&)>;

/// Starts a new log file, making its folder when that is missing, and reads the level from
/// "log.xml" in the data folder. False, with `error` naming path and reason, when the file can't be
/// opened; entries then go nowhere.
bool NewLog(const std::string& path, std::string* error = nullptr);
/// Closes the file; later entries go nowhere.
void CloseLog();

/// Writes one line to the log, if there is one. Any thread may call it.
void LogEntry(LogLevel level, const std::string& text);

/// Entries below this level stay out of the file; kInfo at first.
void SetLogLevel(LogLevel level);
/// Reads the level of a document such as <log level="warning"/> (debug, info, warning, error).
/// False, the level as it was and a line in the log, when the file is absent, damaged or has none.
bool LoadLogSettings(const std::string& path);

/// Installs the program's own listener in place of the old one, which is returned. An empty one
/// ends it.
LogListener SetLogListener(LogListener listener);
/// A further listener, by the number that takes it out again. Another thread may be in it then.
int AddLogListener(LogListener listener);
void RemoveLogListener(int number);

}  // namespace orv::rws::core
