// Numbers.
#pragma once
#include <maya/MArray_.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MDoubleArray, double)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
