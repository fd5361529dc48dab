// Colours.
#pragma once
#include <maya/MArray_.h>
#include <maya/MColor.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MColorArray, MColor)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
