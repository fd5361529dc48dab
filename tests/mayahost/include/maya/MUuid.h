// A node's unique identity.
#pragma once
#include <maya/MString.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MUuid {
 public:
  MUuid() = default;
  MUuid(const MString& text, MStatus* status = NULL) : fText(text) {
    if (status) *status = MStatus::kSuccess;
  }
  MStatus generate();
  bool valid() const { return fText.length() != 0; }
  MString asString() const { return fText; }
  bool operator==(const MUuid& o) const { return fText == o.fText; }
  bool operator!=(const MUuid& o) const { return fText != o.fText; }
  operator MString() const { return fText; }

 private:
  MString fText;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
