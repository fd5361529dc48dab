// Streams of files by their short names.
#pragma once
#include <maya/MIOStream.h>

using std::fstream;
using std::ifstream;
using std::ofstream;
