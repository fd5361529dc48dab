#include "unidevice/midi/MidiDriver.h"

#include <rtmidi/RtMidi.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "unidevice/midi/MidiDevice.h"

namespace orv::unidevice {

namespace {

constexpr auto kBetweenLooks = std::chrono::seconds(2);
constexpr unsigned kQueue = 1024;  ///< messages that may come between two polls
constexpr char kSequencer[] = "/dev/snd/seq";
constexpr char kClient[] = "Rigwright";

std::unique_ptr<RtMidiIn> makeInput() {
  return std::make_unique<RtMidiIn>(RtMidi::LINUX_ALSA, kClient, kQueue);
}

/// An input's name without the numbers that the sequencer puts behind it, which change.
std::string lastingName(const std::string& name) {
  const std::size_t blank = name.find_last_of(' ');
  const bool numbered = blank != std::string::npos && blank > 0 &&
                        name.find_first_not_of("0123456789:", blank + 1) == std::string::npos;
  return numbered ? name.substr(0, blank) : name;
}

}  // namespace

/// RtMidi's side. Its calls throw.
struct MidiDriver::Ports {
  std::unique_ptr<RtMidiIn> looker;  ///< lists inputs
  std::map<const MidiDevice*, std::unique_ptr<RtMidiIn>> open;
  std::map<const MidiDevice*, std::string> names;  ///< as the sequencer has them now
};

MidiDriver::MidiDriver(LogFn log) : Driver(kName), m_log(std::move(log)) {
  // Looked at first, since ALSA and RtMidi write to stderr when it can't be opened.
  if (access(kSequencer, R_OK | W_OK) != 0) {
    m_error = std::string("no MIDI: ") + kSequencer + ": " + std::strerror(errno) +
              " (load the module snd-seq, and see that you may use sound devices)";
    return;
  }
  try {
    m_ports = std::make_unique<Ports>();
    m_ports->looker = makeInput();
    look();
  } catch (const RtMidiError& problem) {
    m_error = "no MIDI: " + problem.getMessage();
    m_ports.reset();
  }
}

MidiDriver::~MidiDriver() = default;

bool MidiDriver::update() {
  if (m_ports && std::chrono::steady_clock::now() >= m_nextLook) look();
  return Driver::update();
}

bool MidiDriver::activate() {
  m_awake = true;
  for (Device* device : devices) open(static_cast<MidiDevice&>(*device));
  return Driver::activate();
}

bool MidiDriver::deactivate() {
  m_awake = false;
  if (m_ports) m_ports->open.clear();
  return Driver::deactivate();
}

void MidiDriver::look() {
  m_nextLook = std::chrono::steady_clock::now() + kBetweenLooks;
  std::vector<std::string> there;
  try {
    for (unsigned i = 0; i < m_ports->looker->getPortCount(); ++i)
      there.push_back(m_ports->looker->getPortName(i));
  } catch (const RtMidiError& problem) {
    return log("MIDI inputs can't be listed: " + problem.getMessage());
  }
  for (std::size_t i = devices.size(); i-- > 0;) {
    auto* device = static_cast<MidiDevice*>(devices[i]);
    const auto found = std::find(there.begin(), there.end(), m_ports->names[device]);
    if (found != there.end()) {
      there.erase(found);
      continue;
    }
    log("device \"" + device->name + "\" is gone: its inputs fall back to their offset");
    m_ports->open.erase(device);
    m_ports->names.erase(device);
    device->destroy();
  }
  for (const std::string& port : there) {
    const std::string wanted = lastingName(port);
    // The kernel's own loop has nothing to tell.
    if (wanted.rfind("Midi Through", 0) == 0) continue;
    auto* device = new MidiDevice(distinctName(wanted));
    m_ports->names[device] = port;
    addDevice(device);
    log("device \"" + device->name + "\" is ready: a MIDI input");
    open(*device);
  }
}

void MidiDriver::open(MidiDevice& device) {
  if (!m_awake || !m_ports || m_ports->open.count(&device) != 0) return;
  try {
    auto input = makeInput();
    for (unsigned i = 0; i < input->getPortCount(); ++i) {
      if (input->getPortName(i) != m_ports->names[&device]) continue;
      input->openPort(i, kClient);
      m_ports->open[&device] = std::move(input);
      return;
    }
  } catch (const RtMidiError& problem) {
    log("device \"" + device.name + "\" can't be opened: " + problem.getMessage());
  }
}

void MidiDriver::poll(MidiDevice& device) {
  if (!m_ports) return;
  const auto found = m_ports->open.find(&device);
  if (found == m_ports->open.end()) return;
  std::vector<unsigned char> message;
  try {
    for (unsigned i = 0; i < kQueue; ++i) {
      found->second->getMessage(&message);
      if (message.empty()) return;
      device.take(message);
    }
  } catch (const RtMidiError& problem) {
    log("device \"" + device.name + "\" can't be read: " + problem.getMessage());
  }
}

void MidiDriver::log(const std::string& line) const {
  if (m_log) m_log(line);
}

}  // namespace orv::unidevice
