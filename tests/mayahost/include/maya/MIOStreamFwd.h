// Streams by their short names.
#pragma once
#include <maya/MIOStream.h>
