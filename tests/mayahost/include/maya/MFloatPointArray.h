// Points of single precision.
#pragma once
#include <maya/MArray_.h>
#include <maya/MFloatPoint.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MFloatPointArray, MFloatPoint)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
