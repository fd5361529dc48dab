/// Typed elements in a glTF buffer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orv::rws::adaptor::headless {

/// Component types of glTF.
enum class ComponentType {
  kByte = 5120,
  kUnsignedByte = 5121,
  kShort = 5122,
  kUnsignedShort = 5123,
  kUnsignedInt = 5125,
  kFloat = 5126
};

/// Bytes of one component; 0 for a number that is no component type.
std::size_t SizeOf(ComponentType type);

/// What an accessor shows, its bounds checked. The bytes belong to the document.
struct AccessorView {
  const unsigned char* data = nullptr;  ///< null: zeros
  std::size_t count = 0;
  std::size_t stride = 0;  ///< bytes from element to element
  ComponentType type = ComponentType::kFloat;
  int components = 1;  ///< per element (16 for a 4 by 4 matrix)
  bool normalized = false;
  bool matrix = false;      ///< of type MAT2, MAT3, MAT4
  bool compressed = false;  ///< its bytes need an extension that we do not have

  std::size_t sparseCount = 0;  ///< elements that are replaced
  const unsigned char* sparseIndices = nullptr;
  ComponentType sparseType = ComponentType::kUnsignedShort;
  const unsigned char* sparseValues = nullptr;

  /// All components of all elements as numbers, normalised integers as fractions.
  std::vector<double> ReadNumbers() const;
  /// The same into memory for `count * components` numbers.
  void ReadNumbersInto(double* result) const;
  /// All elements of a scalar accessor of unsigned integers.
  std::vector<std::uint32_t> Indices() const;
  /// The same into memory for `count` numbers.
  void IndicesInto(std::uint32_t* result) const;
  /// Largest element of a scalar accessor of unsigned integers, without decoding it.
  std::uint32_t LargestIndex() const;
  /// Whether the sparse indices rise and stay below `count`.
  bool SparseInOrder() const;
};

}  // namespace orv::rws::adaptor::headless
