// The device whose controls are pairs of other devices' controls.
#pragma once

#include <vector>

#include "unidevice/Device.h"
#include "util/DynamicCreator.h"

namespace orv::unidevice {

class EmulatedTControl;

/// Makes an emulated control on demand, when a `control` element that asks for one is resolved. The
/// DriverManager makes the only one of a process, in "dummydriver".
class EmulatedTrinaryDevice : public Device, public util::DynamicCreator<EmulatedTrinaryDevice> {
 public:
  static constexpr const char* kName = "TrinaryEmulator";

  EmulatedTrinaryDevice();
  ~EmulatedTrinaryDevice() override;

  int controlCount() const override;
  Control* control(int i) const override;

  /// True; the parts are polled by their own devices.
  bool update() override;

  /// A control that exists already, else a new one over the two `control` children of `tag`, which
  /// are resolved through all drivers. The parts must be real controls: an emulated control in an
  /// emulated control is refused. Null if a child is incomplete or not present.
  Control* findControl(const util::xml::Element& tag) override;

  bool settle() override;

  std::vector<EmulatedTControl*> controls;  ///< owned; a control's index is its position

 private:
  bool m_resolving = false;
};

}  // namespace orv::unidevice
