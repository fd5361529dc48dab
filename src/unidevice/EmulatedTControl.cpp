#include "unidevice/EmulatedTControl.h"

#include "unidevice/ControlTag.h"
#include "unidevice/Device.h"
#include "util/xml/Tag.h"

namespace orv::unidevice {

namespace {

std::string shortName(const Control* part) {
  return (part->device ? part->device->name : std::string()) + ":" + part->type;
}

/// A part's own element reduced to what names it, with its direction among the attributes.
void addPart(util::xml::Tag& tag, const Control* part, const char* direction) {
  if (!part) return;
  util::xml::Tag child(kControlTag);
  child.setAttribute("device", part->device ? part->device->name : std::string());
  child.setAttribute("index", std::to_string(part->index));
  child.setAttribute(kDirectionAttribute, direction);
  child.setAttribute("type", part->type);
  tag.addChild(child);
}

}  // namespace

std::uint32_t EmulatedTControl::pairKind(std::uint32_t positive, std::uint32_t negative) {
  return (positive | negative) & kInfiniteControl ? kInfiniteControl : kFiniteControl;
}

std::string EmulatedTControl::describe(const std::string& first, const std::string& second) {
  return "emulated control (" + first + ", " + second + ")";
}

EmulatedTControl::EmulatedTControl(Control* positive, Control* negative, int index, Device* device)
    : Control(pairKind(positive->flags, negative->flags), kType, index,
              describe(shortName(positive), shortName(negative)), device),
      positive(positive),
      negative(negative) {
  positive->targets.push_back(this);
  negative->targets.push_back(this);
}

EmulatedTControl::~EmulatedTControl() {
  if (positive) positive->removeTarget(this);
  if (negative) negative->removeTarget(this);
}

void EmulatedTControl::save(util::xml::Tag& tag) const {
  Control::save(tag);
  addPart(tag, positive, kPositive);
  addPart(tag, negative, kNegative);
}

bool EmulatedTControl::matches(const util::xml::Element& tag) const {
  if (!positive || !negative || !Control::matches(tag) || controlChildCount(tag) != 2) return false;
  for (int i = 0; i < 2; ++i) {
    const util::xml::Element& child = tag.child(kControlTag, i);
    const bool isPositive = child.attribute(kDirectionAttribute) == kPositive;
    if (!(isPositive ? positive : negative)->matches(child)) return false;
  }
  return true;
}

double EmulatedTControl::read() const {
  return positive && negative ? positive->read() - negative->read() : 0.0;
}

void EmulatedTControl::controlGone(Control* control) {
  if (control == positive) positive = nullptr;
  if (control == negative) negative = nullptr;
  tellTargetsGone();
}

}  // namespace orv::unidevice
