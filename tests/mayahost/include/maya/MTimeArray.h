// Times.
#pragma once
#include <maya/MArray_.h>
#include <maya/MTime.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MTimeArray, MTime)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
