/// A tag: the element that has attributes and children.
#pragma once

#include "util/xml/Element.h"

namespace orv::util::xml {

/// An element of kind tag.
class Tag : public Element {
 public:
  explicit Tag(const std::string& tagName);
  Tag(const Tag&) = default;
  Tag(Tag&&) noexcept = default;
  Tag& operator=(const Tag& other);
  Tag& operator=(Tag&&) noexcept = default;
  /// Deep copy of any element, its kind included.
  Tag& operator=(const Element& other) override;
};

}  // namespace orv::util::xml
