#include "adaptor/headless/GltfAccessor.h"

#include <algorithm>
#include <cstring>

namespace orv::rws::adaptor::headless {

namespace {

template <class T>
T Load(const unsigned char* bytes) {
  T value;
  std::memcpy(&value, bytes, sizeof value);
  return value;
}

double ComponentAt(const unsigned char* bytes, ComponentType type, bool normalized) {
  switch (type) {
    case ComponentType::kByte: {
      const double v = Load<std::int8_t>(bytes);
      return normalized ? std::max(v / 127.0, -1.0) : v;
    }
    case ComponentType::kUnsignedByte: {
      const double v = Load<std::uint8_t>(bytes);
      return normalized ? v / 255.0 : v;
    }
    case ComponentType::kShort: {
      const double v = Load<std::int16_t>(bytes);
      return normalized ? std::max(v / 32767.0, -1.0) : v;
    }
    case ComponentType::kUnsignedShort: {
      const double v = Load<std::uint16_t>(bytes);
      return normalized ? v / 65535.0 : v;
    }
    case ComponentType::kUnsignedInt: {
      const double v = Load<std::uint32_t>(bytes);
      return normalized ? v / 4294967295.0 : v;
    }
    case ComponentType::kFloat:
      return Load<float>(bytes);
  }
  return 0.0;
}

std::uint32_t UnsignedAt(const unsigned char* bytes, ComponentType type) {
  if (type == ComponentType::kUnsignedByte) return Load<std::uint8_t>(bytes);
  if (type == ComponentType::kUnsignedShort) return Load<std::uint16_t>(bytes);
  return Load<std::uint32_t>(bytes);
}

template <class T>
std::uint32_t Largest(const unsigned char* data, std::size_t count, std::size_t stride) {
  // Lanes that do not wait for each other: all indices of a file are checked when it is opened.
  constexpr std::size_t kLanes = 8;
  T lanes[kLanes] = {};
  std::size_t i = 0;
  if (stride == sizeof(T)) {
    for (; i + kLanes <= count; i += kLanes)
      for (std::size_t k = 0; k < kLanes; ++k)
        lanes[k] = std::max(lanes[k], Load<T>(data + (i + k) * sizeof(T)));
  }
  T result = *std::max_element(lanes, lanes + kLanes);
  for (; i < count; ++i) result = std::max(result, Load<T>(data + i * stride));
  return result;
}

}  // namespace

std::size_t SizeOf(ComponentType type) {
  switch (type) {
    case ComponentType::kByte:
    case ComponentType::kUnsignedByte:
      return 1;
    case ComponentType::kShort:
    case ComponentType::kUnsignedShort:
      return 2;
    case ComponentType::kUnsignedInt:
    case ComponentType::kFloat:
      return 4;
  }
  return 0;
}

std::vector<double> AccessorView::ReadNumbers() const {
  std::vector<double> result(count * static_cast<std::size_t>(components));
  ReadNumbersInto(result.data());
  return result;
}

void AccessorView::ReadNumbersInto(double* result) const {
  const auto n = static_cast<std::size_t>(components);
  const std::size_t width = SizeOf(type);
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t k = 0; k < n; ++k) {
      const std::size_t at = i * stride + k * width;
      if (data == nullptr)
        result[i * n + k] = 0.0;
      else
        result[i * n + k] = type == ComponentType::kFloat
                                ? Load<float>(data + at)
                                : ComponentAt(data + at, type, normalized);
    }
  }
  for (std::size_t i = 0; i < sparseCount; ++i) {
    const std::size_t at = UnsignedAt(sparseIndices + i * SizeOf(sparseType), sparseType);
    for (std::size_t k = 0; k < n; ++k)
      result[at * n + k] = ComponentAt(sparseValues + (i * n + k) * width, type, normalized);
  }
}

std::vector<std::uint32_t> AccessorView::Indices() const {
  std::vector<std::uint32_t> result(count);
  IndicesInto(result.data());
  return result;
}

void AccessorView::IndicesInto(std::uint32_t* result) const {
  for (std::size_t i = 0; i < count; ++i)
    result[i] = data == nullptr ? 0 : UnsignedAt(data + i * stride, type);
  for (std::size_t i = 0; i < sparseCount; ++i)
    result[UnsignedAt(sparseIndices + i * SizeOf(sparseType), sparseType)] =
        UnsignedAt(sparseValues + i * SizeOf(type), type);
}

std::uint32_t AccessorView::LargestIndex() const {
  std::uint32_t result = 0;
  if (sparseCount > 0) {
    for (const std::uint32_t index : Indices()) result = std::max(result, index);
  } else if (data != nullptr) {
    if (type == ComponentType::kUnsignedByte) return Largest<std::uint8_t>(data, count, stride);
    if (type == ComponentType::kUnsignedShort) return Largest<std::uint16_t>(data, count, stride);
    return Largest<std::uint32_t>(data, count, stride);
  }
  return result;
}

bool AccessorView::SparseInOrder() const {
  std::size_t next = 0;
  for (std::size_t i = 0; i < sparseCount; ++i) {
    const std::size_t at = UnsignedAt(sparseIndices + i * SizeOf(sparseType), sparseType);
    if (at < next || at >= count) return false;
    next = at + 1;
  }
  return true;
}

}  // namespace orv::rws::adaptor::headless
