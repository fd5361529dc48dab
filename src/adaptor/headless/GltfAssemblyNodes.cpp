#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <utility>

#include "adaptor/headless/GltfAssembly.h"
#include "adaptor/headless/GltfDocument.h"
#include "adaptor/headless/GltfMedia.h"
#include "adaptor/headless/GltfMesh.h"
#include "util/Angles.h"

namespace orv::rws::adaptor::headless {

namespace {

using util::CMesh;
using util::Quat;
using util::Vector3;

constexpr int kVertexTarget = 34962;

std::string Label(const SceneNode& node) {
  return "node \"" + node.GetName() + '"';
}

void RequireFinite(const SceneNode& node, std::initializer_list<double> numbers, const char* what) {
  for (const double number : numbers)
    if (!std::isfinite(number)) throw GltfError(Label(node), std::string(what) + " is not finite");
}

/// Equality that tells 0 from -0, as bit identity through files wants it.
bool SameBits(const Trs& a, const Trs& b) {
  return std::memcmp(&a, &b, sizeof(Trs)) == 0;
}
static_assert(sizeof(Trs) == 10 * sizeof(double), "a pose has no padding");

Json NumbersOf(const Vector3<double>& v) {
  return Json::array({v.x, v.y, v.z});
}

/// A default that the file does not spell out is left out.
void Put(Json& json, const char* key, Json value, bool isDefault) {
  if (isDefault && Member(json, key) == nullptr) return;
  json[key] = std::move(value);
}

bool IsLine(const Json& primitive) {
  const Json* mode = Member(primitive, "mode");
  return mode != nullptr && (*mode == static_cast<int>(PrimitiveMode::kLines) ||
                             *mode == static_cast<int>(PrimitiveMode::kLineStrip) ||
                             *mode == static_cast<int>(PrimitiveMode::kLineLoop));
}

void AppendPoint(const SceneNode& node, const Vector3<double>& p, std::vector<float>& values) {
  for (const double number : {p.x, p.y, p.z}) {
    values.push_back(static_cast<float>(number));
    if (!std::isfinite(values.back()))
      throw GltfError(Label(node), "has a point that no glTF file can hold");
  }
}

/// glTF has one index per corner where a mesh has two: corners that differ in either are split.
struct SplitMesh {
  std::vector<std::uint32_t> corners;
  std::vector<std::pair<std::int32_t, std::int32_t>> vertices;
};

SplitMesh SplitCorners(const CMesh& mesh) {
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

void GltfWriter::Assembly::WriteNode(const SceneNode& node) {
  const SceneNode::Source* source = SourceOf(node);
  Json json = std::move(List("nodes")[m_indices.at(&node)]);
  if (source == nullptr || node.m_name != source->name) json["name"] = node.m_name;
  WritePose(node, source, json);
  if (source == nullptr ? !node.m_visible : node.m_visible != source->visible)
    WriteVisible(node, json);
  if (node.m_lens && (source == nullptr || !source->lens || *node.m_lens != *source->lens))
    WriteLens(node, source, json);
  WriteShape(node, source, json);
  WriteExtras(node, source, json);
  List("nodes")[m_indices.at(&node)] = std::move(json);
}

void GltfWriter::Assembly::WritePose(const SceneNode& node, const SceneNode::Source* source,
                                     Json& json) {
  const bool asMatrix = source != nullptr && source->matrix;
  const bool moved = source == nullptr || !SameBits(node.m_pose, source->animation.pose);
  // A node that is keyed must not be given by a matrix.
  if (!moved && !(asMatrix && node.HasKeys())) return;
  const Vector3<double>& t = node.m_pose.translation;
  const Quat<double>& r = node.m_pose.rotation;
  const Vector3<double>& s = node.m_pose.scale;
  RequireFinite(node, {t.x, t.y, t.z, r.x, r.y, r.z, r.w, s.x, s.y, s.z}, "its pose");
  json.erase("matrix");
  const Trs identity;
  Put(json, "translation", NumbersOf(t), SameBits({t, {}, {1, 1, 1}}, identity));
  Put(json, "rotation", Json::array({r.x, r.y, r.z, r.w}), SameBits({{}, r, {1, 1, 1}}, identity));
  Put(json, "scale", NumbersOf(s), SameBits({{}, {}, s}, identity));
}

void GltfWriter::Assembly::WriteExtras(const SceneNode& node, const SceneNode::Source* source,
                                       Json& json) {
  const auto write = [&json](const char* key, bool changed, bool present, Json value) {
    if (!changed) return;
    if (present)
      ExtrasObject(json)[key] = std::move(value);
    else
      EraseExtra(json, key);
  };
  static const SceneNode::Source kNothing;
  const SceneNode::Source& old = source == nullptr ? kNothing : *source;
  write(kTagKey, node.m_tag != old.tag, !node.m_tag.empty(), node.m_tag);
  const auto home = node.HangsOnRig() ? node.m_home : std::nullopt;
  write(kHomeKey, home != old.home, home.has_value(), home.value_or(""));
  write(kHubKey, node.m_hub != old.hub, node.m_hub, true);
  if (node.m_backdrop)
    WriteBackdrop(*node.m_backdrop, m_folder, ExtrasObject(json)[kBackdropKey]);
  else if (old.hasBackdrop)
    EraseExtra(json, kBackdropKey);
}

void GltfWriter::Assembly::WriteVisible(const SceneNode& node, Json& json) {
  constexpr const char* kName = "KHR_node_visibility";
  if (node.m_visible) {
    Json& extensions = json["extensions"];
    extensions.erase(kName);
    if (extensions.empty()) json.erase("extensions");
    return;
  }
  json["extensions"][kName]["visible"] = false;
  Json& used = List("extensionsUsed");
  if (std::find(used.begin(), used.end(), kName) == used.end()) used.push_back(kName);
}

/// Whether any node but the one that is being written, which is out of the list meanwhile, has it.
bool GltfWriter::Assembly::IsUsed(Table table, std::size_t index) {
  bool used = false;
  VisitReferences(m_json, table, [&](Json& reference) { used = used || reference == index; });
  return used;
}

void GltfWriter::Assembly::WriteLens(const SceneNode& node, const SceneNode::Source* source,
                                     Json& json) {
  const Lens& lens = *node.m_lens;
  RequireFinite(node, {lens.fieldOfView, lens.focusDistance, lens.nearClip, lens.farClip},
                "its lens");
  if (!(lens.fieldOfView > 0.0)) throw GltfError(Label(node), "its field of view is not above 0");
  Json camera{{"type", "perspective"}, {"perspective", Json::object()}};
  const Json* old = source == nullptr || !source->lens ? nullptr : Member(json, "camera");
  if (old != nullptr) camera = List("cameras")[old->get<std::size_t>()];
  Json& perspective = camera["perspective"];
  perspective["yfov"] = lens.fieldOfView / util::kDegreesPerRadian;
  perspective["znear"] = std::max(lens.nearClip, Lens::kLeastClip);
  if (lens.farClip > perspective["znear"].get<double>())
    perspective["zfar"] = lens.farClip;
  else
    perspective.erase("zfar");
  if (lens.aspectRatio > 0.0) perspective["aspectRatio"] = lens.aspectRatio;
  Json& own = ExtrasObject(camera)[kOwnKey];
  if (!own.is_object()) own = Json::object();
  own["fieldOfView"] = lens.fieldOfView;
  own["focusDistance"] = lens.focusDistance;
  own["nearClip"] = lens.nearClip;
  if (old != nullptr && !IsUsed(Table::kCameras, old->get<std::size_t>())) {
    List("cameras")[old->get<std::size_t>()] = std::move(camera);
    return;
  }
  own["own"] = true;
  json["camera"] = Append("cameras", std::move(camera));
}

/// Notes the document's meshes that nodes in memory may hold too.
void GltfWriter::Assembly::FindMeshes() {
  for (const SceneNode* node : m_nodes) {
    const SceneNode::Source* source = SourceOf(*node);
    if (source == nullptr || source->mesh < 0 || source->curve) continue;
    if (const auto mesh = source->document->BuiltTriangles(source->mesh))
      m_meshes.emplace(std::pair(mesh.get(), source->colour),
                       static_cast<std::size_t>(source->mesh));
  }
}

/// Nodes that hold one mesh in memory do so in the file. False when no element shows this node's
/// mesh in its colour yet.
bool GltfWriter::Assembly::ShareMesh(const SceneNode& node, Json& json) {
  const auto known = m_meshes.find({node.m_mesh.get(), node.m_colour});
  if (known == m_meshes.end() || node.m_curve) return false;
  json["mesh"] = known->second;
  json.erase("weights");
  EraseExtra(json, kOwnKey);
  return true;
}

void GltfWriter::Assembly::WriteShape(const SceneNode& node, const SceneNode::Source* source,
                                      Json& json) {
  const bool meshChanged = source == nullptr ? node.HasMesh() : node.m_ownMesh;
  const bool hasEmptyMesh = meshChanged && node.HasMesh() && node.GetMesh()->faces.empty();
  const bool curveChanged =
      source == nullptr ? node.m_curve != nullptr : node.m_curve != source->curve;
  const bool colourChanged = source != nullptr && node.m_colour != source->colour;
  if (!meshChanged && !curveChanged && !colourChanged) return;

  if (meshChanged && node.m_mesh && ShareMesh(node, json)) return;

  Json mesh = Json::object();
  Json primitives = Json::array();
  const Json* old = source == nullptr ? nullptr : Member(json, "mesh");
  const bool isPlain = old == nullptr || IsOwn(List("meshes")[old->get<std::size_t>()]);
  if (old != nullptr) {
    mesh = List("meshes")[old->get<std::size_t>()];
    for (Json& primitive : mesh["primitives"]) {
      if (IsLine(primitive) ? curveChanged : meshChanged) continue;
      if (colourChanged && !IsLine(primitive)) primitive["material"] = MaterialOf(node.m_colour);
      primitives.push_back(std::move(primitive));
    }
  }
  if (meshChanged && node.HasMesh() && !node.GetMesh()->faces.empty())
    primitives.push_back(TrianglePrimitive(node, *node.GetMesh()));
  if (curveChanged && node.m_curve && !node.m_curve->points.empty())
    primitives.push_back(CurvePrimitive(node, *node.m_curve));

  if (hasEmptyMesh)
    ExtrasObject(json)[kOwnKey] = Json{{"emptyMesh", true}};
  else if (meshChanged)
    EraseExtra(json, kOwnKey);
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
  ExtrasObject(mesh)[kOwnKey] = Json{{"own", true}};
  const std::size_t index = Append("meshes", std::move(mesh));
  json["mesh"] = index;
  if (meshChanged && isPlain && !node.m_curve)
    m_meshes.emplace(std::pair(node.m_mesh.get(), node.m_colour), index);
}

Json GltfWriter::Assembly::TrianglePrimitive(const SceneNode& node, const CMesh& mesh) {
  if (!mesh.isConsistent()) throw GltfError(Label(node), "its mesh has an index out of range");
  std::vector<float> points;
  Json attributes;
  std::size_t indices = 0;
  if (!mesh.texFaces.empty() && mesh.texFaces.size() == mesh.faces.size()) {
    const SplitMesh split = SplitCorners(mesh);
    std::vector<float> texCoords;
    for (const auto& [vertex, texCoord] : split.vertices) {
      AppendPoint(node, mesh.vertices[static_cast<std::size_t>(vertex)], points);
      const Vector3<double>& uv = mesh.texCoords[static_cast<std::size_t>(texCoord)];
      RequireFinite(node, {uv.x, uv.y}, "a texture coordinate");
      texCoords.push_back(static_cast<float>(uv.x));
      texCoords.push_back(static_cast<float>(uv.y));
    }
    attributes["POSITION"] = AddAccessor(points, "VEC3", 3, kVertexTarget, true);
    attributes["TEXCOORD_0"] = AddAccessor(texCoords, "VEC2", 2, kVertexTarget, false);
    indices = AddIndices(split.corners);
  } else {
    for (const Vector3<double>& vertex : mesh.vertices) AppendPoint(node, vertex, points);
    attributes["POSITION"] = AddAccessor(points, "VEC3", 3, kVertexTarget, true);
    indices = AddIndices({mesh.faces.begin(), mesh.faces.end()});
  }
  return Json{{"attributes", std::move(attributes)},
              {"indices", indices},
              {"material", MaterialOf(node.m_colour)}};
}

Json GltfWriter::Assembly::CurvePrimitive(const SceneNode& node, const Curve& curve) {
  std::vector<float> points;
  for (const Vector3<double>& point : curve.points) AppendPoint(node, point, points);
  const PrimitiveMode mode = curve.closed ? PrimitiveMode::kLineLoop : PrimitiveMode::kLineStrip;
  return Json{{"attributes", {{"POSITION", AddAccessor(points, "VEC3", 3, kVertexTarget, true)}}},
              {"mode", static_cast<int>(mode)}};
}

int GltfWriter::Assembly::MaterialOf(const Colour& colour) {
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
      Append("materials", Json{{"pbrMetallicRoughness",
                                {{"baseColorFactor", std::move(factor)}, {"metallicFactor", 0.0}}},
                               {"extras", {{kOwnKey, {{"own", true}}}}}});
  m_materials[colour] = static_cast<int>(index);
  return static_cast<int>(index);
}

}  // namespace orv::rws::adaptor::headless
