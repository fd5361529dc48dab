// A time in a unit of its own; without one in film's frames.
#pragma once
#include <maya/MStatus.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MTime {
 public:
  typedef double MTick;
  // clang-format off
  enum Unit {
    kInvalid, kHours, kMinutes, kSeconds, kMilliseconds, kGames, kFilm, kPALFrame, kNTSCFrame, kShowScan, kPALField, kNTSCField, k2FPS, k3FPS, k4FPS,
    k5FPS, k6FPS, k8FPS, k10FPS, k12FPS, k16FPS, k20FPS, k40FPS, k75FPS, k80FPS, k100FPS, k120FPS, k125FPS, k150FPS, k200FPS, k240FPS, k250FPS, k300FPS,
    k375FPS, k400FPS, k500FPS, k600FPS, k750FPS, k1200FPS, k1500FPS, k2000FPS, k3000FPS, k6000FPS, kUserDef, k23_976FPS, k29_97FPS, k29_97DF, k47_952FPS,
    k59_94FPS, k44100FPS, k48000FPS, kLast, k15FPS = kGames, k24FPS = kFilm, k25FPS = kPALFrame, k30FPS = kNTSCFrame, k48FPS = kShowScan, k50FPS =
    kPALField, k60FPS = kNTSCField
  };
  // clang-format on
  MTime() = default;
  MTime(double value, Unit unit = kFilm) : fValue(value), fUnit(unit) {}
  Unit unit() const { return fUnit; }
  double value() const { return fValue; }
  double as(Unit unit) const;
  double asUnits(Unit unit) const { return as(unit); }
  MStatus setUnit(Unit unit) { return fUnit = unit, MStatus::kSuccess; }
  MStatus setValue(double value) { return fValue = value, MStatus::kSuccess; }
  MTime operator+(const MTime& o) const { return {fValue + o.as(fUnit), fUnit}; }
  MTime operator-(const MTime& o) const { return {fValue - o.as(fUnit), fUnit}; }
  MTime operator+(double v) const { return {fValue + v, fUnit}; }
  MTime operator-(double v) const { return {fValue - v, fUnit}; }
  MTime operator*(double s) const { return {fValue * s, fUnit}; }
  MTime operator/(double s) const { return {fValue / s, fUnit}; }
  double operator/(const MTime& o) const { return fValue / o.as(fUnit); }
  MTime& operator+=(const MTime& o) { return *this = *this + o; }
  MTime& operator-=(const MTime& o) { return *this = *this - o; }
  MTime& operator+=(double v) { return *this = *this + v; }
  MTime& operator-=(double v) { return *this = *this - v; }
  MTime& operator*=(double s) { return *this = *this * s; }
  MTime& operator/=(double s) { return *this = *this / s; }
  MTime operator++(int) {
    MTime old(*this);
    return fValue += 1, old;
  }
  MTime& operator++() { return fValue += 1, *this; }
  MTime operator--(int) {
    MTime old(*this);
    return fValue -= 1, old;
  }
  bool operator==(const MTime& o) const;
  bool operator!=(const MTime& o) const { return !(*this == o); }
  bool operator<(const MTime& o) const;
  bool operator>(const MTime& o) const { return o < *this; }
  bool operator<=(const MTime& o) const { return !(o < *this); }
  bool operator>=(const MTime& o) const { return !(*this < o); }
  static Unit uiUnit();
  static MStatus setUIUnit(Unit unit);
  static MTick ticksPerSecond();

 private:
  double fValue = 0;
  Unit fUnit = kFilm;
};
inline MTime operator*(double s, const MTime& time) { return time * s; }
inline std::ostream& operator<<(std::ostream& os, const MTime& time) { return os << time.value(); }
OPENMAYA_MAJOR_NAMESPACE_CLOSE
