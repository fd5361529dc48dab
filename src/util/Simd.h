// What compilers offer beyond the language to compute faster, and a plain form of it that gives the
// same bits: for other compilers, and where ORV_PLAIN_SIMD asks for it.
#pragma once

namespace orv::util {

#if defined(__GNUC__) && !defined(ORV_PLAIN_SIMD)

/// Two numbers that are computed with at once.
using DoublePair = double __attribute__((vector_size(16)));

/// By element `a > b ? a : b`, and so b where one of them is not a number.
inline DoublePair larger(const DoublePair& a, const DoublePair& b) {
  return a > b ? a : b;
}
/// By element `a < b ? a : b`.
inline DoublePair smaller(const DoublePair& a, const DoublePair& b) {
  return a < b ? a : b;
}

/// Asks for the memory at `address` ahead of its use; it may be any address.
inline void prefetch(const void* address) {
  __builtin_prefetch(address);
}

#else

struct DoublePair {
  double value[2];

  double operator[](int i) const { return value[i]; }
  double& operator[](int i) { return value[i]; }
  friend DoublePair operator-(const DoublePair& a) { return {{-a.value[0], -a.value[1]}}; }
  friend DoublePair operator+(const DoublePair& a, const DoublePair& b) {
    return {{a.value[0] + b.value[0], a.value[1] + b.value[1]}};
  }
  friend DoublePair operator-(const DoublePair& a, const DoublePair& b) {
    return {{a.value[0] - b.value[0], a.value[1] - b.value[1]}};
  }
  friend DoublePair operator-(const DoublePair& a, double b) {
    return {{a.value[0] - b, a.value[1] - b}};
  }
  friend DoublePair operator*(const DoublePair& a, double b) {
    return {{a.value[0] * b, a.value[1] * b}};
  }
};

inline DoublePair larger(const DoublePair& a, const DoublePair& b) {
  return {{a[0] > b[0] ? a[0] : b[0], a[1] > b[1] ? a[1] : b[1]}};
}
inline DoublePair smaller(const DoublePair& a, const DoublePair& b) {
  return {{a[0] < b[0] ? a[0] : b[0], a[1] < b[1] ? a[1] : b[1]}};
}

inline void prefetch(const void*) {}

#endif

}  // namespace orv::util
