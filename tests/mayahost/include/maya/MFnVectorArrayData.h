// Vectors as a value.
#pragma once
#include <maya/MFnData.h>
#include <maya/MVectorArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
declareArrayData(MFnVectorArrayData, MVectorArray, MVector)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
