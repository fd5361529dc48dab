#include "app/session/models/ForeignModel.h"

#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <locale.h>

#include <algorithm>
#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <cmath>
#include <exception>
#include <filesystem>
#include <limits>
#include <new>
#include <set>
#include <utility>

#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/Names.h"
#include "app/session/models/AssimpMaths.h"
#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::app {

namespace fs = std::filesystem;

namespace {

/// What a scene of ours could not hold in a useful way.
constexpr std::uintmax_t kMostBytes = std::uintmax_t{1} << 30;
constexpr std::size_t kMostNodes = 100000;
constexpr std::size_t kMostVertices = 20000000;
/// A model of unknown units that is larger than this is taken for one in centimetres, or in
/// millimetres (units): no prop or vehicle has so many metres.
constexpr double kMostMetres = 60.0;
constexpr double kMostCentimetres = 6000.0;

struct Format {
  const char* ending;
  const char* name;
};
// Of what else the library reads, PLY for one hangs or dies on damaged files.
constexpr Format kFormats[] = {{".obj", "Wavefront OBJ"},
                               {".fbx", "Autodesk FBX"},
                               {".dae", "Collada"},
                               {".stl", "STL"},
                               {".3ds", "3D Studio 3DS"}};

/// Numbers are read with a decimal point on this thread, whatever the user's locale.
class PlainNumbers {
 public:
  PlainNumbers() : m_plain(newlocale(LC_ALL_MASK, "C", nullptr)) {
    if (m_plain) m_before = uselocale(m_plain);
  }
  ~PlainNumbers() {
    if (!m_plain) return;
    uselocale(m_before);
    freelocale(m_plain);
  }
  PlainNumbers(const PlainNumbers&) = delete;
  PlainNumbers& operator=(const PlainNumbers&) = delete;

 private:
  locale_t m_plain;
  locale_t m_before = nullptr;
};

/// Owned by the importer.
class Progress final : public Assimp::ProgressHandler {
 public:
  explicit Progress(const Monitor& monitor) : m_monitor(monitor) {}
  bool Update(float part) override {
    if (part >= 0.0f) m_monitor.Tell(std::lround(100.0f * std::min(part, 1.0f)), 100);
    return !m_monitor.IsCancelled();
  }

 private:
  const Monitor& m_monitor;
};

template <class Visit>
void EachNode(const aiNode& root, Visit visit) {
  std::vector<const aiNode*> open{&root};
  while (!open.empty()) {
    const aiNode* node = open.back();
    open.pop_back();
    visit(*node);
    for (unsigned i = 0; i < node->mNumChildren; ++i) open.push_back(node->mChildren[i]);
  }
}

/// The text between the two, of the file's first part; empty when they are not there.
std::string Between(const std::string& text, const std::string& before, const std::string& after) {
  const std::size_t start = text.find(before);
  if (start == std::string::npos) return {};
  const std::size_t end = text.find(after, start + before.size());
  if (end == std::string::npos) return {};
  return text.substr(start + before.size(), end - start - before.size());
}

}  // namespace

ForeignModel::ForeignModel() = default;
ForeignModel::~ForeignModel() = default;

const std::vector<std::string>& ForeignModel::Endings() {
  static const std::vector<std::string> all = [] {
    std::vector<std::string> endings;
    for (const Format& format : kFormats) endings.push_back(format.ending);
    return endings;
  }();
  return all;
}

Problem ForeignModel::Read(const std::string& path, const Monitor& monitor, bool& cancelled,
                           ModelFacts& facts) try {
  const std::string ending = EndingOf(path);
  std::error_code code;
  if (fs::file_size(path, code) > kMostBytes && !code)
    return {path, "is larger than 1 GB", "import its parts one by one", {}};
  m_folder = path.substr(0, path.size() - FileNameOf(path).size());
  m_stem = fs::path(path).stem().string();
  for (const Format& format : kFormats)
    if (ending == format.ending) facts.format = format.name;

  const PlainNumbers plain;
  m_importer = std::make_unique<Assimp::Importer>();
  m_importer->SetProgressHandler(new Progress(monitor));
  m_importer->SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
  m_importer->SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE, aiPrimitiveType_POINT);
  m_scene = m_importer->ReadFile(path, aiProcess_ValidateDataStructure | aiProcess_Triangulate |
                                           aiProcess_SortByPType | aiProcess_JoinIdenticalVertices |
                                           aiProcess_FindInvalidData | aiProcess_FlipUVs);
  cancelled = monitor.IsCancelled();
  if (cancelled) return {};
  const Problem problem = CheckScene(path);
  if (problem) return problem;
  ReadUnits(path, ending, facts);
  count(facts);
  return {};
} catch (const std::bad_alloc&) {
  return {path, "is too large for this machine's memory", "import its parts one by one", {}};
} catch (const std::exception& e) {
  return {path, std::string("can't be read: ") + e.what(), "export it anew", {}};
}

Problem ForeignModel::CheckScene(const std::string& path) const {
  constexpr const char* kAnew = "export it anew, or as .glb";
  if (m_scene == nullptr || m_scene->mRootNode == nullptr) {
    std::string why = m_importer->GetErrorString();
    return {path, why.empty() ? "is damaged" : "is damaged or of another kind: " + why, kAnew, {}};
  }
  if ((m_scene->mFlags & AI_SCENE_FLAGS_INCOMPLETE) != 0 && m_scene->mNumMeshes == 0 &&
      m_scene->mNumAnimations == 0)
    return {path, "holds no mesh", kAnew, {}};
  std::size_t nodes = 0;
  bool finite = true;
  EachNode(*m_scene->mRootNode, [&](const aiNode& node) {
    ++nodes;
    finite = finite && IsFinite(rws::adaptor::Decompose(MatrixOf(node.mTransformation)));
  });
  std::size_t vertices = 0;
  for (unsigned i = 0; i < m_scene->mNumMeshes; ++i) {
    const aiMesh& mesh = *m_scene->mMeshes[i];
    vertices += mesh.mNumVertices;
    for (unsigned k = 0; k < mesh.mNumVertices && finite; ++k)
      for (unsigned axis = 0; axis < 3; ++axis)
        finite = finite && std::isfinite(mesh.mVertices[k][axis]);
  }
  if (nodes < 2 && vertices == 0)
    return {path, "is empty: it holds no node and no mesh", kAnew, {}};
  if (!finite) return {path, "has a place that is no number", kAnew, {}};
  if (nodes > kMostNodes || vertices > kMostVertices)
    return {path,
            "is too large: " + util::counted(nodes, "node") + " and " +
                util::counted(vertices, "point") + ", of at most " + std::to_string(kMostNodes) +
                " and " + std::to_string(kMostVertices),
            "import its parts one by one",
            {}};
  return {};
}

/// What the file tells of its unit and its up. The library turns some formats by a pose of the
/// root, which goes: all are turned in one place.
void ForeignModel::ReadUnits(const std::string& path, const std::string& ending,
                             ModelFacts& facts) {
  aiMatrix4x4& root = m_scene->mRootNode->mTransformation;
  if (ending == ".fbx" && m_scene->mMetaData != nullptr) {
    double factor = 0.0;
    float single = 0.0f;
    if (m_scene->mMetaData->Get("UnitScaleFactor", single)) factor = double{single};
    if (factor == 0.0) m_scene->mMetaData->Get("UnitScaleFactor", factor);
    if (factor > 0.0 && std::isfinite(factor)) facts.unitMeters = {factor * 0.01, true};
    int up = 0;
    if (m_scene->mMetaData->Get("UpAxis", up) && up == 0)
      facts.odd.push_back("the file says that X is up, which is not turned: give the axis");
    facts.up = {up == 2 ? UpAxis::kZ : UpAxis::kY, up == 1 || up == 2};
  } else if (ending == ".dae") {
    root = aiMatrix4x4();
    std::string text;
    util::readFile(path, text);
    const std::string unit = Between(Between(text, "<unit", ">"), "meter=\"", "\"");
    double metres = 0.0;
    if (util::parseNumber(unit, metres) && metres > 0.0) facts.unitMeters = {metres, true};
    const std::string up = Between(text, "<up_axis>", "</up_axis>");
    facts.up = {up == "Z_UP" ? UpAxis::kZ : UpAxis::kY, up == "Z_UP" || up == "Y_UP"};
  } else if (ending == ".3ds") {
    root = aiMatrix4x4();
    facts.up = {UpAxis::kZ, true};
  }
}

void ForeignModel::count(ModelFacts& facts) const {
  using Matrix = util::Matrix<double>;
  using Vector = util::Vector3<double>;
  Vector low(1.0, 1.0, 1.0);
  low = low * std::numeric_limits<double>::infinity();
  Vector high = -low;
  std::size_t bones = 0, morphs = 0;
  facts.meshes = facts.triangles = 0;
  for (unsigned i = 0; i < m_scene->mNumMeshes; ++i) {
    const aiMesh& mesh = *m_scene->mMeshes[i];
    ++facts.meshes;
    if (IsOfTriangles(mesh)) facts.triangles += mesh.mNumFaces;
    bones += mesh.mNumBones > 0 ? 1 : 0;
    morphs += mesh.mNumAnimMeshes > 0 ? 1 : 0;
  }
  std::vector<std::pair<const aiNode*, Matrix>> open{{m_scene->mRootNode, Matrix()}};
  while (!open.empty()) {
    const aiNode& node = *open.back().first;
    const Matrix world = open.back().second * MatrixOf(node.mTransformation);
    open.pop_back();
    ++facts.nodes;
    for (unsigned i = 0; i < node.mNumMeshes; ++i) {
      const aiMesh& mesh = *m_scene->mMeshes[node.mMeshes[i]];
      for (unsigned k = 0; k < mesh.mNumVertices; ++k) {
        const Vector p = world.transformPoint(VectorOf(mesh.mVertices[k]));
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
      }
    }
    for (unsigned i = 0; i < node.mNumChildren; ++i) open.emplace_back(node.mChildren[i], world);
  }
  if (high.x >= low.x) facts.size = high - low;
  facts.cameras = m_scene->mNumCameras;
  std::set<std::string> keyed;
  if (m_scene->mNumAnimations > 0)
    for (unsigned i = 0; i < m_scene->mAnimations[0]->mNumChannels; ++i)
      keyed.insert(m_scene->mAnimations[0]->mChannels[i]->mNodeName.C_Str());
  facts.keyedNodes = keyed.size();

  const double largest = std::max({facts.size.x, facts.size.y, facts.size.z});
  if (!facts.unitMeters.told && largest > kMostMetres)
    facts.unitMeters.value = largest > kMostCentimetres ? 0.001 : 0.01;
  if (bones > 0)
    facts.odd.push_back(util::counted(bones, "mesh is", "meshes are") +
                        " skinned: they come in their rest pose, without the skin");
  if (morphs > 0)
    facts.odd.push_back(util::counted(morphs, "mesh has", "meshes have") +
                        " morph targets, which are left out");
  if (m_scene->mNumLights > 0)
    facts.odd.push_back(util::counted(m_scene->mNumLights, "light is", "lights are") + " left out");
  if (m_scene->mNumAnimations > 1)
    facts.odd.push_back("of " + std::to_string(m_scene->mNumAnimations) +
                        " animations the first one comes along");
}

}  // namespace orv::app
