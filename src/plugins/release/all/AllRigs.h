// The rigs of this system, for the program or plug-in that starts the core.
#pragma once

#include <vector>

namespace orv::rws {
class CCameraPlugin;
}

namespace orv::rws::addon {

/// One factory per kind, in the order of the tool list. They live as long as the process and must
/// not be destroyed.
std::vector<CCameraPlugin*> AllRigs();

}  // namespace orv::rws::addon
