// An angle in a unit of its own; inside, everything is radians.
#pragma once
#include <maya/MStatus.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MAngle {
 public:
  enum Unit { kInvalid, kRadians, kDegrees, kAngMinutes, kAngSeconds, kLast };
  MAngle() = default;
  MAngle(double value, Unit unit = kRadians) : fValue(value), fUnit(unit) {}
  Unit unit() const { return fUnit; }
  double value() const { return fValue; }
  double as(Unit unit) const;
  double asRadians() const { return as(kRadians); }
  double asDegrees() const { return as(kDegrees); }
  double asAngMinutes() const { return as(kAngMinutes); }
  double asAngSeconds() const { return as(kAngSeconds); }
  MStatus setUnit(Unit unit) { return fUnit = unit, MStatus::kSuccess; }
  MStatus setValue(double value) { return fValue = value, MStatus::kSuccess; }
  static Unit uiUnit();
  static MStatus setUIUnit(Unit unit);
  static Unit internalUnit() { return kRadians; }
  static MStatus setInternalUnit(Unit unit) { return unit == kRadians ? MStatus::kSuccess : MStatus::kFailure; }
  static double internalToUI(double v) { return MAngle(v).as(uiUnit()); }
  static double uiToInternal(double v) { return MAngle(v, uiUnit()).asRadians(); }

 private:
  double fValue = 0;
  Unit fUnit = kRadians;
};
inline std::ostream& operator<<(std::ostream& os, const MAngle& angle) { return os << angle.value(); }
OPENMAYA_MAJOR_NAMESPACE_CLOSE
