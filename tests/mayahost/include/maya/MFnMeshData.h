// A mesh as a value.
#pragma once
#include <maya/MFnData.h>
#include <maya/MString.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnMeshData : public MFnData {
  declareMinimalMFn(MFnMeshData)
  MObject create(MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
