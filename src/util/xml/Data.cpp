#include "util/xml/Data.h"

#include "util/xml/Base64.h"

namespace orv::util::xml {

Data::Data(const void* bytes, std::size_t size) {
  kind = kText;
  name = encodeBase64(bytes, size);
}

std::vector<unsigned char> Data::bytes() const {
  return decodeBase64(name);
}

Data& Data::operator=(const Data& other) {
  Element::operator=(static_cast<const Element&>(other));
  return *this;
}

Data& Data::operator=(const Element& other) {
  Element::operator=(other);
  return *this;
}

}  // namespace orv::util::xml
