// Callbacks.
#pragma once
#include <maya/MArray_.h>
#include <maya/MMessage.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
MAYAHOST_ARRAY(MCallbackIdArray, MCallbackId)
OPENMAYA_MAJOR_NAMESPACE_CLOSE
