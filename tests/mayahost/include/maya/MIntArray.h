// Whole numbers.
#pragma once
#include <maya/MArray_.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MIntArray, int)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
