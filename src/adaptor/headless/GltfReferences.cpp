#include "adaptor/headless/GltfReferences.h"

#include <algorithm>
#include <cstdint>
#include <set>

namespace orv::rws::adaptor::headless {

namespace {

using Visit = std::function<void(Json&)>;

/// Extensions that refer to nothing by index but textures and lights, or that are handled here.
const std::set<std::string> kKnownExtensions = {"EXT_mesh_gpu_instancing",
                                                "EXT_meshopt_compression",
                                                "EXT_texture_webp",
                                                "KHR_animation_pointer",
                                                "KHR_draco_mesh_compression",
                                                "KHR_lights_punctual",
                                                "KHR_materials_anisotropy",
                                                "KHR_materials_clearcoat",
                                                "KHR_materials_dispersion",
                                                "KHR_materials_emissive_strength",
                                                "KHR_materials_ior",
                                                "KHR_materials_iridescence",
                                                "KHR_materials_pbrSpecularGlossiness",
                                                "KHR_materials_sheen",
                                                "KHR_materials_specular",
                                                "KHR_materials_transmission",
                                                "KHR_materials_unlit",
                                                "KHR_materials_variants",
                                                "KHR_materials_volume",
                                                "KHR_mesh_quantization",
                                                "KHR_node_visibility",
                                                "KHR_texture_basisu",
                                                "KHR_texture_transform",
                                                "KHR_xmp_json_ld"};

constexpr const char* kTableNames[] = {"meshes", "cameras", "materials", "accessors",
                                       "bufferViews"};

/// Members that are missing or of another type are passed over: others' parts of a file may hold
/// anything.
void each(Json& object, const char* key, const Visit& visit) {
  if (!object.is_object()) return;
  const auto list = object.find(key);
  if (list == object.end() || !(list->is_array() || list->is_object())) return;
  for (Json& element : *list) visit(element);
}

void one(Json& object, const char* key, const Visit& visit) {
  if (!object.is_object()) return;
  const auto value = object.find(key);
  if (value != object.end()) visit(*value);
}

void index(Json& object, const char* key, const Visit& visit) {
  one(object, key, [&visit](Json& value) {
    if (isIndex(value)) visit(value);
  });
}

void extension(Json& object, const char* name, const Visit& visit) {
  one(object, "extensions", [&](Json& extensions) { one(extensions, name, visit); });
}

void indices(Json& object, const char* key, const Visit& visit) {
  each(object, key, [&visit](Json& value) {
    if (isIndex(value)) visit(value);
  });
}

void eachPrimitive(Json& json, const Visit& visit) {
  each(json, "meshes", [&](Json& mesh) { each(mesh, "primitives", visit); });
}

void visitMaterials(Json& json, const Visit& visit) {
  eachPrimitive(json, [&](Json& primitive) {
    index(primitive, "material", visit);
    extension(primitive, "KHR_materials_variants", [&](Json& variants) {
      each(variants, "mappings", [&](Json& mapping) { index(mapping, "material", visit); });
    });
  });
}

void visitAccessors(Json& json, const Visit& visit) {
  eachPrimitive(json, [&](Json& primitive) {
    indices(primitive, "attributes", visit);
    index(primitive, "indices", visit);
    each(primitive, "targets", [&](Json& target) {
      if (!target.is_object()) return;
      for (Json& accessor : target)
        if (isIndex(accessor)) visit(accessor);
    });
  });
  each(json, "animations", [&](Json& animation) {
    each(animation, "samplers", [&](Json& sampler) {
      index(sampler, "input", visit);
      index(sampler, "output", visit);
    });
  });
  each(json, "skins", [&](Json& skin) { index(skin, "inverseBindMatrices", visit); });
  each(json, "nodes", [&](Json& node) {
    extension(node, "EXT_mesh_gpu_instancing",
              [&](Json& instancing) { indices(instancing, "attributes", visit); });
  });
}

void visitBufferViews(Json& json, const Visit& visit) {
  each(json, "accessors", [&](Json& accessor) {
    index(accessor, "bufferView", visit);
    one(accessor, "sparse", [&](Json& sparse) {
      one(sparse, "indices", [&](Json& part) { index(part, "bufferView", visit); });
      one(sparse, "values", [&](Json& part) { index(part, "bufferView", visit); });
    });
  });
  each(json, "images", [&](Json& image) { index(image, "bufferView", visit); });
  eachPrimitive(json, [&](Json& primitive) {
    extension(primitive, "KHR_draco_mesh_compression",
              [&](Json& draco) { index(draco, "bufferView", visit); });
  });
  each(json, "scenes", [&](Json& scene) {
    one(scene, "extras", [&](Json& extras) {
      one(extras, kOwnKey, [&](Json& own) {
        one(own, "exact", [&](Json& exact) { index(exact, "bufferView", visit); });
      });
    });
  });
}

/// Adapts a pointer such as "/nodes/3/translation"; false when its node is gone.
bool remapPointer(Json& pointer, const std::vector<int>& map) {
  constexpr std::size_t kStart = 7;  // behind "/nodes/"
  if (!pointer.is_string()) return true;
  const std::string text = pointer.get<std::string>();
  if (text.compare(0, kStart, "/nodes/") != 0) return true;
  const std::size_t end = std::min(text.find('/', kStart), text.size());
  std::size_t node = 0;
  for (std::size_t i = kStart; i < end; ++i) {
    if (text[i] < '0' || text[i] > '9' || node > map.size()) return true;
    node = node * 10 + static_cast<std::size_t>(text[i] - '0');
  }
  if (end == kStart || node >= map.size()) return true;
  if (map[node] < 0) return false;
  pointer = "/nodes/" + std::to_string(map[node]) + text.substr(end);
  return true;
}

/// False when the channel's node is gone.
bool remapChannel(Json& channel, const std::vector<int>& map) {
  bool stays = true;
  one(channel, "target", [&](Json& target) {
    index(target, "node", [&](Json& node) {
      const auto old = node.get<std::size_t>();
      if (old >= map.size()) return;
      if (map[old] < 0)
        stays = false;
      else
        node = map[old];
    });
    extension(target, "KHR_animation_pointer", [&](Json& pointer) {
      one(pointer, "pointer", [&](Json& text) { stays = remapPointer(text, map) && stays; });
    });
  });
  return stays;
}

}  // namespace

bool isIndex(const Json& value) {
  if (value.is_number_unsigned()) return true;
  if (value.is_number_integer()) return value.get<std::int64_t>() >= 0;
  if (!value.is_number_float()) return false;
  const double number = value.get<double>();
  return number >= 0.0 && number < 4294967296.0;
}

void visitReferences(Json& json, Table table, const Visit& visit) {
  switch (table) {
    case Table::kMeshes:
      return each(json, "nodes", [&](Json& node) { index(node, "mesh", visit); });
    case Table::kCameras:
      return each(json, "nodes", [&](Json& node) { index(node, "camera", visit); });
    case Table::kMaterials:
      return visitMaterials(json, visit);
    case Table::kAccessors:
      return visitAccessors(json, visit);
    case Table::kBufferViews:
      return visitBufferViews(json, visit);
  }
}

std::vector<int> dropUnusedOwn(Json& json, Table table) {
  const char* name = kTableNames[static_cast<int>(table)];
  const auto list = json.find(name);
  if (list == json.end()) return {};
  std::vector<bool> used(list->size(), false);
  visitReferences(json, table, [&used](Json& reference) {
    const auto at = reference.get<std::size_t>();
    if (at < used.size()) used[at] = true;
  });
  std::vector<int> map(used.size(), -1);
  int next = 0;
  bool othersMove = false;
  for (std::size_t i = 0; i < used.size(); ++i) {
    if (!used[i] && isOwn((*list)[i])) continue;
    othersMove = othersMove || (next != static_cast<int>(i) && !isOwn((*list)[i]));
    map[i] = next++;
  }
  if (othersMove && !unknownExtension(json).empty()) {
    for (std::size_t i = 0; i < map.size(); ++i) map[i] = static_cast<int>(i);
    return map;
  }
  visitReferences(json, table, [&map](Json& reference) {
    const auto at = reference.get<std::size_t>();
    if (at < map.size()) reference = map[at];
  });
  Json kept = Json::array();
  for (std::size_t i = 0; i < map.size(); ++i)
    if (map[i] >= 0) kept.push_back(std::move((*list)[i]));
  if (kept.empty())
    json.erase(name);
  else
    *list = std::move(kept);
  return map;
}

void remapNodes(Json& json, const std::vector<int>& map) {
  const auto remap = [&map](Json& reference) {
    const auto at = reference.get<std::size_t>();
    if (at < map.size()) reference = map[at];
  };
  each(json, "scenes", [&](Json& scene) { indices(scene, "nodes", remap); });
  each(json, "nodes", [&](Json& node) { indices(node, "children", remap); });
  each(json, "skins", [&](Json& skin) {
    indices(skin, "joints", remap);
    index(skin, "skeleton", remap);
  });
  each(json, "animations", [&](Json& animation) {
    bool lost = false;
    Json channels = Json::array();
    each(animation, "channels", [&](Json& channel) {
      if (remapChannel(channel, map))
        channels.push_back(std::move(channel));
      else
        lost = true;
    });
    if (channels.empty() && !lost) return;
    animation["channels"] = std::move(channels);
    if (lost) dropUnusedSamplers(animation);
  });
}

void dropUnusedSamplers(Json& animation) {
  const auto samplers = animation.find("samplers");
  if (samplers == animation.end()) return;
  std::vector<int> map(samplers->size(), -1);
  const auto eachSampler = [&](const Visit& visit) {
    each(animation, "channels", [&](Json& channel) { index(channel, "sampler", visit); });
  };
  eachSampler([&map](Json& sampler) {
    const auto at = sampler.get<std::size_t>();
    if (at < map.size()) map[at] = 0;
  });
  Json kept = Json::array();
  for (std::size_t i = 0; i < map.size(); ++i) {
    if (map[i] < 0) continue;
    map[i] = static_cast<int>(kept.size());
    kept.push_back(std::move((*samplers)[i]));
  }
  eachSampler([&map](Json& sampler) {
    const auto at = sampler.get<std::size_t>();
    if (at < map.size()) sampler = map[at];
  });
  *samplers = std::move(kept);
}

std::string unknownExtension(const Json& json) {
  const Json* used = member(json, "extensionsUsed");
  if (used == nullptr || !used->is_array()) return {};
  for (const Json& name : *used)
    if (name.is_string() && kKnownExtensions.count(name.get<std::string>()) == 0)
      return name.get<std::string>();
  return {};
}

}  // namespace orv::rws::adaptor::headless
