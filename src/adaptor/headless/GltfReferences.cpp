#include "adaptor/headless/GltfReferences.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string_view>

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

constexpr const char* kTableNames[] = {"meshes", "cameras",  "skins",     "materials",  "textures",
                                       "images", "samplers", "accessors", "bufferViews"};

/// Members that are missing or of another type are passed over: others' parts of a file may hold
/// anything.
void Each(Json& object, const char* key, const Visit& visit) {
  if (!object.is_object()) return;
  const auto list = object.find(key);
  if (list == object.end() || !(list->is_array() || list->is_object())) return;
  for (Json& element : *list) visit(element);
}

void One(Json& object, const char* key, const Visit& visit) {
  if (!object.is_object()) return;
  const auto value = object.find(key);
  if (value != object.end()) visit(*value);
}

void Index(Json& object, const char* key, const Visit& visit) {
  One(object, key, [&visit](Json& value) {
    if (IsIndex(value)) visit(value);
  });
}

void Extension(Json& object, const char* name, const Visit& visit) {
  One(object, "extensions", [&](Json& extensions) { One(extensions, name, visit); });
}

void Indices(Json& object, const char* key, const Visit& visit) {
  Each(object, key, [&visit](Json& value) {
    if (IsIndex(value)) visit(value);
  });
}

void EachPrimitive(Json& json, const Visit& visit) {
  Each(json, "meshes", [&](Json& mesh) { Each(mesh, "primitives", visit); });
}

void VisitMaterials(Json& json, const Visit& visit) {
  EachPrimitive(json, [&](Json& primitive) {
    Index(primitive, "material", visit);
    Extension(primitive, "KHR_materials_variants", [&](Json& variants) {
      Each(variants, "mappings", [&](Json& mapping) { Index(mapping, "material", visit); });
    });
  });
}

/// Whatever is called a texture anywhere in a material, be it an extension's.
void VisitTextures(Json& object, const Visit& visit) {
  if (!object.is_object()) return;
  for (auto& [name, value] : object.items()) {
    constexpr std::string_view kEnd = "Texture";
    const bool fits = name.size() >= kEnd.size() &&
                      std::string_view(name).substr(name.size() - kEnd.size()) == kEnd;
    if (fits) Index(value, "index", visit);
    if (name != "extras") VisitTextures(value, visit);
  }
}

void VisitImages(Json& json, const Visit& visit) {
  Each(json, "textures", [&](Json& texture) {
    Index(texture, "source", visit);
    Each(texture, "extensions", [&](Json& extension) { Index(extension, "source", visit); });
  });
}

void VisitAccessors(Json& json, const Visit& visit) {
  EachPrimitive(json, [&](Json& primitive) {
    Indices(primitive, "attributes", visit);
    Index(primitive, "indices", visit);
    Each(primitive, "targets", [&](Json& target) {
      if (!target.is_object()) return;
      for (Json& accessor : target)
        if (IsIndex(accessor)) visit(accessor);
    });
  });
  Each(json, "animations", [&](Json& animation) {
    Each(animation, "samplers", [&](Json& sampler) {
      Index(sampler, "input", visit);
      Index(sampler, "output", visit);
    });
  });
  Each(json, "skins", [&](Json& skin) { Index(skin, "inverseBindMatrices", visit); });
  Each(json, "nodes", [&](Json& node) {
    Extension(node, "EXT_mesh_gpu_instancing",
              [&](Json& instancing) { Indices(instancing, "attributes", visit); });
  });
}

void VisitBufferViews(Json& json, const Visit& visit) {
  Each(json, "accessors", [&](Json& accessor) {
    Index(accessor, "bufferView", visit);
    One(accessor, "sparse", [&](Json& sparse) {
      One(sparse, "indices", [&](Json& part) { Index(part, "bufferView", visit); });
      One(sparse, "values", [&](Json& part) { Index(part, "bufferView", visit); });
    });
  });
  Each(json, "images", [&](Json& image) { Index(image, "bufferView", visit); });
  EachPrimitive(json, [&](Json& primitive) {
    Extension(primitive, "KHR_draco_mesh_compression",
              [&](Json& draco) { Index(draco, "bufferView", visit); });
  });
  Each(json, "scenes", [&](Json& scene) {
    One(scene, "extras", [&](Json& extras) {
      One(extras, kOwnKey, [&](Json& own) {
        One(own, "exact", [&](Json& exact) { Index(exact, "bufferView", visit); });
      });
    });
  });
}

/// Adapts a pointer such as "/nodes/3/translation"; false when its node is gone.
bool RemapPointer(Json& pointer, const std::vector<int>& map) {
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
bool RemapChannel(Json& channel, const std::vector<int>& map) {
  bool stays = true;
  One(channel, "target", [&](Json& target) {
    Index(target, "node", [&](Json& node) {
      const auto old = node.get<std::size_t>();
      if (old >= map.size()) return;
      if (map[old] < 0)
        stays = false;
      else
        node = map[old];
    });
    Extension(target, "KHR_animation_pointer", [&](Json& pointer) {
      One(pointer, "pointer", [&](Json& text) { stays = RemapPointer(text, map) && stays; });
    });
  });
  return stays;
}

}  // namespace

bool IsIndex(const Json& value) {
  if (value.is_number_unsigned()) return true;
  if (value.is_number_integer()) return value.get<std::int64_t>() >= 0;
  if (!value.is_number_float()) return false;
  const double number = value.get<double>();
  return number >= 0.0 && number < 4294967296.0;
}

void VisitReferences(Json& json, Table table, const Visit& visit) {
  switch (table) {
    case Table::kMeshes:
      return Each(json, "nodes", [&](Json& node) { Index(node, "mesh", visit); });
    case Table::kCameras:
      return Each(json, "nodes", [&](Json& node) { Index(node, "camera", visit); });
    case Table::kSkins:
      return Each(json, "nodes", [&](Json& node) { Index(node, "skin", visit); });
    case Table::kMaterials:
      return VisitMaterials(json, visit);
    case Table::kTextures:
      return Each(json, "materials", [&](Json& material) { VisitTextures(material, visit); });
    case Table::kImages:
      return VisitImages(json, visit);
    case Table::kSamplers:
      return Each(json, "textures", [&](Json& texture) { Index(texture, "sampler", visit); });
    case Table::kAccessors:
      return VisitAccessors(json, visit);
    case Table::kBufferViews:
      return VisitBufferViews(json, visit);
  }
}

const char* NameOf(Table table) {
  return kTableNames[static_cast<int>(table)];
}

std::vector<int> DropUnusedOwn(Json& json, Table table) {
  const char* name = NameOf(table);
  const auto list = json.find(name);
  if (list == json.end() || list->empty()) return {};
  std::vector<bool> used(list->size(), false);
  VisitReferences(json, table, [&used](Json& reference) {
    const auto at = reference.get<std::size_t>();
    if (at < used.size()) used[at] = true;
  });
  std::vector<int> map(used.size(), -1);
  int next = 0;
  bool othersMove = false;
  for (std::size_t i = 0; i < used.size(); ++i) {
    if (!used[i] && IsOwn((*list)[i])) continue;
    othersMove = othersMove || (next != static_cast<int>(i) && !IsOwn((*list)[i]));
    map[i] = next++;
  }
  if (othersMove && !UnknownExtension(json).empty()) {
    for (std::size_t i = 0; i < map.size(); ++i) map[i] = static_cast<int>(i);
    return map;
  }
  VisitReferences(json, table, [&map](Json& reference) {
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

void RemapNodes(Json& json, const std::vector<int>& map) {
  const auto remap = [&map](Json& reference) {
    const auto at = reference.get<std::size_t>();
    if (at < map.size()) reference = map[at];
  };
  Each(json, "scenes", [&](Json& scene) { Indices(scene, "nodes", remap); });
  Each(json, "nodes", [&](Json& node) { Indices(node, "children", remap); });
  Each(json, "skins", [&](Json& skin) {
    Indices(skin, "joints", remap);
    Index(skin, "skeleton", remap);
  });
  Each(json, "animations", [&](Json& animation) {
    bool lost = false;
    Json channels = Json::array();
    Each(animation, "channels", [&](Json& channel) {
      if (RemapChannel(channel, map))
        channels.push_back(std::move(channel));
      else
        lost = true;
    });
    if (channels.empty() && !lost) return;
    animation["channels"] = std::move(channels);
    if (lost) DropUnusedSamplers(animation);
  });
}

void DropUnusedSamplers(Json& animation) {
  const auto samplers = animation.find("samplers");
  if (samplers == animation.end()) return;
  std::vector<int> map(samplers->size(), -1);
  const auto eachSampler = [&](const Visit& visit) {
    Each(animation, "channels", [&](Json& channel) { Index(channel, "sampler", visit); });
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

std::string UnknownExtension(const Json& json) {
  const Json* used = Member(json, "extensionsUsed");
  if (used == nullptr || !used->is_array()) return {};
  for (const Json& name : *used)
    if (name.is_string() && kKnownExtensions.count(name.get<std::string>()) == 0)
      return name.get<std::string>();
  return {};
}

}  // namespace orv::rws::adaptor::headless
