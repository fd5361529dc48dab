// A piece of input hardware, or software that plays its part.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "util/DynamicObject.h"

namespace orv::util::xml {
class Element;
class Tag;
}  // namespace orv::util::xml

namespace orv::unidevice {

class Control;
class Driver;

/// Owner of controls. Belongs to its driver; destroying a device takes it out of there, and its
/// controls tell their targets, so a derived class must destroy its controls in its destructor.
class Device : public util::DynamicObject {
 public:
  /// With `software` true the device joins the process-wide DummyDriver, which owns it from then
  /// on.
  explicit Device(bool software = false);
  ~Device() override;

  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  /// Makes `tag` a `device` element with the attribute `name` and a `control` child per control.
  virtual void save(util::xml::Tag& tag) const;

  virtual int controlCount() const = 0;

  /// Null when `i` is out of range on either side.
  virtual Control* control(int i) const = 0;

  /// Polls the hardware into `Control::current`. False if the device can't be read now.
  virtual bool update() = 0;

  /// Whether the values are those of the take's frame that is being stepped, whenever they are
  /// polled, as where a file is played.
  virtual bool isPlayed() const { return false; }

  /// The first control in index order that matches the `control` element `tag`; null if none does.
  virtual Control* findControl(const util::xml::Element& tag);

  /// Brings the controls to a quiet baseline: what the hardware has queued is drained, then
  /// `previous` is `current` everywhere. False if the device can't be activated.
  virtual bool settle();

  /// Polls once and gives the control that moved most since the baseline, or null. Controls in
  /// `exclude` (may be null) are passed over; of equal movements the first counts. `arg` is free
  /// for a device's own use, this class ignores it.
  virtual Control* detectControl(const std::vector<Control*>* exclude, std::intptr_t arg = 0);

  /// Sets `previous` and `current` of all controls to 0.
  virtual void clear();

  /// Called when polling starts. False if the device can't be used.
  virtual bool activate();

  /// Called when polling stops.
  virtual bool deactivate();

  std::string name;                           ///< what the `device` attribute of profiles holds
  std::int32_t state = 0;                     ///< free for the device's own use
  Driver* driver = nullptr;                   ///< owner; set by Driver::addDevice
  util::DynamicObject* effectSink = nullptr;  ///< owned; destroyed with the device
};

}  // namespace orv::unidevice
