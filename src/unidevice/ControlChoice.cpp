#include "unidevice/ControlChoice.h"

#include <algorithm>
#include <cctype>

#include "unidevice/Control.h"
#include "unidevice/ControlTag.h"
#include "unidevice/Device.h"
#include "unidevice/Driver.h"
#include "unidevice/DriverManager.h"
#include "unidevice/DummyDriver.h"
#include "unidevice/EmulatedTControl.h"
#include "unidevice/EmulatedTrinaryDevice.h"
#include "unidevice/KeyNames.h"

namespace orv::unidevice {

namespace {

using util::xml::Tag;

struct TypeKind {
  const char* type;
  ControlKind kind;
};

/// Types of controls that any device may have; a key's is a binary control as well.
constexpr TypeKind kTypes[] = {{"Axis", kInfiniteControl},
                               {"Slider", kInfiniteControl},
                               {"Button", kBinaryControl},
                               {"Hat", kFiniteControl}};

bool isKey(const std::string& type) {
  const auto& keys = keyNames();
  return std::find(keys.begin(), keys.end(), type) != keys.end();
}

bool sameButForCase(const std::string& a, const std::string& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](unsigned char x, unsigned char y) {
    return std::tolower(x) == std::tolower(y);
  });
}

Tag makeTag(const std::string& device, const std::string& type, int index) {
  Tag tag(kControlTag);
  tag.setAttribute("device", device);
  tag.setAttribute("index", std::to_string(index));
  tag.setAttribute("type", type);
  return tag;
}

/// The device of a name; rigs are devices too, but have no controls of a user's.
const Device* findWithControls(const std::string& name) {
  const DriverManager& drivers = DriverManager::instance();
  for (int i = 0; i < drivers.count(); ++i)
    for (const Device* device : drivers.driver(i)->devices)
      if (device->name == name && device->controlCount() > 0) return device;
  return nullptr;
}

/// Checks a choice on a device that is there.
ChoiceProblem checkOn(const Device& device, const ControlChoice& choice) {
  ChoiceProblem problem{"", choice.type, {}, "types of controls of this device"};
  int count = 0;
  for (int i = 0; i < device.controlCount(); ++i) {
    const Control& control = *device.control(i);
    if (std::find(problem.known.begin(), problem.known.end(), control.type) == problem.known.end())
      problem.known.push_back(control.type);
    if (control.type != choice.type) continue;
    ++count;
    if (control.index == choice.index) return {};
  }
  if (count == 0) {
    problem.why = device.name + " has no control of the type " + choice.type;
    return problem;
  }
  return {device.name + " has " + std::to_string(count) + " of the type " + choice.type +
              ", numbered from 0 to " + std::to_string(count - 1),
          "",
          {},
          ""};
}

/// Checks the type of a control whose device is away, or any.
ChoiceProblem checkType(const ControlChoice& choice) {
  const bool keyboard = choice.device == kKeyboardName;
  ChoiceProblem problem{"there is no such type of control", choice.type, {}, "types"};
  if (!keyboard)
    for (const TypeKind& known : kTypes) problem.known.emplace_back(known.type);
  if (keyboard || choice.device.empty())
    problem.known.insert(problem.known.end(), keyNames().begin(), keyNames().end());
  if (std::find(problem.known.begin(), problem.known.end(), choice.type) == problem.known.end()) {
    if (keyboard) problem.why = "there is no such key", problem.kind = "keys";
    if (isKey(choice.type))
      return {"only a keyboard has keys", choice.device, {kKeyboardName}, "devices"};
    return problem;
  }
  if (isKey(choice.type) && choice.index != 0)
    return {"a keyboard has each key once, as number 0", "", {}, ""};
  return {};
}

}  // namespace

Tag ControlChoice::tag() const {
  return makeTag(device, type, index);
}

std::vector<std::string> ControlChoice::presentDevices() const {
  std::vector<std::string> names;
  const DriverManager& drivers = DriverManager::instance();
  for (int i = 0; i < drivers.count(); ++i) {
    if (drivers.driver(i) == &drivers.dummyDriver()) continue;
    for (const Device* present : drivers.driver(i)->devices) names.push_back(present->name);
  }
  if (std::find(names.begin(), names.end(), kKeyboardName) == names.end())
    names.emplace_back(kKeyboardName);
  return names;
}

ChoiceProblem ControlChoice::check() const {
  if (device == EmulatedTrinaryDevice::kName)
    return {"its controls are made of two others", "", {}, ""};
  if (device.empty()) return checkType(*this);
  if (DriverManager::instance().findControl(tag())) return {};
  if (const Device* there = findWithControls(device)) return checkOn(*there, *this);
  for (const std::string& name : presentDevices())
    if (name != device && sameButForCase(name, device))
      return {"there is no such device", device, {name}, "devices"};
  return checkType(*this);
}

std::uint32_t ControlChoice::kind() const {
  const Control* there = DriverManager::instance().findControl(tag());
  if (there) return there->flags;
  for (const TypeKind& known : kTypes)
    if (type == known.type) return known.kind;
  return isKey(type) ? kBinaryControl : 0u;
}

bool ControlChoice::present() const {
  return DriverManager::instance().findControl(tag()) != nullptr;
}

Tag pairTag(const ControlChoice& positive, const ControlChoice& negative) {
  Tag tag = makeTag(EmulatedTrinaryDevice::kName, EmulatedTControl::kType, 0);
  addTextChild(tag, "description",
               EmulatedTControl::describe(positive.device + ":" + positive.type,
                                          negative.device + ":" + negative.type));
  for (const ControlChoice* part : {&positive, &negative}) {
    Tag child = part->tag();
    child.setAttribute(kDirectionAttribute, part == &positive ? kPositive : kNegative);
    tag.addChild(child);
  }
  return tag;
}

std::string kindText(std::uint32_t kinds) {
  std::string text;
  const auto add = [&](std::uint32_t kind, const char* name) {
    if (kinds & kind) text += (text.empty() ? "" : ", ") + std::string(name);
  };
  add(kInfiniteControl, "an axis");
  add(kFiniteControl, "a hat or two buttons");
  add(kBinaryControl, "a button");
  return text;
}

}  // namespace orv::unidevice
