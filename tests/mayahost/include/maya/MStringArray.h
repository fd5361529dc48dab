// Texts.
#pragma once
#include <maya/MArray_.h>
#include <maya/MString.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MStringArray, MString)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
