// A device that plays a recorded input file.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "unidevice/Device.h"
#include "unidevice/software/RecordedInput.h"

namespace orv::unidevice {

/// One infinite control per column of a recorded input. It lives in "dummydriver", which owns it;
/// `destroy` takes it out. The controls have the type `Track`, which no hardware has: a profile
/// that accepts any device never picks one by accident, the owner binds them on purpose.
class SoftwareDevice : public Device {
 public:
  static constexpr const char* kName = "RecordedInput";
  static constexpr const char* kType = "Track";

  /// `time` gives the time (s) at which an update reads the input: a take's frame time.
  SoftwareDevice(RecordedInput input, std::function<double()> time, std::string name = kName);
  ~SoftwareDevice() override;

  int controlCount() const override;
  Control* control(int i) const override;

  /// Sets each control to its column's value at the present time.
  bool update() override;
  bool isPlayed() const override { return true; }

  /// One update; there is no queue to drain.
  bool settle() override;

  /// The control of the column with this key, or null.
  Control* controlFor(const std::string& key) const;

  const RecordedInput& input() const { return m_input; }

 private:
  RecordedInput m_input;
  std::function<double()> m_time;
  std::vector<std::unique_ptr<Control>> m_controls;
};

}  // namespace orv::unidevice
