#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <utility>

#include "adaptor/headless/GltfAssembly.h"
#include "adaptor/headless/GltfDocument.h"
#include "adaptor/headless/GltfMesh.h"
#include "util/Angles.h"

namespace orv::rws::adaptor::headless {

namespace {

using util::CMesh;
using util::Quat;
using util::Vector3;

constexpr int kVertexTarget = 34962;
constexpr double kLeastClip = 1e-4;  ///< glTF wants a near plane in front of the eye (m)

std::string label(const SceneNode& node) {
  return "node \"" + node.name() + '"';
}

void requireFinite(const SceneNode& node, std::initializer_list<double> numbers, const char* what) {
  for (const double number : numbers)
    if (!std::isfinite(number)) throw GltfError(label(node), std::string(what) + " is not finite");
}

/// Equality that tells 0 from -0, as bit identity through files wants it.
bool sameBits(const Trs& a, const Trs& b) {
  return std::memcmp(&a, &b, sizeof(Trs)) == 0;
}
static_assert(sizeof(Trs) == 10 * sizeof(double), "a pose has no padding");

Json numbers(const Vector3<double>& v) {
  return Json::array({v.x, v.y, v.z});
}

/// A default that the file does not spell out is left out.
void put(Json& json, const char* key, Json value, bool isDefault) {
  if (isDefault && member(json, key) == nullptr) return;
  json[key] = std::move(value);
}

bool isLine(const Json& primitive) {
  const Json* mode = member(primitive, "mode");
  return mode != nullptr && (*mode == static_cast<int>(PrimitiveMode::kLines) ||
                             *mode == static_cast<int>(PrimitiveMode::kLineStrip) ||
                             *mode == static_cast<int>(PrimitiveMode::kLineLoop));
}

void appendPoint(const SceneNode& node, const Vector3<double>& p, std::vector<float>& values) {
  for (const double number : {p.x, p.y, p.z}) {
    values.push_back(static_cast<float>(number));
    if (!std::isfinite(values.back()))
      throw GltfError(label(node), "has a point that no glTF file can hold");
  }
}

/// glTF has one index per corner where a mesh has two: corners that differ in either are split.
struct SplitMesh {
  std::vector<std::uint32_t> corners;
  std::vector<std::pair<std::int32_t, std::int32_t>> vertices;
};

SplitMesh splitCorners(const CMesh& mesh) {
  SplitMesh result;
  std::map<std::pair<std::int32_t, std::int32_t>, std::uint32_t> known;
  result.corners.reserve(mesh.faces.size());
  for (std::size_t i = 0; i < mesh.faces.size(); ++i) {
    const std::pair<std::int32_t, std::int32_t> corner{mesh.faces[i], mesh.texFaces[i]};
    const auto [at, isNew] =
        known.emplace(corner, static_cast<std::uint32_t>(result.vertices.size()));
    if (isNew) result.vertices.push_back(corner);
    result.corners.push_back(at->second);
  }
  return result;
}

}  // namespace

void GltfWriter::Assembly::writeNode(const SceneNode& node) {
  const SceneNode::Source* source = sourceOf(node);
  Json json = std::move(list("nodes")[m_indices.at(&node)]);
  if (source == nullptr || node.m_name != source->name) json["name"] = node.m_name;
  writePose(node, source, json);
  if (source == nullptr ? !node.m_visible : node.m_visible != source->visible)
    writeVisible(node, json);
  if (node.m_lens && (source == nullptr || !source->lens || *node.m_lens != *source->lens))
    writeLens(node, source, json);
  writeShape(node, source, json);
  writeExtras(node, source, json);
  list("nodes")[m_indices.at(&node)] = std::move(json);
}

void GltfWriter::Assembly::writePose(const SceneNode& node, const SceneNode::Source* source,
                                     Json& json) {
  const bool asMatrix = source != nullptr && source->matrix;
  const bool moved = source == nullptr || !sameBits(node.m_pose, source->animation.pose);
  // A node that is keyed must not be given by a matrix.
  if (!moved && !(asMatrix && node.hasKeys())) return;
  const Vector3<double>& t = node.m_pose.translation;
  const Quat<double>& r = node.m_pose.rotation;
  const Vector3<double>& s = node.m_pose.scale;
  requireFinite(node, {t.x, t.y, t.z, r.x, r.y, r.z, r.w, s.x, s.y, s.z}, "its pose");
  json.erase("matrix");
  const Trs identity;
  put(json, "translation", numbers(t), sameBits({t, {}, {1, 1, 1}}, identity));
  put(json, "rotation", Json::array({r.x, r.y, r.z, r.w}), sameBits({{}, r, {1, 1, 1}}, identity));
  put(json, "scale", numbers(s), sameBits({{}, {}, s}, identity));
}

void GltfWriter::Assembly::writeExtras(const SceneNode& node, const SceneNode::Source* source,
                                       Json& json) {
  const auto write = [&json](const char* key, bool changed, bool present, Json value) {
    if (!changed) return;
    if (present)
      extrasObject(json)[key] = std::move(value);
    else
      eraseExtra(json, key);
  };
  static const SceneNode::Source kNothing;
  const SceneNode::Source& old = source == nullptr ? kNothing : *source;
  write(kTagKey, node.m_tag != old.tag, !node.m_tag.empty(), node.m_tag);
  const auto home = node.hangsOnRig() ? node.m_home : std::nullopt;
  write(kHomeKey, home != old.home, home.has_value(), home.value_or(""));
  write(kHubKey, node.m_hub != old.hub, node.m_hub, true);
}

void GltfWriter::Assembly::writeVisible(const SceneNode& node, Json& json) {
  constexpr const char* kName = "KHR_node_visibility";
  if (node.m_visible) {
    Json& extensions = json["extensions"];
    extensions.erase(kName);
    if (extensions.empty()) json.erase("extensions");
    return;
  }
  json["extensions"][kName]["visible"] = false;
  Json& used = list("extensionsUsed");
  if (std::find(used.begin(), used.end(), kName) == used.end()) used.push_back(kName);
}

/// Whether any node but the one that is being written, which is out of the list meanwhile, has it.
bool GltfWriter::Assembly::isUsed(Table table, std::size_t index) {
  bool used = false;
  visitReferences(m_json, table, [&](Json& reference) { used = used || reference == index; });
  return used;
}

void GltfWriter::Assembly::writeLens(const SceneNode& node, const SceneNode::Source* source,
                                     Json& json) {
  const Lens& lens = *node.m_lens;
  requireFinite(node, {lens.fieldOfView, lens.focusDistance, lens.nearClip, lens.farClip},
                "its lens");
  if (!(lens.fieldOfView > 0.0)) throw GltfError(label(node), "its field of view is not above 0");
  Json camera{{"type", "perspective"}, {"perspective", Json::object()}};
  const Json* old = source == nullptr || !source->lens ? nullptr : member(json, "camera");
  if (old != nullptr) camera = list("cameras")[old->get<std::size_t>()];
  Json& perspective = camera["perspective"];
  perspective["yfov"] = lens.fieldOfView / util::kDegreesPerRadian;
  perspective["znear"] = std::max(lens.nearClip, kLeastClip);
  if (lens.farClip > perspective["znear"].get<double>())
    perspective["zfar"] = lens.farClip;
  else
    perspective.erase("zfar");
  if (lens.aspectRatio > 0.0) perspective["aspectRatio"] = lens.aspectRatio;
  Json& own = extrasObject(camera)[kOwnKey];
  if (!own.is_object()) own = Json::object();
  own["fieldOfView"] = lens.fieldOfView;
  own["focusDistance"] = lens.focusDistance;
  own["nearClip"] = lens.nearClip;
  if (old != nullptr && !isUsed(Table::kCameras, old->get<std::size_t>())) {
    list("cameras")[old->get<std::size_t>()] = std::move(camera);
    return;
  }
  own["own"] = true;
  json["camera"] = append("cameras", std::move(camera));
}

/// Notes the document's meshes that nodes in memory may hold too.
void GltfWriter::Assembly::findMeshes() {
  for (const SceneNode* node : m_nodes) {
    const SceneNode::Source* source = sourceOf(*node);
    if (source == nullptr || source->mesh < 0 || source->curve) continue;
    if (const auto mesh = m_document->builtTriangles(source->mesh))
      m_meshes.emplace(std::pair(mesh.get(), source->colour),
                       static_cast<std::size_t>(source->mesh));
  }
}

/// Nodes that hold one mesh in memory do so in the file. False when no element shows this node's
/// mesh in its colour yet.
bool GltfWriter::Assembly::shareMesh(const SceneNode& node, Json& json) {
  const auto known = m_meshes.find({node.m_mesh.get(), node.m_colour});
  if (known == m_meshes.end() || node.m_curve) return false;
  json["mesh"] = known->second;
  json.erase("weights");
  eraseExtra(json, kOwnKey);
  return true;
}

void GltfWriter::Assembly::writeShape(const SceneNode& node, const SceneNode::Source* source,
                                      Json& json) {
  const bool meshChanged = source == nullptr ? node.hasMesh() : node.m_ownMesh;
  const bool hasEmptyMesh = meshChanged && node.hasMesh() && node.mesh()->faces.empty();
  const bool curveChanged =
      source == nullptr ? node.m_curve != nullptr : node.m_curve != source->curve;
  const bool colourChanged = source != nullptr && node.m_colour != source->colour;
  if (!meshChanged && !curveChanged && !colourChanged) return;

  if (meshChanged && node.m_mesh && shareMesh(node, json)) return;

  Json mesh = Json::object();
  Json primitives = Json::array();
  const Json* old = source == nullptr ? nullptr : member(json, "mesh");
  const bool isPlain = old == nullptr || isOwn(list("meshes")[old->get<std::size_t>()]);
  if (old != nullptr) {
    mesh = list("meshes")[old->get<std::size_t>()];
    for (Json& primitive : mesh["primitives"]) {
      if (isLine(primitive) ? curveChanged : meshChanged) continue;
      if (colourChanged && !isLine(primitive)) primitive["material"] = materialOf(node.m_colour);
      primitives.push_back(std::move(primitive));
    }
  }
  if (meshChanged && node.hasMesh() && !node.mesh()->faces.empty())
    primitives.push_back(trianglePrimitive(node, *node.mesh()));
  if (curveChanged && node.m_curve && !node.m_curve->points.empty())
    primitives.push_back(curvePrimitive(node, *node.m_curve));

  if (hasEmptyMesh)
    extrasObject(json)[kOwnKey] = Json{{"emptyMesh", true}};
  else if (meshChanged)
    eraseExtra(json, kOwnKey);
  if (primitives.empty()) {
    json.erase("mesh");
    json.erase("weights");
    return;
  }
  mesh["primitives"] = std::move(primitives);
  if (meshChanged) {
    // Morph weights belong to the triangles that are gone.
    mesh.erase("weights");
    json.erase("weights");
  }
  extrasObject(mesh)[kOwnKey] = Json{{"own", true}};
  const std::size_t index = append("meshes", std::move(mesh));
  json["mesh"] = index;
  if (meshChanged && isPlain && !node.m_curve)
    m_meshes.emplace(std::pair(node.m_mesh.get(), node.m_colour), index);
}

Json GltfWriter::Assembly::trianglePrimitive(const SceneNode& node, const CMesh& mesh) {
  if (!mesh.isConsistent()) throw GltfError(label(node), "its mesh has an index out of range");
  std::vector<float> points;
  Json attributes;
  std::size_t indices = 0;
  if (!mesh.texFaces.empty() && mesh.texFaces.size() == mesh.faces.size()) {
    const SplitMesh split = splitCorners(mesh);
    std::vector<float> texCoords;
    for (const auto& [vertex, texCoord] : split.vertices) {
      appendPoint(node, mesh.vertices[static_cast<std::size_t>(vertex)], points);
      const Vector3<double>& uv = mesh.texCoords[static_cast<std::size_t>(texCoord)];
      requireFinite(node, {uv.x, uv.y}, "a texture coordinate");
      texCoords.push_back(static_cast<float>(uv.x));
      texCoords.push_back(static_cast<float>(uv.y));
    }
    attributes["POSITION"] = addAccessor(points, "VEC3", 3, kVertexTarget, true);
    attributes["TEXCOORD_0"] = addAccessor(texCoords, "VEC2", 2, kVertexTarget, false);
    indices = addIndices(split.corners);
  } else {
    for (const Vector3<double>& vertex : mesh.vertices) appendPoint(node, vertex, points);
    attributes["POSITION"] = addAccessor(points, "VEC3", 3, kVertexTarget, true);
    indices = addIndices({mesh.faces.begin(), mesh.faces.end()});
  }
  return Json{{"attributes", std::move(attributes)},
              {"indices", indices},
              {"material", materialOf(node.m_colour)}};
}

Json GltfWriter::Assembly::curvePrimitive(const SceneNode& node, const Curve& curve) {
  std::vector<float> points;
  for (const Vector3<double>& point : curve.points) appendPoint(node, point, points);
  const PrimitiveMode mode = curve.closed ? PrimitiveMode::kLineLoop : PrimitiveMode::kLineStrip;
  return Json{{"attributes", {{"POSITION", addAccessor(points, "VEC3", 3, kVertexTarget, true)}}},
              {"mode", static_cast<int>(mode)}};
}

int GltfWriter::Assembly::materialOf(const Colour& colour) {
  const auto known = m_materials.find(colour);
  if (known != m_materials.end()) return known->second;
  Json factor = Json::array();
  for (const float part : colour) {
    if (!(part >= 0.0f && part <= 1.0f))
      throw GltfError("materials", "a display colour is not within 0 to 1");
    factor.push_back(static_cast<double>(part));
  }
  factor.push_back(1.0);
  const std::size_t index =
      append("materials", Json{{"pbrMetallicRoughness",
                                {{"baseColorFactor", std::move(factor)}, {"metallicFactor", 0.0}}},
                               {"extras", {{kOwnKey, {{"own", true}}}}}});
  m_materials[colour] = static_cast<int>(index);
  return static_cast<int>(index);
}

}  // namespace orv::rws::adaptor::headless
