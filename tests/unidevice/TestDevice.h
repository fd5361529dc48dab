// A device whose hardware is a vector of numbers.
#pragma once

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "unidevice/Control.h"
#include "unidevice/Device.h"
#include "unidevice/Driver.h"
#include "unidevice/DriverManager.h"
#include "util/xml/Tag.h"

namespace orv::unidevice {

class TestDevice : public Device {
 public:
  TestDevice(const std::string& deviceName, const std::vector<std::string>& types) {
    name = deviceName;
    hardware.resize(types.size());
    std::map<std::string, int> indices;
    for (const std::string& type : types) {
      const std::uint32_t flags = type == "Axis" ? kInfiniteControl : kBinaryControl;
      m_controls.push_back(std::make_unique<Control>(flags, type, indices[type]++, type, this));
    }
  }

  int controlCount() const override { return static_cast<int>(m_controls.size()); }
  Control* control(int i) const override {
    return i >= 0 && i < controlCount() ? m_controls[static_cast<std::size_t>(i)].get() : nullptr;
  }
  bool update() override {
    ++polls;
    for (int i = 0; i < controlCount(); ++i) control(i)->receive(hardware[std::size_t(i)]);
    return true;
  }
  bool activate() override { return awake = usable; }
  bool deactivate() override { return !(awake = false); }

  std::vector<double> hardware;
  int polls = 0;
  bool usable = true;
  bool awake = false;

 private:
  std::vector<std::unique_ptr<Control>> m_controls;
};

/// Adds a driver for the time of a test.
class TestDriver {
 public:
  explicit TestDriver(const std::string& name) : m_name(name) {
    auto owned = std::make_unique<Driver>(name);
    driver = owned.get();
    DriverManager::instance().addDriver(std::move(owned));
  }
  ~TestDriver() { DriverManager::instance().removeDriver(m_name); }

  TestDevice* plug(const std::string& name, const std::vector<std::string>& types) {
    auto* device = new TestDevice(name, types);
    driver->addDevice(device);
    return device;
  }

  Driver* driver = nullptr;

 private:
  std::string m_name;
};

inline util::xml::Tag parseTag(const std::string& text) {
  util::xml::Tag tag("");
  if (tag.loadText(text) != 0) throw std::runtime_error("bad XML in a test: " + text);
  return tag;
}

}  // namespace orv::unidevice
