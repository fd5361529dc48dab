#include "gui/Background.h"

#include <algorithm>

#include "gui/Attributes.h"
#include "gui/background/Color.h"
#include "gui/background/Gradient_Linear.h"
#include "util/AbstractFactory.h"

namespace orv::gui {

namespace {

template <class Class>
class BackgroundFactory : public Background::Factory {
 public:
  explicit BackgroundFactory(const char* name) : m_name(name) {}
  std::string name() const override { return m_name; }
  Background* create(const util::xml::Element& tag) const override { return new Class(tag); }

 private:
  const char* m_name;
};

}  // namespace

void RegisterBackgrounds() {
  auto& factories = util::AbstractFactory<Background>::instance();
  if (factories.find("color")) return;
  factories.add(new BackgroundFactory<background::Color>("color"));
  factories.add(new BackgroundFactory<background::Gradient_Linear>("gradient-linear"));
}

Rgba ReadColor(const util::xml::Element& tag) {
  const auto channel = [&](const char* name, int byDefault) {
    return std::clamp(ReadInt(tag.attribute(name), byDefault), 0, 255);
  };
  return {channel("r", 0), channel("g", 0), channel("b", 0), channel("a", 255)};
}

namespace background {

Color::Color(const util::xml::Element& tag) : m_color(ReadColor(tag.child("color"))) {}

Gradient_Linear::Gradient_Linear(const util::xml::Element& tag)
    : startX(ReadDouble(tag.attribute("startx"), 0.0)),
      startY(ReadDouble(tag.attribute("starty"), 0.0)),
      endX(ReadDouble(tag.attribute("endx"), 0.0)),
      endY(ReadDouble(tag.attribute("endy"), 1.0)) {
  const std::string spreadName = tag.attribute("spread");
  if (spreadName == "repeat") spread = Spread::kRepeat;
  if (spreadName == "reflect") spread = Spread::kReflect;
  if (tag.attribute("coordinates") == "logical") coordinates = Coordinates::kPixels;
  for (const util::xml::Element* child : tag.children)
    if (child->name == "color" && child->kind == util::xml::kTag)
      stops.push_back(
          {std::clamp(ReadDouble(child->attribute("pos"), 0.0), 0.0, 1.0), ReadColor(*child)});
  std::stable_sort(stops.begin(), stops.end(),
                   [](const Stop& a, const Stop& b) { return a.position < b.position; });
}

}  // namespace background

}  // namespace orv::gui
