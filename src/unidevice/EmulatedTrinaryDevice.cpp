#include "unidevice/EmulatedTrinaryDevice.h"

#include "unidevice/ControlTag.h"
#include "unidevice/DriverManager.h"
#include "unidevice/EmulatedTControl.h"
#include "util/xml/Element.h"

namespace orv::unidevice {

namespace {

bool isComplete(const util::xml::Element& child) {
  return child.hasAttribute("device") && child.hasAttribute("type") && child.hasAttribute("index");
}

}  // namespace

EmulatedTrinaryDevice::EmulatedTrinaryDevice() : Device(true) {
  name = kName;
}

EmulatedTrinaryDevice::~EmulatedTrinaryDevice() {
  for (EmulatedTControl* control : controls) control->destroy();
}

int EmulatedTrinaryDevice::controlCount() const {
  return static_cast<int>(controls.size());
}

Control* EmulatedTrinaryDevice::control(int i) const {
  return i >= 0 && i < controlCount() ? controls[static_cast<std::size_t>(i)] : nullptr;
}

bool EmulatedTrinaryDevice::update() {
  return true;
}

Control* EmulatedTrinaryDevice::findControl(const util::xml::Element& tag) {
  if (m_resolving) return nullptr;  // asked for a part of an emulated control
  if (Control* existing = Device::findControl(tag)) return existing;

  const util::xml::Element& first = tag.child(kControlTag, 0);
  const util::xml::Element& second = tag.child(kControlTag, 1);
  if (!isComplete(first) || !isComplete(second)) return nullptr;
  m_resolving = true;
  Control* positive = DriverManager::instance().findControl(first);
  Control* negative = DriverManager::instance().findControl(second);
  m_resolving = false;
  if (!positive || !negative) return nullptr;
  if (first.attribute(kDirectionAttribute) == kNegative) std::swap(positive, negative);
  controls.push_back(new EmulatedTControl(positive, negative, controlCount(), this));
  return controls.back();
}

bool EmulatedTrinaryDevice::settle() {
  for (EmulatedTControl* control : controls) control->previous = control->current;
  return true;
}

}  // namespace orv::unidevice
