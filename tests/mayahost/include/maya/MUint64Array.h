// Whole numbers without sign, of 64 bits.
#pragma once
#include <maya/MArray_.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MUint64Array, MUint64)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
