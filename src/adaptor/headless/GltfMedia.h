/// Sound and pictures of a scene in the JSON of a file.
#pragma once

#include <optional>
#include <string>

#include "adaptor/headless/GltfJson.h"
#include "adaptor/headless/SceneMedia.h"

namespace orv::rws::adaptor::headless {

// Files are named by their paths from the scene's folder, which ends with its slash or is empty, as
// that of the present one. Nothing comes of what is damaged.

std::optional<SceneSound> SoundOf(const Json& json, const std::string& folder);
std::optional<Backdrop> BackdropOf(const Json& json, const std::string& folder);
/// What else `json` holds stays. Without a folder, as in memory, paths are written as they are.
void WriteSound(const SceneSound& sound, const std::string* folder, Json& json);
void WriteBackdrop(const Backdrop& backdrop, const std::string* folder, Json& json);

}  // namespace orv::rws::adaptor::headless
