/// Files that somebody takes for a scene.
#pragma once

#include <string>
#include <string_view>

namespace orv::rws::adaptor::headless {

/// What a file that is no glTF is, and what to do with it, as in "this is a Blender file, no glTF
/// scene (...)": told by how its content begins, else by the ending of `name`. Empty for glTF, and
/// for what is not known.
std::string ForeignFile(std::string_view bytes, const std::string& name);

}  // namespace orv::rws::adaptor::headless
