// What a server says about the newest version.
#pragma once

#include <string>
#include <vector>

namespace orv::rws::core {

struct UpdateAnswer {
  std::string version;  ///< the newest one there is, such as "7.10"; empty when the check failed
  std::string link;     ///< page about it, https; empty when the server told no good one
  std::string problem;  ///< why the check failed, in English with %1 for `details`; else empty
  std::vector<std::string> details;
};

/// Reads the server's JSON, an object with "version" and "link".
UpdateAnswer ReadUpdateAnswer(const std::string& json);

/// Whether `text` is numbers with full stops between, such as "7.0" or "7.10.2".
bool IsVersion(const std::string& text);
/// Compares number by number; what one version lacks counts as 0.
bool IsNewerVersion(const std::string& version, const std::string& than);

}  // namespace orv::rws::core
