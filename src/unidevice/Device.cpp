#include "unidevice/Device.h"

#include <algorithm>

#include "unidevice/Control.h"
#include "unidevice/DriverManager.h"
#include "unidevice/DummyDriver.h"
#include "util/xml/Tag.h"

namespace orv::unidevice {

namespace {

/// Polls after which the event queue of any hardware is drained.
constexpr int kSettlePolls = 1001;

}  // namespace

Device::Device(bool software) {
  if (software) DriverManager::instance().dummyDriver().addDevice(this);
}

Device::~Device() {
  if (driver) driver->removeDevice(this);
  if (effectSink) effectSink->destroy();
}

void Device::save(util::xml::Tag& tag) const {
  tag = util::xml::Tag("device");
  tag.setAttribute("name", name);
  for (int i = 0; i < controlCount(); ++i) {
    util::xml::Tag child("");
    control(i)->save(child);
    tag.addChild(child);
  }
}

Control* Device::findControl(const util::xml::Element& tag) {
  for (int i = 0; i < controlCount(); ++i)
    if (control(i)->matches(tag)) return control(i);
  return nullptr;
}

bool Device::settle() {
  if (!activate()) return false;
  for (int i = 0; i < kSettlePolls; ++i) update();
  for (int i = 0; i < controlCount(); ++i) control(i)->previous = control(i)->current;
  return true;
}

Control* Device::detectControl(const std::vector<Control*>* exclude, std::intptr_t) {
  update();
  Control* candidate = nullptr;
  for (int i = 0; i < controlCount(); ++i) {
    Control* next = control(i);
    if (!next->changed()) continue;
    if (exclude && std::find(exclude->begin(), exclude->end(), next) != exclude->end()) continue;
    candidate = strongerChange(candidate, next);
  }
  return candidate;
}

void Device::clear() {
  for (int i = 0; i < controlCount(); ++i) control(i)->previous = control(i)->current = 0.0;
}

bool Device::activate() {
  return true;
}

bool Device::deactivate() {
  return true;
}

}  // namespace orv::unidevice
