// Paths.
#pragma once
#include <maya/MArray_.h>
#include <maya/MDagPath.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MDagPathArray, MDagPath)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
