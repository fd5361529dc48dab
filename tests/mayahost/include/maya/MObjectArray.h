// Objects.
#pragma once
#include <maya/MArray_.h>
#include <maya/MObject.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MObjectArray, MObject)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
