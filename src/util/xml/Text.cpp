#include "util/xml/Text.h"

namespace orv::util::xml {

Text::Text(const std::string& content) {
  kind = kText;
  name = content;
}

Text& Text::operator=(const Text& other) {
  Element::operator=(static_cast<const Element&>(other));
  return *this;
}

Text& Text::operator=(const Element& other) {
  Element::operator=(other);
  return *this;
}

}  // namespace orv::util::xml
