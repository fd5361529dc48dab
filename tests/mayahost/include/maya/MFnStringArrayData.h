// Texts as a value.
#pragma once
#include <maya/MFnData.h>
#include <maya/MStringArray.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
declareArrayData(MFnStringArrayData, MStringArray, MString)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
