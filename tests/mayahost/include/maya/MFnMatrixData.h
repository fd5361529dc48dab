// A matrix as a value.
#pragma once
#include <maya/MFnData.h>
#include <maya/MTransformationMatrix.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnMatrixData : public MFnData {
  declareMinimalMFn(MFnMatrixData)
  MObject create(MStatus* status = NULL) { return create(MMatrix(), status); }
  MObject create(const MMatrix& matrix, MStatus* status = NULL);
  MObject create(const MTransformationMatrix& matrix, MStatus* status = NULL) { return create(matrix.asMatrix(), status); }
  MTransformationMatrix transformation(MStatus* status = NULL) const { return MTransformationMatrix(matrix(status)); }
  MMatrix matrix(MStatus* status = NULL) const;
  MStatus set(const MMatrix& matrix);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
