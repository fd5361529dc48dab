// What the desktop program is started with.
#pragma once

#include <string>

namespace orv::app {

/// Empty, or not positive: as the preferences have it.
struct StudioOptions {
  std::string scene;
  std::string script;    ///< file of commands, "-" for standard input
  std::string geometry;  ///< WIDTHxHEIGHT[+X+Y] of the main window
  std::string theme;     ///< dark or light
  std::string language;  ///< en or de
  std::string dataRoot;
  unsigned seed = 1;            ///< of a script's random events
  bool isFixedQuality = false;  ///< the view's pictures are the same on every machine
  double scale = 0.0;           ///< of everything, 1 for 96 dpi
};

/// Reads the command line. True when the program is to go on; else `status` is its exit status, and
/// what was to be said has been said.
bool ReadOptions(int argc, char** argv, StudioOptions& options, int& status);

}  // namespace orv::app
