// Points.
#pragma once
#include <maya/MArray_.h>
#include <maya/MPoint.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MPointArray, MPoint)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
