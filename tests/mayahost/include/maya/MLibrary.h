// A program of its own that runs the host.
#pragma once
#include <maya/MStatus.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MLibrary {
 public:
  static MStatus initialize(char* applicationName, bool viewLicenseInfo = false) { return initialize(true, applicationName, viewLicenseInfo); }
  static MStatus initialize(bool wantScriptOutput, char* applicationName, bool viewLicenseInfo = false);
  static void cleanup(int exitStatus = 0, bool exitWhenDone = true);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
