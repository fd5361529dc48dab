// Matrices as a value.
#pragma once
#include <maya/MFnData.h>
#include <maya/MMatrixArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
declareArrayData(MFnMatrixArrayData, MMatrixArray, MMatrix)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
