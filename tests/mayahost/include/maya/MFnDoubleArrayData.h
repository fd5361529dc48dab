// Numbers as a value.
#pragma once
#include <maya/MDoubleArray.h>
#include <maya/MFnData.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnDoubleArrayData : public MFnData {
  declareMinimalMFn(MFnDoubleArrayData)
  MObject create(MStatus* status = NULL) { return create(MDoubleArray(), status); }
  MObject create(const MDoubleArray& array, MStatus* status = NULL);
  MDoubleArray array(MStatus* status = NULL) const;
  MStatus set(const MDoubleArray& array);
  unsigned int length(MStatus* status = NULL) const { return array(status).length(); }
  double operator[](unsigned int i) const { return array()[i]; }
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
