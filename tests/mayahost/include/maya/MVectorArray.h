// Vectors.
#pragma once
#include <maya/MArray_.h>
#include <maya/MVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MVectorArray, MVector)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
