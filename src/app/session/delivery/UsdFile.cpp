// A USD stage as text (.usda).
#include <algorithm>

#include "adaptor/headless/Scene.h"
#include "app/session/delivery/FileKinds.h"
#include "app/session/delivery/SampledScene.h"
#include "app/session/delivery/TextFile.h"

namespace orv::app {

namespace {

using rws::adaptor::headless::SceneNode;
using util::Vector3;

/// Deeper prims are not indented any more: their samples would be mostly blanks.
constexpr int kDeepestIndent = 12;
constexpr double kTenthsOfAMetre = 0.01;  ///< in a millimetre: the unit of a lens' film

class UsdWriter {
 public:
  UsdWriter(const SampledScene& scene, TextFile& file) : m_scene(scene), m_file(file) {}

  void Write();

 private:
  void Head();
  void Prim(const SampledNode& node);
  void Op(const SampledNode& node, std::string_view name, Vector3<double> SampledPose::*member);
  void Shape(const SampledNode& node, const SampledShape& shape);
  void Mesh(const SceneNode& node);
  void Camera(const rws::adaptor::headless::Lens& lens);
  void Curve(const rws::adaptor::Curve& curve);

  void Open(std::string_view type, std::string_view name);
  void Close();
  /// Begins a line.
  TextFile& Line();
  void Points(const std::vector<Vector3<double>>& points);
  template <class List>
  void Numbers(std::string_view declaration, const List& numbers);

  const SampledScene& m_scene;
  TextFile& m_file;
  int m_depth = 0;  ///< prims that are open
};

TextFile& UsdWriter::Line() {
  return m_file << std::string(static_cast<std::size_t>(4 * std::min(m_depth, kDeepestIndent)),
                               ' ');
}

void UsdWriter::Open(std::string_view type, std::string_view name) {
  m_file << "\n";
  Line() << "def " << type << " \"" << name << "\"\n";
  Line() << "{\n";
  ++m_depth;
}

void UsdWriter::Close() {
  --m_depth;
  Line() << "}\n";
}

void Put(TextFile& file, const Vector3<double>& v) {
  file << "(" << v.x << ", " << v.y << ", " << v.z << ")";
}

void PutFloats(TextFile& file, const Vector3<double>& v) {
  file << "(" << static_cast<float>(v.x) << ", " << static_cast<float>(v.y) << ", "
       << static_cast<float>(v.z) << ")";
}

template <class List>
void UsdWriter::Numbers(std::string_view declaration, const List& numbers) {
  Line() << declaration << " = [";
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (i > 0) (m_file << ",").Gap();
    m_file << numbers[i];
  }
  m_file << "]\n";
}

void UsdWriter::Points(const std::vector<Vector3<double>>& points) {
  Vector3<double> least = points.front(), most = points.front();
  for (const Vector3<double>& point : points) {
    for (int i = 0; i < 3; ++i) {
      least[i] = std::min(least[i], point[i]);
      most[i] = std::max(most[i], point[i]);
    }
  }
  Line() << "float3[] extent = [";
  PutFloats(m_file, least);
  m_file << ", ";
  PutFloats(m_file, most);
  m_file << "]\n";
  Line() << "point3f[] points = [";
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (i > 0) (m_file << ",").Gap();
    PutFloats(m_file, points[i]);
  }
  m_file << "]\n";
}

/// Of a node that moves all three properties are sampled, also those that rest: a reader that takes
/// a matrix apart may find others for these.
void UsdWriter::Op(const SampledNode& node, std::string_view name,
                   Vector3<double> SampledPose::*member) {
  Line() << "double3 xformOp:" << name;
  if (!node.isMoving) {
    m_file << " = ";
    Put(m_file, node.poses.front().*member);
    m_file << "\n";
    return;
  }
  m_file << ".timeSamples = {\n";
  const Vector3<double>& first = node.poses.front().*member;
  const bool rests = std::all_of(node.poses.begin(), node.poses.end(),
                                 [&](const SampledPose& pose) { return pose.*member == first; });
  for (long frame = 0; frame < m_scene.frames; frame += rests ? m_scene.frames - 1 : 1) {
    Line() << "    " << m_scene.firstFrame + frame << ": ";
    Put(m_file, node.Pose(frame).*member);
    m_file << ",\n";
  }
  Line() << "}\n";
}

void UsdWriter::Shape(const SampledNode& node, const SampledShape& shape) {
  if (shape.kind == ShapeKind::kHelper) return;
  constexpr const char* kTypes[] = {nullptr, "Mesh", "Camera", "BasisCurves"};
  Open(kTypes[static_cast<int>(shape.kind)], shape.name);
  if (shape.kind == ShapeKind::kMesh) Mesh(*node.node);
  if (shape.kind == ShapeKind::kCamera) Camera(*node.node->GetLens());
  if (shape.kind == ShapeKind::kCurve) Curve(*node.node->GetCurve());
  Close();
}

void UsdWriter::Mesh(const SceneNode& node) {
  const util::CMesh& mesh = *node.GetMesh();
  Numbers("int[] faceVertexCounts", std::vector<int>(mesh.faces.size() / 3, 3));
  Numbers("int[] faceVertexIndices", mesh.faces);
  Points(mesh.vertices);
  const rws::adaptor::Colour colour = node.GetColour();
  Line() << "color3f[] primvars:displayColor = [(" << colour[0] << ", " << colour[1] << ", "
         << colour[2] << ")]\n";
  Line() << "uniform token subdivisionScheme = \"none\"\n";
}

void UsdWriter::Camera(const rws::adaptor::headless::Lens& lens) {
  const Film film = FilmOf(lens);
  const auto put = [this](std::string_view name, double value) {
    Line() << "float " << name << " = " << static_cast<float>(value) << "\n";
  };
  Line() << "float2 clippingRange = (" << static_cast<float>(film.nearClip) << ", "
         << static_cast<float>(film.farClip) << ")\n";
  put("focalLength", film.focalLength * kTenthsOfAMetre);
  put("focusDistance", lens.focusDistance);
  put("horizontalAperture", film.width * kTenthsOfAMetre);
  put("verticalAperture", film.height * kTenthsOfAMetre);
  Line() << "token projection = \"perspective\"\n";
}

void UsdWriter::Curve(const rws::adaptor::Curve& curve) {
  Numbers("int[] curveVertexCounts", std::vector<std::size_t>{curve.points.size()});
  Points(curve.points);
  Line() << "uniform token type = \"linear\"\n";
  Line() << "uniform token wrap = \"" << (curve.closed ? "periodic" : "nonperiodic") << "\"\n";
}

void UsdWriter::Prim(const SampledNode& node) {
  Open("Xform", node.name);
  if (!node.isVisible) Line() << "token visibility = \"invisible\"\n";
  Op(node, "rotateXYZ", &SampledPose::degrees);
  Op(node, "scale", &SampledPose::scale);
  Op(node, "translate", &SampledPose::translation);
  Line() << "uniform token[] xformOpOrder = [\"xformOp:translate\", \"xformOp:rotateXYZ\", "
            "\"xformOp:scale\"]\n";
  for (const SampledShape& shape : node.shapes) Shape(node, shape);
}

void UsdWriter::Head() {
  const auto isTop = [](const SampledNode& node) { return node.parent < 0; };
  m_file << "#usda 1.0\n(\n";
  if (std::count_if(m_scene.nodes.begin(), m_scene.nodes.end(), isTop) == 1)
    m_file << "    defaultPrim = \"" << m_scene.nodes.front().name << "\"\n";
  m_file << "    endTimeCode = " << m_scene.firstFrame + m_scene.frames - 1
         << "\n    framesPerSecond = " << m_scene.frameRate
         << "\n    metersPerUnit = 1\n    startTimeCode = " << m_scene.firstFrame
         << "\n    timeCodesPerSecond = " << m_scene.frameRate << "\n    upAxis = \""
         << (m_scene.up == rws::adaptor::UpAxis::kY ? "Y" : "Z") << "\"\n)\n";
}

/// A prim is closed when the next one does not stand below it.
void UsdWriter::Write() {
  Head();
  for (const SampledNode& node : m_scene.nodes) {
    while (m_depth > node.depth) Close();
    Prim(node);
  }
  while (m_depth > 0) Close();
}

}  // namespace

void WriteUsdFile(const SampledScene& scene, TextFile& file) {
  UsdWriter(scene, file).Write();
}

}  // namespace orv::app
