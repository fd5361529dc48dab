// The controllers and notes of one MIDI input.
#pragma once

#include <string>
#include <vector>

#include "unidevice/software/GrowingDevice.h"

namespace orv::unidevice {

/// Controller c of channel k (both from 0) is Slider 128 * k + c, note n is Button 128 * k + n, and
/// the pitch wheel of the channel Axis k.
class MidiDevice : public GrowingDevice {
 public:
  explicit MidiDevice(std::string name);

  /// A whole message; other kinds are passed over.
  void take(const std::vector<unsigned char>& message);

  /// Takes what has come to its input.
  bool update() override;
};

}  // namespace orv::unidevice
