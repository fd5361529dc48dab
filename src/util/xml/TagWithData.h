/// A tag around a block of bytes.
#pragma once

#include <cstddef>
#include <vector>

#include "util/xml/Element.h"

namespace orv::util::xml {

/// An element of kind tag whose text is the base64 form of a block of bytes.
class TagWithData : public Element {
 public:
  TagWithData(const std::string& tagName, const void* bytes, std::size_t size);
  TagWithData(const TagWithData&) = default;
  TagWithData(TagWithData&&) noexcept = default;
  TagWithData& operator=(const TagWithData& other);
  TagWithData& operator=(TagWithData&&) noexcept = default;
  /// Deep copy of any element, its kind included.
  TagWithData& operator=(const Element& other) override;

  /// The bytes again; empty when the text is no base64.
  std::vector<unsigned char> bytes() const;
};

}  // namespace orv::util::xml
