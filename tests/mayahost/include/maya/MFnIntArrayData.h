// Whole numbers as a value.
#pragma once
#include <maya/MFnData.h>
#include <maya/MIntArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
declareArrayData(MFnIntArrayData, MIntArray, int)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
