// The process-wide list of drivers.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "unidevice/CalibrationTable.h"

namespace orv::util::xml {
class Element;
}

namespace orv::unidevice {

class Control;
class Device;
class DummyDriver;
class Driver;

/// Ordered list of all drivers. "dummydriver" with the trinary emulator is always the first; the
/// program adds the platform's drivers behind it. Main thread only.
///
/// A core that polls in its destructor calls `instance()` in its constructor once, so that the list
/// outlives it.
class DriverManager {
 public:
  static DriverManager& instance();

  ~DriverManager();

  /// Appends `driver`. If its name is taken, the new driver is destroyed and the result is false.
  bool addDriver(std::unique_ptr<Driver> driver);

  /// Destroys the driver of this name with its devices; false if there is none, or if it is
  /// "dummydriver", which stays.
  bool removeDriver(const std::string& name);

  /// Exact search; null if there is none.
  Driver* find(const std::string& name) const;

  /// Null when `i` is out of range on either side.
  Driver* driver(int i) const;

  int count() const;

  /// The driver that holds software devices.
  DummyDriver& dummyDriver() const;

  /// Polls every driver in order: once a frame of a take.
  void updateAll();

  /// True if any driver reports true.
  bool settleAll();

  /// Called when polling starts (a take, the input dialog); true only if all drivers report true.
  bool activateAll();

  /// Called when polling stops; true only if all drivers report true.
  bool deactivateAll();

  /// The control that the user is moving on any device: the choice of Driver::detect over all
  /// drivers, of equal movements the one of the earlier driver. Null if none moved.
  Control* detect(const std::vector<Control*>* exclude);

  /// The first device of this name; null if there is none.
  Device* findDevice(const std::string& name) const;

  /// Resolves a `control` element: the first control that matches, in the order of drivers, devices
  /// and indices. A non-empty `device` attribute restricts the search to devices of that name, an
  /// empty one allows all. Null if no such control is present.
  Control* findControl(const util::xml::Element& controlTag);

  /// The user's calibrations of hardware.
  CalibrationTable& calibrations() { return m_calibrations; }

  /// Grows whenever a device has come or gone. Comparing it with the last value seen is all that a
  /// frame needs to do to learn whether PropertyHandler::rebind is worth a call.
  static std::uint64_t generation();

  /// Called by Driver when its list of devices has changed.
  static void noteChange();

 private:
  DriverManager();

  CalibrationTable m_calibrations;
  std::vector<std::unique_ptr<Driver>> m_drivers;
  DummyDriver* m_dummy = nullptr;
  bool m_started = false;
};

/// Of two candidates of a detection (either may be null) the one that moved more, of equal ones
/// `a`.
Control* strongerChange(Control* a, Control* b);

}  // namespace orv::unidevice
