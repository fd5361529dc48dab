#include "util/xml/TagWithData.h"

#include "util/xml/Base64.h"
#include "util/xml/Data.h"

namespace orv::util::xml {

TagWithData::TagWithData(const std::string& tagName, const void* bytes, std::size_t size) {
  kind = kTag;
  name = tagName;
  emplaceChild(Data(bytes, size));
}

std::vector<unsigned char> TagWithData::bytes() const {
  return decodeBase64(text());
}

TagWithData& TagWithData::operator=(const TagWithData& other) {
  Element::operator=(static_cast<const Element&>(other));
  return *this;
}

TagWithData& TagWithData::operator=(const Element& other) {
  Element::operator=(other);
  return *this;
}

}  // namespace orv::util::xml
