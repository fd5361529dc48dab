// Numbers of single precision.
#pragma once
#include <maya/MArray_.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MFloatArray, float)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
