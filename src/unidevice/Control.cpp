#include "unidevice/Control.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "unidevice/ControlTag.h"
#include "unidevice/ControlTarget.h"
#include "unidevice/Device.h"
#include "util/NumberText.h"
#include "util/xml/Tag.h"

namespace orv::unidevice {

Control::Control(std::uint32_t flags, std::string type, int index, std::string description,
                 Device* device)
    : flags(flags),
      type(std::move(type)),
      index(index),
      description(std::move(description)),
      device(device) {}

Control::~Control() {
  tellTargetsGone();
}

void Control::tellTargetsGone() {
  // A target may destroy other targets, which then leave the list: so it is emptied from the front.
  while (!targets.empty()) {
    ControlTarget* target = targets.front();
    targets.erase(targets.begin());
    target->controlGone(this);
  }
}

void Control::save(util::xml::Tag& tag) const {
  tag = util::xml::Tag(kControlTag);
  tag.setAttribute("device", device ? device->name : std::string());
  tag.setAttribute("index", std::to_string(index));
  tag.setAttribute("type", type);
  addTextChild(tag, "description", description);
}

bool Control::matches(const util::xml::Element& tag) const {
  const std::string wanted = tag.attribute("device");
  if (!wanted.empty() && (!device || device->name != wanted)) return false;
  if (tag.attribute("type") != type) return false;
  int number = 0;
  return util::parseNumber(tag.attribute("index"), number) && number == index;
}

double Control::read() const {
  return current;
}

void Control::destroy() {
  delete this;
}

bool Control::hasForceFeedback() const {
  return false;
}

FFEffect* Control::createEffect(FFKind) {
  return nullptr;
}

bool Control::changed() const {
  return std::abs(previous - current) > detectionThreshold;
}

void Control::removeTarget(ControlTarget* target) {
  const auto found = std::find(targets.begin(), targets.end(), target);
  if (found != targets.end()) targets.erase(found);
}

}  // namespace orv::unidevice
