// Whole numbers as a value.
#pragma once
#include <maya/MFnData.h>
#include <maya/MIntArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnIntArrayData : public MFnData {
  declareMinimalMFn(MFnIntArrayData)
  MObject create(MStatus* status = NULL) { return create(MIntArray(), status); }
  MObject create(const MIntArray& array, MStatus* status = NULL);
  MIntArray array(MStatus* status = NULL) const;
  MStatus set(const MIntArray& array);
  unsigned int length(MStatus* status = NULL) const { return array(status).length(); }
  int operator[](unsigned int i) const { return array()[i]; }
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
