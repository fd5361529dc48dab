#include "app/rigwright/Interrupt.h"

#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "app/rigwright/Failure.h"
#include "util/AtomicFile.h"

namespace orv::app {

namespace {

constexpr int kPatience = 3;             ///< signals until the program ends where it stands
constexpr int kInterruptedStatus = 130;  ///< what shells expect of a program ended by Ctrl-C

volatile std::sig_atomic_t g_signals = 0;
std::atomic<bool> g_interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

void NoteSignal(int) {
  g_signals = g_signals + 1;
  g_interrupted = true;
  if (g_signals >= kPatience) _exit(kInterruptedStatus);
}

}  // namespace

void CatchInterrupts() {
  struct sigaction action {};
  action.sa_handler = NoteSignal;
  sigemptyset(&action.sa_mask);
  action.sa_flags = SA_RESTART;  // no read or write fails by the signal itself
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
  util::AtomicFile::setCancelCheck(IsInterrupted);
}

bool IsInterrupted() {
  return g_interrupted;
}

const std::atomic<bool>& InterruptFlag() {
  return g_interrupted;
}

void CheckInterrupt() {
  if (IsInterrupted()) throw Interrupted();
}

void RequireWritable(const std::string& output) {
  // A pipe would take the attempt for the whole.
  std::error_code none;
  if (std::filesystem::exists(output, none) && !std::filesystem::is_regular_file(output, none))
    return;
  const util::AtomicFile attempt(output);
  if (!attempt.error().empty()) FailWriting(attempt.error());
}

void FailWriting(const std::string& error) {
  CheckInterrupt();
  throw Failure("", error);
}

}  // namespace orv::app
