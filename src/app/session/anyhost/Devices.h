// The input devices of this machine.
#pragma once

#include <functional>
#include <string>

namespace orv::rws::core {
class Preferences;
}

namespace orv::app {

/// Drivers of this machine's devices for as long as it lives, so that mappings of scenes opened
/// meanwhile find them. Having no device is fine.
class Devices {
 public:
  /// `told` hears what comes and goes, a line each, until the drivers have ended.
  explicit Devices(std::function<void(const std::string& line)> told);
  ~Devices();
  Devices(const Devices&) = delete;
  Devices& operator=(const Devices&) = delete;

  /// Switches OSC and MIDI on and off as they say. Why one that is wanted does not work; empty when
  /// all is well. Asked again only when these preferences have changed.
  std::string Follow(const rws::core::Preferences& preferences);

  /// Why game controllers do not work; empty when they do.
  const std::string& GetProblem() const { return m_problem; }

 private:
  std::function<void(const std::string&)> m_told;
  std::string m_problem;
  int m_oscPort = 0;
  bool m_oscOpen = false, m_midi = false;
};

}  // namespace orv::app
