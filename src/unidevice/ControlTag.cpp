#include "unidevice/ControlTag.h"

#include <utility>

#include "util/xml/Tag.h"

namespace orv::unidevice {

int controlChildCount(const util::xml::Element& tag) {
  int count = 0;
  for (const util::xml::Element* child : tag.children)
    if (child->name == kControlTag) ++count;
  return count;
}

void addTextChild(util::xml::Tag& tag, const std::string& name, const std::string& text) {
  util::xml::Tag child(name);
  child.setText(text);
  tag.emplaceChild(std::move(child));
}

}  // namespace orv::unidevice
