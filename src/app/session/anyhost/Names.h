// Small help with names that users give.
#pragma once

#include <string>
#include <vector>

namespace orv::app {

/// What to say about a name that is not among `known`: the ones that it comes near to, else all of
/// them (the first `most`). `kind` in the plural, such as "rigs".
std::string HintFor(const std::string& wanted, const std::vector<std::string>& known,
                    const std::string& kind, std::size_t most = 12);

/// `values` separated by commas.
std::string Joined(const std::vector<std::string>& values, const std::string& separator = ", ");

/// The file's ending in small letters with its point, such as ".glb"; empty without one.
std::string EndingOf(const std::string& path);
/// The file's name without its folder.
std::string FileNameOf(const std::string& path);

}  // namespace orv::app
