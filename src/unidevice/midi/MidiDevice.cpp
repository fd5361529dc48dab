#include "unidevice/midi/MidiDevice.h"

#include <utility>

#include "unidevice/midi/MidiDriver.h"

namespace orv::unidevice {

namespace {

constexpr int kChannels = 16, kNumbers = 128;

std::string numbered(const char* what, int index) {
  return what + (" " + std::to_string(index % kNumbers)) + " (channel " +
         std::to_string(index / kNumbers + 1) + ")";
}

std::string describeController(int index) {
  return numbered("Controller", index);
}

std::string describeNote(int index) {
  return numbered("Note", index);
}

std::string describeWheel(int index) {
  return "Pitch wheel (channel " + std::to_string(index + 1) + ")";
}

}  // namespace

MidiDevice::MidiDevice(std::string name)
    : GrowingDevice(
          std::move(name),
          {{"Slider", kInfiniteControl, kChannels * kNumbers, 0.0, 1.0, describeController},
           {"Button", kBinaryControl, kChannels * kNumbers, 0.0, 1.0, describeNote},
           {"Axis", kInfiniteControl, kChannels, -1.0, 1.0, describeWheel}}) {}

void MidiDevice::take(const std::vector<unsigned char>& message) {
  if (message.size() != 3 || message[1] >= kNumbers || message[2] >= kNumbers) return;
  const int channel = message[0] & 0x0f;
  const int index = channel * kNumbers + message[1];
  const int value = message[2];
  switch (message[0] & 0xf0) {
    case 0x80:
      hear("Button", index, 0.0);
      break;
    case 0x90:  // with no force it ends the note
      hear("Button", index, value > 0 ? 1.0 : 0.0);
      break;
    case 0xb0:
      hear("Slider", index, value / 127.0);
      break;
    case 0xe0: {
      const int bend = value * kNumbers + message[1] - 8192;
      hear("Axis", channel, bend < 0 ? bend / 8192.0 : bend / 8191.0);
      break;
    }
    default:
      break;
  }
}

bool MidiDevice::update() {
  if (driver) static_cast<MidiDriver*>(driver)->poll(*this);
  return true;
}

}  // namespace orv::unidevice
