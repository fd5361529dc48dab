#include "util/xml/Tag.h"

namespace orv::util::xml {

Tag::Tag(const std::string& tagName) {
  kind = kTag;
  name = tagName;
}

Tag& Tag::operator=(const Tag& other) {
  Element::operator=(static_cast<const Element&>(other));
  return *this;
}

Tag& Tag::operator=(const Element& other) {
  Element::operator=(other);
  return *this;
}

}  // namespace orv::util::xml
