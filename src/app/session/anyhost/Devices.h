// The input devices of this machine.
#pragma once

#include <functional>
#include <string>

namespace orv::app {

/// Drivers of this machine's devices for as long as it lives, so that mappings of scenes opened
/// meanwhile find them. Having no device is fine.
class Devices {
 public:
  /// `told` hears what comes and goes, a line each, until the drivers have ended.
  explicit Devices(const std::function<void(const std::string& line)>& told);
  ~Devices();
  Devices(const Devices&) = delete;
  Devices& operator=(const Devices&) = delete;

  /// Why a driver does not work; empty when all do.
  const std::string& GetProblem() const { return m_problem; }

 private:
  std::string m_problem;
};

}  // namespace orv::app
