// Programs that simulate the rows of a sweep side by side.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace orv::app {

/// Each worker is this program again, as `sweep work`, which gets numbers of rows, a line each, and
/// answers each by "done N". A core serves one scene at a time, so rows run side by side only in
/// processes of their own.
class SweepWorkers {
 public:
  /// `arguments` are those of the worker.
  SweepWorkers(std::vector<std::string> arguments, int count)
      : m_arguments(std::move(arguments)), m_count(count) {}

  /// Hands out `rows` and returns when all are done, or the program is interrupted, which ends the
  /// workers. What is returned says which rows did not come to be, and why; empty when all did.
  std::string Run(const std::vector<long>& rows, const std::function<void(long done)>& tell);

 private:
  std::vector<std::string> m_arguments;
  int m_count;
};

}  // namespace orv::app
