// Kinds of numbers, and small tuples of them.
#pragma once
#include <maya/MFnData.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnNumericData : public MFnData {
  declareMinimalMFn(MFnNumericData)
  // clang-format off
  enum Type {
    kInvalid = 0, kBoolean, kByte, kChar, kShort, k2Short, k3Short, kLong, kInt = kLong, k2Long, k2Int = k2Long, k3Long, k3Int = k3Long, kInt64, kFloat,
    k2Float, k3Float, kDouble, k2Double, k3Double, k4Double, kAddr, kMatrix, kLast
  };
  // clang-format on
  MObject create(Type dataType, MStatus* status = NULL);
  Type numericType(MStatus* status = NULL) const;
  MStatus getData(double& a, double& b, double& c) const;
  MStatus setData(double a, double b, double c);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
