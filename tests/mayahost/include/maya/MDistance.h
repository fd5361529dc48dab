// A length in a unit of its own; inside, everything is centimetres.
#pragma once
#include <maya/MStatus.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MDistance {
 public:
  enum Unit { kInvalid, kInches, kFeet, kYards, kMiles, kMillimeters, kCentimeters, kKilometers, kMeters, kLast };
  MDistance() = default;
  MDistance(double value, Unit unit = kCentimeters) : fValue(value), fUnit(unit) {}
  Unit unit() const { return fUnit; }
  double value() const { return fValue; }
  double as(Unit unit) const;
  double asInches() const { return as(kInches); }
  double asFeet() const { return as(kFeet); }
  double asYards() const { return as(kYards); }
  double asMiles() const { return as(kMiles); }
  double asMillimeters() const { return as(kMillimeters); }
  double asCentimeters() const { return as(kCentimeters); }
  double asKilometers() const { return as(kKilometers); }
  double asMeters() const { return as(kMeters); }
  MStatus setUnit(Unit unit) { return fUnit = unit, MStatus::kSuccess; }
  MStatus setValue(double value) { return fValue = value, MStatus::kSuccess; }
  static Unit uiUnit();
  static MStatus setUIUnit(Unit unit);
  static Unit internalUnit() { return kCentimeters; }
  static MStatus setInternalUnit(Unit unit) { return unit == kCentimeters ? MStatus::kSuccess : MStatus::kFailure; }
  static double internalToUI(double v) { return MDistance(v).as(uiUnit()); }
  static double uiToInternal(double v) { return MDistance(v, uiUnit()).as(kCentimeters); }

 private:
  double fValue = 0;
  Unit fUnit = kCentimeters;
};
inline std::ostream& operator<<(std::ostream& os, const MDistance& distance) { return os << distance.value(); }
OPENMAYA_MAJOR_NAMESPACE_CLOSE
