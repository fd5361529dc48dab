// Ctrl-C and the request to end, as a flag that long work asks for.
#pragma once

#include <atomic>
#include <string>

namespace orv::app {

/// From here on SIGINT and SIGTERM set a flag instead of ending the program at once; a file that is
/// being written when it is set is taken back. Whoever does
/// not want to wait for a step that does not ask sends the signal three times.
void CatchInterrupts();

bool IsInterrupted();
/// The flag itself, for work that is monitored.
const std::atomic<bool>& InterruptFlag();

/// Throws Interrupted when the flag is set. Called between steps that leave nothing half done, and
/// before anything is written.
void CheckInterrupt();

/// Fails when `output` can't be written, ahead of work that a user would have to do again.
void RequireWritable(const std::string& output);
/// For a file that could not be written: throws Interrupted when the flag is why, else a Failure.
[[noreturn]] void FailWriting(const std::string& error);

}  // namespace orv::app
