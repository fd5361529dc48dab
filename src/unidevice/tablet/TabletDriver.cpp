#include "unidevice/tablet/TabletDriver.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <vector>

#include "unidevice/Control.h"
#include "unidevice/Device.h"

namespace orv::unidevice {

namespace {

struct PenControl {
  std::uint32_t flags;
  const char* type;
  int index;
  const char* description;
  double (*read)(const PenState& pen);
};

constexpr PenControl kPenControls[] = {
    {kInfiniteControl, "Axis", 0, "Across", [](const PenState& pen) { return pen.x; }},
    {kInfiniteControl, "Axis", 1, "Up", [](const PenState& pen) { return pen.y; }},
    {kInfiniteControl, "Axis", 2, "Tilt sideways", [](const PenState& pen) { return pen.tiltX; }},
    {kInfiniteControl, "Axis", 3, "Tilt away", [](const PenState& pen) { return pen.tiltY; }},
    {kInfiniteControl, "Axis", 4, "Twist", [](const PenState& pen) { return pen.twist; }},
    {kInfiniteControl, "Slider", 0, "Pressure", [](const PenState& pen) { return pen.pressure; }},
    {kBinaryControl, "Button", 0, "Tip", [](const PenState& pen) { return pen.tip ? 1.0 : 0.0; }},
    {kBinaryControl, "Button", 1, "First button",
     [](const PenState& pen) { return pen.firstButton ? 1.0 : 0.0; }},
    {kBinaryControl, "Button", 2, "Second button",
     [](const PenState& pen) { return pen.secondButton ? 1.0 : 0.0; }},
    {kBinaryControl, "Button", 3, "Near",
     [](const PenState& pen) { return pen.isNear ? 1.0 : 0.0; }}};

}  // namespace

/// Its controls have been written when they are polled.
class TabletDevice : public Device {
 public:
  TabletDevice() {
    name = TabletDriver::kDevice;
    for (const PenControl& each : kPenControls)
      m_controls.push_back(
          std::make_unique<Control>(each.flags, each.type, each.index, each.description, this));
  }

  int controlCount() const override { return static_cast<int>(m_controls.size()); }
  Control* control(int i) const override {
    return i >= 0 && i < controlCount() ? m_controls[static_cast<std::size_t>(i)].get() : nullptr;
  }
  bool update() override { return true; }

  void show(const PenState& now) {
    pen = now;
    for (std::size_t i = 0; i < m_controls.size(); ++i) {
      const double value = kPenControls[i].read(now);
      if (std::isfinite(value)) m_controls[i]->receive(std::clamp(value, -1.0, 1.0));
    }
  }

  PenState pen;  ///< as shown last

 private:
  std::vector<std::unique_ptr<Control>> m_controls;
};

void TabletDriver::setPen(const PenState& state) {
  if (!m_device) {
    m_device = new TabletDevice;
    addDevice(m_device);
  }
  m_device->show(state);
}

void TabletDriver::leave() {
  if (!m_device) return;
  PenState pen = m_device->pen;
  pen.pressure = 0.0;
  pen.tip = pen.firstButton = pen.secondButton = pen.isNear = false;
  m_device->show(pen);
}

}  // namespace orv::unidevice
