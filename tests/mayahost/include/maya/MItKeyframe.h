// The keys of a curve, one after the other.
#pragma once
#include <maya/MFnAnimCurve.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MItKeyframe {
 public:
  MItKeyframe(MObject& curve, MStatus* status = NULL) : fCurve(curve, status) {}
  MStatus reset(MObject& curve) { return fAt = 0, fCurve.setObject(curve); }
  MStatus reset() { return fAt = 0, MStatus::kSuccess; }
  MStatus next() { return ++fAt, MStatus::kSuccess; }
  bool isDone(MStatus* status = NULL) { return fAt >= fCurve.numKeys(status); }
  MTime time(MStatus* status = NULL) { return fCurve.time(fAt, status); }
  double value(MStatus* status = NULL) { return fCurve.value(fAt, status); }
  MStatus setTime(const MTime& time) { return fCurve.setTime(fAt, time); }
  MStatus setValue(double value) { return fCurve.setValue(fAt, value); }
  MFnAnimCurve::TangentType inTangentType(MStatus* status = NULL) { return fCurve.inTangentType(fAt, status); }
  MFnAnimCurve::TangentType outTangentType(MStatus* status = NULL) { return fCurve.outTangentType(fAt, status); }
  MStatus setInTangentType(MFnAnimCurve::TangentType type) { return fCurve.setInTangentType(fAt, type); }
  MStatus setOutTangentType(MFnAnimCurve::TangentType type) { return fCurve.setOutTangentType(fAt, type); }
  bool tangentsLocked(MStatus* status = NULL) { return fCurve.tangentsLocked(fAt, status); }
  MStatus setTangentsLocked(bool lock) { return fCurve.setTangentsLocked(fAt, lock); }

 private:
  MFnAnimCurve fCurve;
  unsigned int fAt = 0;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
