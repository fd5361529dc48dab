// The files carried in the program.
#pragma once

#include <string>
#include <vector>

namespace orv::rws::core {

/// Makes the resource tree available; any number of calls.
void InitResources();

/// Whether `path` names a resource, such as ":/data/motionfiltercam/configprofiles/Bouncy.ocp".
bool IsResource(const std::string& path);

/// Reads a resource or a file whole. False, with `error` naming path and reason, when it is absent
/// or can't be read.
bool ReadResource(const std::string& path, std::string& bytes, std::string* error = nullptr);

/// Paths of the files in a folder of resources or of the file system that have this extension
/// (without the full stop), in the order of their bytes. Empty when there is no such folder.
std::vector<std::string> ListResources(const std::string& folder, const std::string& extension);

}  // namespace orv::rws::core
