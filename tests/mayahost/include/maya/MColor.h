// A colour.
#pragma once
#include <maya/MStatus.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MColor {
 public:
  enum MColorType { kRGB, kHSV, kCMY, kCMYK };
  MColor() = default;
  MColor(float rr, float gg = 0, float bb = 0, float aa = 1) : r(rr), g(gg), b(bb), a(aa) {}
  MColor(MColorType, float rr, float gg, float bb, float aa = 1) : r(rr), g(gg), b(bb), a(aa) {}
  float operator[](unsigned int i) const { return (&r)[i]; }
  float& operator[](unsigned int i) { return (&r)[i]; }
  bool operator==(const MColor& o) const { return r == o.r && g == o.g && b == o.b && a == o.a; }
  bool operator!=(const MColor& o) const { return !(*this == o); }
  MColor operator*(float s) const { return {r * s, g * s, b * s, a}; }
  float r = 0, g = 0, b = 0, a = 1;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
