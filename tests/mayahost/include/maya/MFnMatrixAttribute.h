// Attributes of matrices.
#pragma once
#include <maya/MFnAttribute.h>
#include <maya/MMatrix.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnMatrixAttribute : public MFnAttribute {
  declareMinimalMFn(MFnMatrixAttribute)
  enum Type { kFloat, kDouble };
  MObject create(const MString& name, const MString& brief, Type type = kDouble, MStatus* status = NULL);
  MObject create(const MString& name, const MString& brief, const MMatrix& defaultValue, MStatus* status = NULL);
  MStatus getDefault(MMatrix& value) const;
  MStatus setDefault(const MMatrix& value);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
