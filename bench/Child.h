// Work in a process of its own, whose memory is its own.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <optional>
#include <type_traits>

namespace orv::bench {

/// What `work` returns in a child process; nothing when the child dies or can't be had.
template <class Work>
auto InChild(Work work) {
  using Result = decltype(work());
  static_assert(std::is_trivially_copyable_v<Result>);
  std::optional<Result> result;
  int ends[2];
  if (pipe(ends) != 0) return result;
  const pid_t child = fork();
  if (child == 0) {
    const Result own = work();
    _exit(write(ends[1], &own, sizeof own) == sizeof own ? 0 : 1);
  }
  close(ends[1]);
  Result reported;
  if (child > 0 && read(ends[0], &reported, sizeof reported) == sizeof reported) result = reported;
  close(ends[0]);
  if (child > 0) waitpid(child, nullptr, 0);
  return result;
}

}  // namespace orv::bench
