// The API's version, as a text that a plug-in carries.
#pragma once
#include <maya/MTypes.h>
#define MAYA_API_VERSION_STRING "20190000"
