// Texts as a value.
#pragma once
#include <maya/MFnData.h>
#include <maya/MStringArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnStringArrayData : public MFnData {
  declareMinimalMFn(MFnStringArrayData)
  MObject create(MStatus* status = NULL) { return create(MStringArray(), status); }
  MObject create(const MStringArray& array, MStatus* status = NULL);
  MStringArray array(MStatus* status = NULL) const;
  MStatus set(const MStringArray& array);
  unsigned int length(MStatus* status = NULL) const { return array(status).length(); }
  MString operator[](unsigned int i) const { return array()[i]; }
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
