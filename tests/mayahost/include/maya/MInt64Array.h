// Whole numbers of 64 bits.
#pragma once
#include <maya/MArray_.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MInt64Array, MInt64)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
