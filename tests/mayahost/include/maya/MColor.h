// A colour, kept as red, green and blue.
#pragma once
#include <maya/MStatus.h>

#include <iostream>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MColor {
 public:
  enum MColorType { kRGB, kHSV, kCMY, kCMYK };
  MColor() = default;
  MColor(float rr, float gg = 0, float bb = 0, float aa = 1) : r(rr), g(gg), b(bb), a(aa) {}
  MColor(const float c[4]) : r(c[0]), g(c[1]), b(c[2]), a(c[3]) {}
  MColor(MColorType type, float c1, float c2, float c3, float aa = 1) { set(type, c1, c2, c3, aa); }
  float operator[](unsigned int i) const { return (&r)[i]; }
  float& operator[](unsigned int i) { return (&r)[i]; }
  MStatus set(MColorType type, float c1, float c2, float c3, float aa = 1);
  MStatus get(MColorType type, float& c1, float& c2, float& c3) const;
  MStatus get(MColorType type, float& c1, float& c2, float& c3, float& aa) const { return aa = a, get(type, c1, c2, c3); }
  MStatus get(float c[4]) const { return c[0] = r, c[1] = g, c[2] = b, c[3] = a, MStatus::kSuccess; }
  bool operator==(const MColor& o) const { return r == o.r && g == o.g && b == o.b && a == o.a; }
  bool operator!=(const MColor& o) const { return !(*this == o); }
  MColor operator+(const MColor& o) const { return {r + o.r, g + o.g, b + o.b, a + o.a}; }
  MColor operator-(const MColor& o) const { return {r - o.r, g - o.g, b - o.b, a - o.a}; }
  MColor operator-() const { return {-r, -g, -b, a}; }
  MColor operator*(float s) const { return {r * s, g * s, b * s, a}; }
  MColor operator*(const MColor& o) const { return {r * o.r, g * o.g, b * o.b, a * o.a}; }
  MColor operator/(float s) const { return *this * (1 / s); }
  MColor& operator+=(const MColor& o) { return *this = *this + o; }
  MColor& operator-=(const MColor& o) { return *this = *this - o; }
  MColor& operator*=(float s) { return *this = *this * s; }
  MColor& operator*=(const MColor& o) { return *this = *this * o; }
  MColor& operator/=(float s) { return *this = *this / s; }
  static const MColor kOpaqueBlack;
  float r = 0, g = 0, b = 0, a = 1;
};
inline MColor operator*(float s, const MColor& c) { return c * s; }
inline std::ostream& operator<<(std::ostream& os, const MColor& c) { return os << "(" << c.r << ", " << c.g << ", " << c.b << ", " << c.a << ")"; }
OPENMAYA_MAJOR_NAMESPACE_CLOSE
