// Access to one family of input devices.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace orv::unidevice {

class Control;
class Device;

/// Owner of the devices that one platform interface gives. Drivers are held by the DriverManager.
class Driver {
 public:
  explicit Driver(std::string name) : name(std::move(name)) {}

  Driver(const Driver&) = delete;
  Driver& operator=(const Driver&) = delete;

  /// Polls every device in order. Called at each frame of a take before any rig steps, and between
  /// frames about once a millisecond. A driver with hot plug adds and destroys devices in here, so
  /// pointers to devices and controls don't outlive the call unless a ControlTarget guards them.
  virtual bool update();

  /// Settles every device; true if any reports true.
  virtual bool settle();

  /// The control that moved most on any device (see Device::detectControl), or null. Of equal
  /// movements the one of the earlier device counts.
  virtual Control* detect(const std::vector<Control*>* exclude);

  /// Takes `device` over, as the last of the list.
  virtual bool addDevice(Device* device);

  /// Gives `device` back to the caller; false if it isn't one of this driver's.
  virtual bool removeDevice(Device* device);

  /// Null when `i` is out of range on either side.
  virtual Device* device(int i) const;

  virtual int deviceCount() const;

  /// Activates every device; true only if all report true.
  virtual bool activate();

  /// Deactivates every device; true only if all report true.
  virtual bool deactivate();

  /// Destroys the devices, last first.
  virtual ~Driver();

  /// Deletes the driver.
  virtual void destroy();

  /// The native handle of the program's main window, told at each start of polling; may be null.
  virtual void setWindow(void*) {}

  std::string name;              ///< key in the DriverManager
  std::vector<Device*> devices;  ///< owned

 protected:
  /// `wanted`, or with " #2" and so on behind it: the first that none of the devices has.
  std::string distinctName(const std::string& wanted) const;
};

}  // namespace orv::unidevice
