// Plugs.
#pragma once
#include <maya/MArray_.h>
#include <maya/MPlug.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MPlugArray, MPlug)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
