// How one value of an animated variable is laid out in its flat form: little-endian, field by
// field, no padding. One row per type that a variable may hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#include "util/Matrix.h"
#include "util/QTransform.h"
#include "util/Quat.h"
#include "util/Vector3.h"

namespace orv::util {

namespace detail {

template <class Word>
void putWord(unsigned char* to, Word word) {
  for (std::size_t i = 0; i < sizeof(Word); ++i)
    to[i] = static_cast<unsigned char>(word >> (8 * i) & 0xff);
}

template <class Word>
Word getWord(const unsigned char* from) {
  Word word = 0;
  for (std::size_t i = 0; i < sizeof(Word); ++i) word |= static_cast<Word>(from[i]) << (8 * i);
  return word;
}

inline void putDouble(unsigned char* to, double value) {
  static_assert(std::numeric_limits<double>::is_iec559 && sizeof(double) == 8);
  std::uint64_t word;
  std::memcpy(&word, &value, 8);
  putWord(to, word);
}

inline double getDouble(const unsigned char* from) {
  const auto word = getWord<std::uint64_t>(from);
  double value;
  std::memcpy(&value, &word, 8);
  return value;
}

template <class... D>
void putDoubles(unsigned char* to, D... values) {
  ((putDouble(to, values), to += 8), ...);
}

}  // namespace detail

/// `size` bytes of one value, `put` writes and `get` reads them.
template <class T>
struct FlatForm;

template <>
struct FlatForm<double> {
  static constexpr std::size_t size = 8;
  static void put(unsigned char* to, double v) { detail::putDouble(to, v); }
  static double get(const unsigned char* from) { return detail::getDouble(from); }
};

template <>
struct FlatForm<int> {
  static constexpr std::size_t size = 4;
  static void put(unsigned char* to, int v) { detail::putWord(to, static_cast<std::uint32_t>(v)); }
  static int get(const unsigned char* from) {
    return static_cast<std::int32_t>(detail::getWord<std::uint32_t>(from));
  }
};

template <>
struct FlatForm<bool> {
  static constexpr std::size_t size = 1;
  static void put(unsigned char* to, bool v) { *to = v ? 1 : 0; }
  static bool get(const unsigned char* from) { return *from != 0; }
};

template <>
struct FlatForm<unsigned char> {
  static constexpr std::size_t size = 1;
  static void put(unsigned char* to, unsigned char v) { *to = v; }
  static unsigned char get(const unsigned char* from) { return *from; }
};

template <>
struct FlatForm<Vector3<double>> {
  static constexpr std::size_t size = 24;
  static void put(unsigned char* to, const Vector3<double>& v) {
    detail::putDoubles(to, v.x, v.y, v.z);
  }
  static Vector3<double> get(const unsigned char* from) {
    return {detail::getDouble(from), detail::getDouble(from + 8), detail::getDouble(from + 16)};
  }
};

template <>
struct FlatForm<Quat<double>> {
  static constexpr std::size_t size = 32;
  static void put(unsigned char* to, const Quat<double>& q) {
    detail::putDoubles(to, q.x, q.y, q.z, q.w);
  }
  static Quat<double> get(const unsigned char* from) {
    return {detail::getDouble(from), detail::getDouble(from + 8), detail::getDouble(from + 16),
            detail::getDouble(from + 24)};
  }
};

template <>
struct FlatForm<QTransform<double>> {
  static constexpr std::size_t size = 56;
  static void put(unsigned char* to, const QTransform<double>& t) {
    FlatForm<Vector3<double>>::put(to, t.position);
    FlatForm<Quat<double>>::put(to + 24, t.rotation);
  }
  static QTransform<double> get(const unsigned char* from) {
    return {FlatForm<Vector3<double>>::get(from), FlatForm<Quat<double>>::get(from + 24)};
  }
};

template <>
struct FlatForm<Matrix<double>> {
  static constexpr std::size_t size = 128;
  static void put(unsigned char* to, const Matrix<double>& m) {
    for (int i = 0; i < 16; ++i) detail::putDouble(to + 8 * i, m[i]);
  }
  static Matrix<double> get(const unsigned char* from) {
    Matrix<double> m;
    for (int i = 0; i < 16; ++i) m[i] = detail::getDouble(from + 8 * i);
    return m;
  }
};

}  // namespace orv::util
