// The probes in the host that the plug-in is loaded in.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "adaptor/maya/probes/Probe.h"

namespace orv::rws::adaptor::maya {

struct SelfTestResult {
  std::string report;  ///< path; empty when nothing was tested
  std::string told;    ///< what came of it, or why it was refused, for the user
};

/// Runs all probes in a new scene and writes the report for this version of the host; what is
/// refuted is off from here on. Refused while the scene has unsaved work, or a take runs. `forced`
/// count as refuted.
SelfTestResult RunSelfTest(const std::set<int>& forced = {});

/// Path of the report for this version of the host.
std::string GetSelfTestReport();

/// Switches off what the report for this version of the host refutes. A text for the user when
/// there is no report, or something is off; else empty.
std::string ApplyLastSelfTest();

}  // namespace orv::rws::adaptor::maya
