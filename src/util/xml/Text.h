/// A run of text inside a tag.
#pragma once

#include "util/xml/Element.h"

namespace orv::util::xml {

/// An element of kind text; `name` is its content.
class Text : public Element {
 public:
  explicit Text(const std::string& content);
  Text(const Text&) = default;
  Text(Text&&) noexcept = default;
  Text& operator=(const Text& other);
  Text& operator=(Text&&) noexcept = default;
  /// Deep copy of any element, its kind included.
  Text& operator=(const Element& other) override;
};

}  // namespace orv::util::xml
