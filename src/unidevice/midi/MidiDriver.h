// MIDI inputs.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "unidevice/Driver.h"

namespace orv::unidevice {

class MidiDevice;

/// A device for each input of the system's sequencer, named as that has it. Inputs are open while
/// the devices are awake, and are looked for again every other second. A machine without a
/// sequencer is fine: then there are no devices. Main thread only.
class MidiDriver : public Driver {
 public:
  static constexpr const char* kName = "midi";

  /// Gets one line, without a line end, for each thing worth noting.
  using LogFn = std::function<void(const std::string&)>;

  explicit MidiDriver(LogFn log = {});
  ~MidiDriver() override;

  /// Why there is no MIDI; empty when there is.
  const std::string& error() const { return m_error; }

  /// Takes up inputs that have come, destroys those that are gone, and polls the rest.
  bool update() override;
  bool activate() override;
  bool deactivate() override;

  /// Hands a device what has come for it.
  void poll(MidiDevice& device);

 private:
  struct Ports;
  void look();
  void open(MidiDevice& device);
  void log(const std::string& line) const;

  LogFn m_log;
  std::string m_error;
  std::unique_ptr<Ports> m_ports;
  bool m_awake = false;
  std::chrono::steady_clock::time_point m_nextLook{};
};

}  // namespace orv::unidevice
