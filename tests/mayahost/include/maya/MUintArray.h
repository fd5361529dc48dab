// Whole numbers without sign.
#pragma once
#include <maya/MArray_.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MUintArray, unsigned int)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
