// The calibrations of all devices that the user has calibrated, present or away.
#pragma once

#include <string>
#include <vector>

#include "unidevice/Calibration.h"
#include "unidevice/ControlName.h"

namespace orv::unidevice {

class Device;

/// A control by device, type and number, and its calibration.
struct CalibratedControl {
  ControlName control;
  Calibration calibration;
};

/// Part of the DriverManager. What changes here acts on devices that are there at once, and on a
/// device that comes, or comes back, when its driver takes it up. Devices of "dummydriver" have no
/// hardware and are never calibrated. Kept in memory; the core keeps it in a file.
class CalibrationTable {
 public:
  /// In place of what the control had. Kind::kNone is as `clear`. The calibration must have no
  /// problem.
  void set(const ControlName& control, const Calibration& calibration);
  /// False if there was none.
  bool clear(const ControlName& control);
  /// All of them at once.
  void replace(std::vector<CalibratedControl> all);
  /// Null for a control without one.
  const Calibration* find(const ControlName& control) const;
  /// In the order of their making.
  const std::vector<CalibratedControl>& all() const { return m_all; }

  /// Gives the device's controls theirs. Called by Driver::addDevice.
  void applyTo(Device& device) const;

 private:
  void applyToPresent() const;

  std::vector<CalibratedControl> m_all;
};

}  // namespace orv::unidevice
