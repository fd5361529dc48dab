// Writes a scene that carries nothing of this program's own.
#pragma once

#include <string>
#include <vector>

namespace orv::rws::adaptor::headless {
class Scene;
}

namespace orv::app {

/// Writes `scene` as `path` (.glb or .gltf) without the extras and the exact doubles by which this
/// program knows its files again. Keys are rounded in memory to what the file holds. Whole or not
/// at all; an empty text means success, any other says what failed. `warnings` get what could not
/// be kept.
std::string WriteDelivery(rws::adaptor::headless::Scene& scene, const std::string& path,
                          std::vector<std::string>& warnings);

}  // namespace orv::app
