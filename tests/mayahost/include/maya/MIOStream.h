// Streams by their short names.
#pragma once
#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>

using std::cerr;
using std::cin;
using std::cout;
using std::endl;
using std::flush;
using std::ios;
using std::istream;
using std::ostream;
