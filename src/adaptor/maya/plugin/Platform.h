// What the plug-in does otherwise on each platform; one source a platform.
#pragma once

#include <string>

namespace orv::rws::adaptor::maya {

/// Has the system look for libraries in this folder too, where a program may say so while it runs.
void AddLibraryFolder(const std::string& folder);

}  // namespace orv::rws::adaptor::maya
