// A curve as a value.
#pragma once
#include <maya/MFnData.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnNurbsCurveData : public MFnData {
  declareMinimalMFn(MFnNurbsCurveData)
  MObject create(MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
