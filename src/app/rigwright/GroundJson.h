// What a rig meets in a scene, as results tell it.
#pragma once

#include <nlohmann/json.hpp>

#include "app/session/anyhost/GroundText.h"

namespace orv::app {

inline nlohmann::ordered_json GroundJson(const rws::GroundReport& ground) {
  nlohmann::ordered_json json = {{"title", ground.title},         {"declaredBy", ground.declaredBy},
                                 {"nodes", ground.nodes},         {"meshes", ground.meshes},
                                 {"triangles", ground.triangles}, {"stored", ground.isStored}};
  if (ground.meshes == 0) json["otherwise"] = ground.otherwise;
  return json;
}

}  // namespace orv::app
