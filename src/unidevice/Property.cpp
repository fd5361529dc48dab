#include "unidevice/Property.h"

#include <cmath>
#include <utility>

#include "unidevice/Control.h"
#include "unidevice/ControlFinder.h"
#include "unidevice/ControlTag.h"
#include "unidevice/DriverManager.h"
#include "unidevice/FFEffect.h"
#include "util/NumberText.h"

namespace orv::unidevice {

namespace {

/// Result of `bind` for "no control": fits every kind.
constexpr int kUnbound = 65535;

struct Number {
  const char* tag;
  double Property::*field;
};

/// In the order of the file.
constexpr Number kNumbers[] = {
    {"multiplier", &Property::multiplier},
    {"exponent", &Property::exponent},
    {"deadzone", &Property::deadzone},
    {"offset", &Property::offset},
};

std::string trimmed(const std::string& text) {
  const char* blanks = " \t\r\n";
  const std::size_t begin = text.find_first_not_of(blanks);
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

}  // namespace

Property::Property(std::string name, std::string displayName, std::uint32_t flags)
    : name(std::move(name)), displayName(std::move(displayName)), flags(flags), savedControl("") {
  if (this->displayName.empty()) this->displayName = this->name;
}

Property::~Property() {
  if (control) control->removeTarget(this);
  for (FFEffect* effect : effects) delete effect;
}

double Property::raw() const {
  return control ? control->read() : 0.0;
}

double Property::read() const {
  return respond(raw());
}

double Property::respond(double value) const {
  const double sign = value < 0.0 ? -1.0 : 1.0;
  double beyond = std::abs(value) - deadzone;
  if (beyond < 0.0) beyond = 0.0;
  const double stretched = beyond / (1.0 - deadzone);
  // Checked before the power too: any base to the power 0 is 1, be it NaN.
  if (std::isfinite(stretched)) {
    const double result = std::pow(stretched, exponent) * sign * multiplier + offset;
    if (std::isfinite(result)) return result;
  }
  return std::isfinite(offset) ? offset : 0.0;
}

int Property::bind(Control* newControl) {
  if (control) control->removeTarget(this);
  control = newControl;
  if (!control) return kUnbound;
  control->targets.push_back(this);
  return static_cast<int>(flags & control->flags);
}

int Property::assign(Control* newControl) {
  if (newControl) {
    newControl->save(savedControl);
  } else {
    savedControl = util::xml::Tag("");
  }
  return bind(newControl);
}

bool Property::rebind() {
  if (control || savedControl.name.empty()) return false;
  Control* found = DriverManager::instance().findControl(savedControl);
  if (!found) return false;
  bind(found);
  return true;
}

void Property::controlGone(Control* gone) {
  if (gone == control) control = nullptr;
  for (FFEffect* effect : effects) effect->valid = false;
}

bool Property::load(const util::xml::Element& property) {
  bool good = true;
  for (const Number& number : kNumbers) {
    const util::xml::Element& child = property.child(number.tag);
    if (!child.name.empty()) good &= util::parseNumber(trimmed(child.text()), this->*number.field);
  }
  savedControl = property.child(kControlTag);
  bind(savedControl.name.empty() ? nullptr : DriverManager::instance().findControl(savedControl));
  return good;
}

bool Property::holds(const util::xml::Element& property) const {
  for (const Number& number : kNumbers) {
    double value = this->*number.field;
    util::parseNumber(trimmed(property.child(number.tag).text()), value);
    if (value != this->*number.field) return false;
  }
  const auto wanted = choicesOf(property.child(kControlTag));
  if (wanted == choicesOf(savedControl)) return true;
  return control && control->device && wanted == choicesOf(*control);
}

void Property::save(util::xml::Tag& tag) const {
  tag = util::xml::Tag("property");
  tag.setAttribute("name", name);
  for (const Number& number : kNumbers)
    addTextChild(tag, number.tag, util::shortText(this->*number.field));
  if (control && control->device) control->save(savedControl);
  if (!savedControl.name.empty()) tag.addChild(savedControl);
}

}  // namespace orv::unidevice
