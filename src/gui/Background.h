// What is drawn behind a component.
#pragma once

#include <string>

#include "util/DynamicObject.h"
#include "util/xml/Element.h"

namespace orv::gui {

/// Made by `AbstractFactory<Background>` of a `background` or `abackground` tag, by its `type`.
class Background : public util::DynamicObject {
 public:
  class Factory : public util::DynamicObject {
   public:
    /// The `type`.
    virtual std::string name() const = 0;
    virtual bool matches(const util::xml::Element& tag) const {
      return tag.attribute("type") == name();
    }
    virtual Background* create(const util::xml::Element& tag) const = 0;
  };
};

/// Adds background::Color and background::Gradient_Linear to their factory; any number of calls.
void RegisterBackgrounds();

}  // namespace orv::gui
