// Matrices.
#pragma once
#include <maya/MArray_.h>
#include <maya/MMatrix.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MMatrixArray, MMatrix)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
