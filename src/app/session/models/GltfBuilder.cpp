#include "app/session/models/GltfBuilder.h"

#include <algorithm>
#include <cstring>
#include <nlohmann/json.hpp>
#include <utility>

namespace orv::app {

using Json = nlohmann::ordered_json;
using rws::adaptor::headless::ChannelPath;

namespace {

constexpr int kVertices = 34962;
constexpr int kIndices = 34963;
constexpr int kFloat = 5126;
constexpr int kUnsignedInt = 5125;

}  // namespace

std::string MimeOfImage(const std::string& bytes) {
  if (bytes.compare(0, 4, "\x89PNG") == 0) return "image/png";
  return bytes.compare(0, 3, "\xFF\xD8\xFF") == 0 ? "image/jpeg" : "";
}

GltfBuilder::GltfBuilder()
    : m_parts{Json{{"asset", {{"version", "2.0"}, {"generator", "Orvel Rigwright"}}},
                   {"scene", 0},
                   {"scenes", Json::array({Json{{"nodes", Json::array()}}})}},
              {}} {}

int GltfBuilder::Append(const char* list, Json element) {
  Json& elements = m_parts.json[list];
  elements.push_back(std::move(element));
  return static_cast<int>(elements.size()) - 1;
}

std::size_t GltfBuilder::AddView(const void* data, std::size_t size, int target) {
  Json view{{"buffer", 0}, {"byteOffset", AppendBinary(m_parts, data, size)}, {"byteLength", size}};
  if (target != 0) view["target"] = target;
  return static_cast<std::size_t>(Append("bufferViews", std::move(view)));
}

std::size_t GltfBuilder::AddFloats(const std::vector<float>& values, const char* type,
                                   std::size_t components, int target, bool bounds) {
  Json accessor{{"bufferView", AddView(values.data(), values.size() * sizeof(float), target)},
                {"componentType", kFloat},
                {"count", values.size() / components},
                {"type", type}};
  if (bounds) {
    std::vector<float> least(values.begin(),
                             values.begin() + static_cast<std::ptrdiff_t>(components));
    std::vector<float> most = least;
    for (std::size_t i = components; i < values.size(); ++i) {
      least[i % components] = std::min(least[i % components], values[i]);
      most[i % components] = std::max(most[i % components], values[i]);
    }
    accessor["min"] = least;
    accessor["max"] = most;
  }
  return static_cast<std::size_t>(Append("accessors", std::move(accessor)));
}

int GltfBuilder::AddTexture(const std::string& bytes) {
  const int image = Append("images", Json{{"mimeType", MimeOfImage(bytes)},
                                          {"bufferView", AddView(bytes.data(), bytes.size(), 0)}});
  return Append("textures", Json{{"source", image}});
}

int GltfBuilder::AddMaterial(const Material& material) {
  Json surface{{"baseColorFactor", material.colour},
               {"metallicFactor", material.metallic},
               {"roughnessFactor", material.roughness}};
  if (material.texture >= 0) surface["baseColorTexture"] = Json{{"index", material.texture}};
  Json json{{"name", material.name}, {"pbrMetallicRoughness", std::move(surface)}};
  if (material.glow != std::array<double, 3>{}) json["emissiveFactor"] = material.glow;
  if (material.colour[3] < 1.0) json["alphaMode"] = "BLEND";
  if (material.doubleSided) json["doubleSided"] = true;
  return Append("materials", std::move(json));
}

int GltfBuilder::AddMesh(const std::string& name, const std::vector<Primitive>& primitives) {
  Json parts = Json::array();
  for (const Primitive& primitive : primitives) {
    Json attributes{{"POSITION", AddFloats(primitive.points, "VEC3", 3, kVertices, true)}};
    if (!primitive.normals.empty())
      attributes["NORMAL"] = AddFloats(primitive.normals, "VEC3", 3, kVertices, false);
    if (!primitive.texCoords.empty())
      attributes["TEXCOORD_0"] = AddFloats(primitive.texCoords, "VEC2", 2, kVertices, false);
    const std::size_t view = AddView(primitive.corners.data(),
                                     primitive.corners.size() * sizeof(std::uint32_t), kIndices);
    Json part{{"attributes", std::move(attributes)},
              {"indices", Append("accessors", Json{{"bufferView", view},
                                                   {"componentType", kUnsignedInt},
                                                   {"count", primitive.corners.size()},
                                                   {"type", "SCALAR"}})}};
    if (primitive.material >= 0) part["material"] = primitive.material;
    if (primitive.lines) part["mode"] = 1;
    parts.push_back(std::move(part));
  }
  return Append("meshes", Json{{"name", name}, {"primitives", std::move(parts)}});
}

int GltfBuilder::AddCamera(const Camera& camera) {
  Json perspective{{"yfov", camera.fieldOfView}, {"znear", camera.nearClip}};
  if (camera.aspectRatio > 0.0) perspective["aspectRatio"] = camera.aspectRatio;
  if (camera.farClip > camera.nearClip) perspective["zfar"] = camera.farClip;
  return Append("cameras", Json{{"type", "perspective"}, {"perspective", std::move(perspective)}});
}

int GltfBuilder::AddNode(const Node& node) {
  const auto& t = node.pose.translation;
  const auto& r = node.pose.rotation;
  const auto& s = node.pose.scale;
  Json json{{"name", node.name}};
  if (!(t == util::Vector3<double>())) json["translation"] = {t.x, t.y, t.z};
  if (r.x != 0.0 || r.y != 0.0 || r.z != 0.0) json["rotation"] = {r.x, r.y, r.z, r.w};
  if (!(s == util::Vector3<double>(1.0, 1.0, 1.0))) json["scale"] = {s.x, s.y, s.z};
  if (node.mesh >= 0) json["mesh"] = node.mesh;
  if (node.camera >= 0) json["camera"] = node.camera;
  const int index = Append("nodes", std::move(json));
  Json& siblings = node.parent < 0
                       ? m_parts.json["scenes"][0]["nodes"]
                       : m_parts.json["nodes"][static_cast<std::size_t>(node.parent)]["children"];
  siblings.push_back(index);
  return index;
}

void GltfBuilder::AddKeys(int node, ChannelPath path, const std::vector<double>& times,
                          const std::vector<float>& values) {
  constexpr const char* kPaths[] = {"translation", "rotation", "scale"};
  Json& animations = m_parts.json["animations"];
  if (animations.empty())
    animations.push_back(Json{{"channels", Json::array()}, {"samplers", Json::array()}});
  const std::size_t input =
      AddFloats(std::vector<float>(times.begin(), times.end()), "SCALAR", 1, 0, true);
  const bool turns = path == ChannelPath::kRotation;
  const std::size_t output = AddFloats(values, turns ? "VEC4" : "VEC3", turns ? 4 : 3, 0, false);
  Json& animation = m_parts.json["animations"][0];
  animation["channels"].push_back(
      Json{{"sampler", animation["samplers"].size()},
           {"target", {{"node", node}, {"path", kPaths[static_cast<int>(path)]}}}});
  animation["samplers"].push_back(Json{{"input", input}, {"output", output}});
}

std::string GltfBuilder::Finish() {
  if (m_parts.json["scenes"][0]["nodes"].empty()) m_parts.json["scenes"][0].erase("nodes");
  if (!m_parts.binary.empty())
    m_parts.json["buffers"] = Json::array({Json{{"byteLength", m_parts.binary.size()}}});
  return JoinGlb(m_parts);
}

}  // namespace orv::app
