// When the graph is evaluated.
#pragma once
#include <maya/MTime.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MDGContext {
 public:
  MDGContext() = default;
  MDGContext(const MTime& time) : fTime(time), fNormal(false) {}
  bool isNormal(MStatus* status = NULL) const { return (status ? void(*status = MStatus::kSuccess) : void()), fNormal; }
  MStatus getTime(MTime& time) const;
  MDGContext makeCurrent(MStatus* status = NULL) const;
  bool isCurrent() const;
  static MDGContext current(MStatus* status = NULL);
  static MDGContext& fsNormal;

 private:
  MTime fTime;
  bool fNormal = true;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
