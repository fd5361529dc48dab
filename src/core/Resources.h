// The files carried in the program.
#pragma once

#include <string>

namespace orv::rws::core {

/// Makes the resource tree available; any number of calls.
void InitResources();

/// Whether `path` names a resource, such as ":/data/motionfiltercam/configprofiles/Bouncy.ocp".
bool IsResource(const std::string& path);

/// Reads a resource or a file whole. False, with `error` naming path and reason, when it is absent
/// or can't be read.
bool ReadResource(const std::string& path, std::string& bytes, std::string* error = nullptr);

}  // namespace orv::rws::core
