// A surface as a value.
#pragma once
#include <maya/MFnData.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnNurbsSurfaceData : public MFnData {
  declareMinimalMFn(MFnNurbsSurfaceData)
  MObject create(MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
