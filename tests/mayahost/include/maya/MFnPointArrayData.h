// Points as a value.
#pragma once
#include <maya/MFnData.h>
#include <maya/MPointArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
declareArrayData(MFnPointArrayData, MPointArray, MPoint)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
