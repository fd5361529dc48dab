// A pad that a script has instead of hands.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "unidevice/Control.h"
#include "unidevice/Device.h"
#include "unidevice/software/RecordedInput.h"

namespace orv::app {

/// Axes and buttons of the types that hardware has, so that profiles and mapping by moving treat it
/// as such. It moves as `set` and `feed` say. Belongs to the dummy driver; `destroy` unplugs it.
class ScriptDevice : public unidevice::Device {
 public:
  ScriptDevice(const std::string& deviceName, int axes, int buttons);
  ~ScriptDevice() override;

  int controlCount() const override { return static_cast<int>(m_controls.size()); }
  unidevice::Control* control(int i) const override;
  bool update() override;

  /// "Axis0", "Button3". False when it has no such control.
  bool Set(const std::string& control, double value);
  /// Plays a file whose columns are named so, by `time` (s).
  bool Feed(const std::string& path, std::function<double()> time, std::string& problem);
  /// The control noise that every axis has.
  void SetNoise(double noise) { m_noise = noise; }

 private:
  int IndexOf(const std::string& control) const;

  std::vector<std::unique_ptr<unidevice::Control>> m_controls;
  std::vector<double> m_values;
  unidevice::RecordedInput m_input;
  std::vector<int> m_fed;  ///< control of each column
  std::function<double()> m_time;
  double m_noise = 0.0;
  unsigned m_random = 1;  ///< state of the noise
};

}  // namespace orv::app
