/// A block of bytes as text of a tag.
#pragma once

#include <cstddef>
#include <vector>

#include "util/xml/Element.h"

namespace orv::util::xml {

/// An element of kind text whose content is the base64 form of a block of bytes.
class Data : public Element {
 public:
  Data(const void* bytes, std::size_t size);
  Data(const Data&) = default;
  Data(Data&&) noexcept = default;
  Data& operator=(const Data& other);
  Data& operator=(Data&&) noexcept = default;
  /// Deep copy of any element, its kind included.
  Data& operator=(const Element& other) override;

  /// The bytes again; empty when the content is no base64.
  std::vector<unsigned char> bytes() const;
};

}  // namespace orv::util::xml
