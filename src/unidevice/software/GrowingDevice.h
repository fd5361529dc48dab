// A device that does not know what it has until it is heard.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "unidevice/Control.h"
#include "unidevice/Device.h"

namespace orv::unidevice {

/// Has the controls that have been heard of or that somebody looks for under the device's own name,
/// in the order in which they came. So a mapping is good before its control has moved, and a window
/// lists what there is.
class GrowingDevice : public Device {
 public:
  /// A type of control that may come.
  struct Kind {
    const char* type;
    std::uint32_t flags;
    int count;  ///< numbers go from 0 to one below
    double least, most;
    std::string (*describe)(int index);
  };

  GrowingDevice(std::string name, std::vector<Kind> kinds);
  ~GrowingDevice() override;

  int controlCount() const override { return static_cast<int>(m_controls.size()); }
  Control* control(int i) const override;
  Control* findControl(const util::xml::Element& tag) override;

  /// A control has this value now, brought into its range. False for one that can't be, and for a
  /// value that is no number.
  bool hear(const std::string& type, int index, double value);

 private:
  const Kind* kindOf(const std::string& type, int index) const;
  Control& make(const Kind& kind, int index);

  std::vector<Kind> m_kinds;
  std::vector<std::unique_ptr<Control>> m_controls;
};

}  // namespace orv::unidevice
