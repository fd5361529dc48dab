// A pad that a script has instead of hands.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "unidevice/Control.h"
#include "unidevice/Device.h"
#include "unidevice/software/RecordedInput.h"

namespace orv::app {

/// Axes, buttons and hats of the types that hardware has, in a driver of their own, so that
/// profiles, calibration and mapping by moving treat it as such. It moves as `Set` and `Feed` say;
/// `destroy` unplugs it.
class ScriptDevice : public unidevice::Device {
 public:
  static constexpr const char* kDriver = "scriptdriver";

  struct Controls {
    int axes = 4, buttons = 8, hats = 0;  ///< a hat has two controls: left to right, down to up
  };

  /// Makes one and plugs it into the driver, which owns it.
  static ScriptDevice* Plug(const std::string& deviceName, const Controls& controls);
  ScriptDevice(const std::string& deviceName, const Controls& controls);
  ~ScriptDevice() override;

  int controlCount() const override { return static_cast<int>(m_controls.size()); }
  unidevice::Control* control(int i) const override;
  bool update() override;
  /// While a file is played.
  bool isPlayed() const override { return m_time != nullptr; }

  /// "Axis0", "Button3", "Hat0". False when it has no such control.
  bool Set(const std::string& control, double value);
  /// Plays a file whose columns are named so, by `time` (s).
  bool Feed(const std::string& path, std::function<double()> time, std::string& problem);
  /// The control noise that every axis has.
  void SetNoise(double noise) { m_noise = noise; }

 private:
  void Add(std::uint32_t kind, const char* type, int count);
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
