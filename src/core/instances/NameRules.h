// What a name of a profile or an instance may be.
#pragma once

#include <string>

namespace orv::rws::core {

/// Whether `name` may be given to something new. When it may not, `problem` is the text for the
/// user, name included. Names become file names and parts of scene names: besides the characters
/// that the text lists, an empty name and control characters are refused.
bool IsNameAllowed(const std::string& name, std::string& problem);

/// Whether the name marks an example profile.
bool IsExampleName(const std::string& name);

}  // namespace orv::rws::core
