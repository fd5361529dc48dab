// Vectors of single precision.
#pragma once
#include <maya/MArray_.h>
#include <maya/MFloatVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MFloatVectorArray, MFloatVector)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
