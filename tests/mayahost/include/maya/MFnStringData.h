// A text as a value.
#pragma once
#include <maya/MFnData.h>
#include <maya/MString.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnStringData : public MFnData {
  declareMinimalMFn(MFnStringData)
  MObject create(MStatus* status = NULL) { return create(MString(), status); }
  MObject create(const MString& text, MStatus* status = NULL);
  MString string(MStatus* status = NULL) const;
  MStatus set(const MString& text);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
