// How long something takes (s).
#pragma once
#include <maya/MApiNamespace.h>

#include <chrono>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MTimer {
 public:
  void beginTimer() { fBegin = fEnd = Clock::now(); }
  void endTimer() { fEnd = Clock::now(); }
  double elapsedTime() const { return std::chrono::duration<double>(fEnd - fBegin).count(); }
  void clear() { fEnd = fBegin; }

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point fBegin, fEnd;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
