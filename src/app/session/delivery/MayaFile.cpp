// A scene in Maya's text format (.ma).
#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <utility>

#include "adaptor/common/LegalNames.h"
#include "adaptor/headless/Scene.h"
#include "app/session/delivery/FileKinds.h"
#include "app/session/delivery/MayaUnits.h"
#include "app/session/delivery/SampledScene.h"
#include "app/session/delivery/TextFile.h"

namespace orv::app {

namespace {

using util::Vector3;

/// Elements of an attribute that one statement sets.
constexpr std::size_t kElementsAtOnce = 250;

/// Sets the elements of an array by statements of `kElementsAtOnce`, each with the attribute's
/// name, the elements' range and `type`; the first tells how many there are, and `hint`. `put(i)`
/// writes an element behind a gap of its own.
template <class Put>
void SetArray(TextFile& file, std::string_view attribute, std::size_t size, std::string_view type,
              const Put& put, std::string_view hint = {}) {
  for (std::size_t from = 0; from < size; from += kElementsAtOnce) {
    const std::size_t last = std::min(size, from + kElementsAtOnce) - 1;
    file << "\tsetAttr ";
    if (from == 0) file << "-s " << size << " " << hint;
    file << "\"" << attribute << "[" << from << ":" << last << "]\"" << type;
    for (std::size_t i = from; i <= last; ++i) put(i);
    file << ";\n";
  }
}

void PutPoint(TextFile& file, const Vector3<double>& point, double metre) {
  for (int i = 0; i < 3; ++i) file.Gap() << point[i] * metre;
}

/// A triangle mesh as the format has it: faces are made of edges, each told once.
struct EdgeMesh {
  struct Face {
    int edges[3];  ///< below 0: edge -1 - e, walked backwards
  };

  /// Triangles that use a vertex twice are no faces there.
  explicit EdgeMesh(const util::CMesh& mesh) {
    std::unordered_map<std::uint64_t, int> known;
    for (std::size_t i = 0; i + 2 < mesh.faces.size(); i += 3) {
      const int* const v = &mesh.faces[i];
      if (v[0] == v[1] || v[1] == v[2] || v[2] == v[0]) continue;
      Face face{};
      for (int side = 0; side < 3; ++side) {
        const int from = v[side], to = v[(side + 1) % 3];
        const auto low = static_cast<std::uint64_t>(std::min(from, to));
        const auto key = low << 32 | static_cast<std::uint64_t>(std::max(from, to));
        const auto [edge, isNew] = known.emplace(key, static_cast<int>(edges.size()));
        if (isNew) edges.emplace_back(from, to);
        const bool isForward = edges[static_cast<std::size_t>(edge->second)].first == from;
        face.edges[side] = isForward ? edge->second : -1 - edge->second;
      }
      faces.push_back(face);
    }
  }

  std::vector<std::pair<int, int>> edges;
  std::vector<Face> faces;
};

class MayaWriter {
 public:
  MayaWriter(const SampledScene& scene, TextFile& file)
      : m_scene(scene), m_file(file), m_time(scene), m_names(NamesOf(scene)) {}

  void Write() {
    Head();
    for (const SampledNode& node : m_scene.nodes) {
      Transform(node);
      for (const SampledShape& shape : node.shapes) Shape(node, shape);
    }
    PlaybackRange();
    for (const SampledNode& node : m_scene.nodes)
      if (node.isMoving) Curves(node);
    Connections();
    m_file << "// End of scene\n";
  }

 private:
  static rws::adaptor::LegalNames NamesOf(const SampledScene& scene);
  void Head();
  void Transform(const SampledNode& node);
  void Shape(const SampledNode& node, const SampledShape& shape);
  void Camera(const rws::adaptor::headless::Lens& lens);
  void Mesh(const util::CMesh& mesh);
  void NurbsCurve(const rws::adaptor::Curve& curve);
  void PlaybackRange();
  void Curves(const SampledNode& node);
  void Connections();

  void CreateNode(std::string_view type, std::string_view name, std::string_view parent = {});
  void SetTriple(std::string_view attribute, const Vector3<double>& v);

  const SampledScene& m_scene;
  TextFile& m_file;
  const MayaTime m_time;
  rws::adaptor::LegalNames m_names;
  std::vector<std::pair<std::string, std::string>> m_links;  ///< outputs and where they lead
};

/// Curves get names that no node of the scene has.
rws::adaptor::LegalNames MayaWriter::NamesOf(const SampledScene& scene) {
  std::set<std::string> taken = MayaOwnNames();
  for (const SampledNode& node : scene.nodes) {
    taken.insert(node.name);
    for (const SampledShape& shape : node.shapes) taken.insert(shape.name);
  }
  return rws::adaptor::LegalNames(std::move(taken));
}

void MayaWriter::Head() {
  // A name that begins with a digit is no word of the language.
  const std::string& unit = m_time.GetName();
  const bool isWord = unit.front() > '9';
  m_file << "//Maya ASCII 2019 scene\n//Codeset: UTF-8\nrequires maya \"2019\";\n"
         << "currentUnit -l centimeter -a degree -t " << (isWord ? unit : "\"" + unit + "\"")
         << ";\n";
}

void MayaWriter::CreateNode(std::string_view type, std::string_view name, std::string_view parent) {
  m_file << "createNode " << type << " -n \"" << name << "\"";
  if (!parent.empty()) m_file << " -p \"" << parent << "\"";
  m_file << ";\n";
}

void MayaWriter::SetTriple(std::string_view attribute, const Vector3<double>& v) {
  m_file << "\tsetAttr \"" << attribute << "\" -type \"double3\" " << v.x << " " << v.y << " "
         << v.z << " ;\n";
}

void MayaWriter::Transform(const SampledNode& node) {
  const bool isTop = node.parent < 0;
  CreateNode("transform", node.name,
             isTop ? "" : m_scene.nodes[static_cast<std::size_t>(node.parent)].name);
  if (!node.isVisible) m_file << "\tsetAttr \".v\" no;\n";
  SetTriple(".t", node.poses.front().translation);
  SetTriple(".r", node.poses.front().degrees);
  SetTriple(".s", node.poses.front().scale);
}

void MayaWriter::Shape(const SampledNode& node, const SampledShape& shape) {
  constexpr const char* kTypes[] = {"locator", "mesh", "camera", "nurbsCurve"};
  CreateNode(kTypes[static_cast<int>(shape.kind)], shape.name, node.name);
  m_file << "\tsetAttr -k off \".v\";\n";
  if (shape.kind == ShapeKind::kCamera) Camera(*node.node->GetLens());
  if (shape.kind == ShapeKind::kCurve) NurbsCurve(*node.node->GetCurve());
  if (shape.kind != ShapeKind::kMesh) return;
  Mesh(*node.node->GetMesh());
  m_links.emplace_back(shape.name + ".iog", ":initialShadingGroup.dsm");
}

void MayaWriter::Camera(const rws::adaptor::headless::Lens& lens) {
  const Film film = FilmOf(lens);
  m_file << "\tsetAttr \".rnd\" no;\n\tsetAttr \".cap\" -type \"double2\" "
         << film.width / kMillimetresPerInch << " " << film.height / kMillimetresPerInch
         << " ;\n\tsetAttr \".ff\" 1;\n\tsetAttr \".fl\" " << film.focalLength
         << ";\n\tsetAttr \".ncp\" " << film.nearClip * m_scene.metre << ";\n\tsetAttr \".fcp\" "
         << film.farClip * m_scene.metre << ";\n\tsetAttr \".fd\" "
         << lens.focusDistance * m_scene.metre << ";\n\tsetAttr \".coi\" "
         << lens.focusDistance * m_scene.metre << ";\n";
}

void MayaWriter::Mesh(const util::CMesh& mesh) {
  const EdgeMesh parts(mesh);
  m_file << "\tsetAttr \".vir\" yes;\n\tsetAttr \".vif\" yes;\n";
  SetArray(m_file, ".vt", mesh.vertices.size(), "",
           [&](std::size_t i) { PutPoint(m_file, mesh.vertices[i], m_scene.metre); });
  SetArray(m_file, ".ed", parts.edges.size(), "", [&](std::size_t i) {
    m_file.Gap() << parts.edges[i].first << " " << parts.edges[i].second << " 0";
  });
  const auto putFace = [&](std::size_t i) {
    const int* const edges = parts.faces[i].edges;
    m_file << " \n\t\tf 3 " << edges[0] << " " << edges[1] << " " << edges[2];
  };
  SetArray(m_file, ".fc", parts.faces.size(), " -type \"polyFaces\"", putFace,
           "-ch " + std::to_string(3 * parts.faces.size()) + " ");
  for (const auto& [attribute, kind] :
       {std::pair(".cd", "Edge"), std::pair(".cvd", "Vertex"), std::pair(".hfd", "Face")})
    m_file << "\tsetAttr \"" << attribute << "\" -type \"dataPolyComponent\" Index_Data " << kind
           << " 0 ;\n";
}

/// A curve of straight lines; one that is closed ends in its first point.
void MayaWriter::NurbsCurve(const rws::adaptor::Curve& curve) {
  std::vector<Vector3<double>> points = curve.points;
  if (curve.closed) points.push_back(points.front());
  m_file << "\tsetAttr \".cc\" -type \"nurbsCurve\" \n\t\t1 " << points.size() - 1
         << " 0 no 3\n\t\t" << points.size();
  for (std::size_t i = 0; i < points.size(); ++i) m_file.Gap() << i;
  m_file << "\n\t\t" << points.size();
  for (const Vector3<double>& point : points) {
    m_file << "\n\t\t" << point.x * m_scene.metre << " " << point.y * m_scene.metre << " "
           << point.z * m_scene.metre;
  }
  m_file << "\n\t\t;\n";
}

void MayaWriter::PlaybackRange() {
  CreateNode("script", "sceneConfigurationScriptNode");
  const double first = m_time.At(0), last = m_time.At(m_scene.frames - 1);
  m_file << "\tsetAttr \".b\" -type \"string\" \"playbackOptions -min " << first << " -max " << last
         << " -ast " << first << " -aet " << last << " \";\n\tsetAttr \".st\" 6;\n";
}

void MayaWriter::Curves(const SampledNode& node) {
  constexpr const char* kTypes[] = {"animCurveTL", "animCurveTA", "animCurveTU"};
  constexpr const char* kLinear = "2";
  for (const MayaChannel& channel : MayaChannels()) {
    const std::string name = m_names.Add(node.name + "_" + channel.name);
    CreateNode(kTypes[channel.kind], name);
    m_file << "\tsetAttr \".tan\" " << kLinear << ";\n\tsetAttr \".wgt\" no;\n";
    const std::vector<long> frames = KeyedFrames(m_scene, node, channel);
    SetArray(m_file, ".ktv", frames.size(), " ", [&](std::size_t i) {
      m_file.Gap() << m_time.At(frames[i]) << " " << channel.Of(node.Pose(frames[i]));
    });
    m_links.emplace_back(name + ".o", node.name + "." + channel.letters);
  }
}

void MayaWriter::Connections() {
  for (const auto& [from, to] : m_links) {
    m_file << "connectAttr \"" << from << "\" \"" << to << "\"";
    m_file << (to.front() == ':' ? " -na;\n" : ";\n");
  }
}

}  // namespace

void WriteMayaFile(const SampledScene& scene, TextFile& file) {
  MayaWriter(scene, file).Write();
}

}  // namespace orv::app
