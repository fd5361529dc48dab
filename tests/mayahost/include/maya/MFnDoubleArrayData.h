// Numbers as a value.
#pragma once
#include <maya/MDoubleArray.h>
#include <maya/MFnData.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
declareArrayData(MFnDoubleArrayData, MDoubleArray, double)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
