#include "app/session/models/ModelFile.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

#include "adaptor/headless/GltfReader.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/session/SceneRange.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/Names.h"
#include "app/session/anyhost/UndoBlock.h"
#include "app/session/models/ForeignModel.h"
#include "app/session/models/MergeNames.h"
#include "core/CoreImplementation.h"
#include "util/CMesh.h"
#include "util/NumberText.h"

namespace orv::app {

namespace headless = rws::adaptor::headless;
using headless::Scene;
using headless::SceneNode;
using Vector = util::Vector3<double>;
using Quat = util::Quat<double>;

namespace {

bool IsGltf(const std::string& path) {
  const std::string ending = EndingOf(path);
  return ending == ".glb" || ending == ".gltf";
}

ModelFacts FactsOf(const Scene& scene) {
  ModelFacts facts;
  facts.format = "glTF 2.0";
  facts.unitMeters.told = facts.up.told = true;
  const double infinite = std::numeric_limits<double>::infinity();
  Vector low(infinite, infinite, infinite);
  Vector high = -low;
  for (const SceneNode* node : scene.GetNodes()) {
    ++facts.nodes;
    facts.cameras += node->GetLens() ? 1 : 0;
    facts.keyedNodes += node->HasKeys() ? 1 : 0;
    const util::CMesh* mesh = node->GetMesh();
    if (!mesh) continue;
    ++facts.meshes;
    facts.triangles += mesh->faces.size() / 3;
    const util::Matrix<double> world = node->WorldMatrix(scene.GetRangeStart());
    for (const Vector& vertex : mesh->vertices) {
      const Vector p = world.transformPoint(vertex);
      low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
      high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
  }
  if (high.x >= low.x) facts.size = high - low;
  if (!scene.GetRigs().empty())
    facts.odd.push_back("its rigs are left behind (a pre-rigged model takes them along)");
  if (scene.GetClips().size() > 1)
    facts.odd.push_back("of " + std::to_string(scene.GetClips().size()) +
                        " animations the first one comes along");
  return facts;
}

/// Puts a node at the top, with its keys, into another unit and up. All of it is linear, so that
/// tangents of keys go along.
void ChangeTop(SceneNode& node, double unit, UpAxis up) {
  const double half = std::sqrt(0.5);
  const Quat turn = up == UpAxis::kZ ? Quat(-half, 0.0, 0.0, half) : Quat();
  const auto point = [&](const Vector& v) {
    return (up == UpAxis::kZ ? Vector(v.x, v.z, -v.y) : v) * unit;
  };
  const rws::adaptor::Trs& pose = node.GetPose();
  node.SetPose({point(pose.translation), pose.rotation * turn, pose.scale * unit});
  for (const auto path : {headless::ChannelPath::kTranslation, headless::ChannelPath::kRotation,
                          headless::ChannelPath::kScale}) {
    const headless::Channel* old = node.GetChannel(path);
    if (!old) continue;
    std::vector<double> values = old->GetValues();
    const auto width = static_cast<std::size_t>(ComponentCount(path));
    for (std::size_t i = 0; i + width <= values.size(); i += width) {
      double* const v = &values[i];
      if (path == headless::ChannelPath::kRotation) {
        const Quat q = Quat(v[0], v[1], v[2], v[3]) * turn;
        v[0] = q.x, v[1] = q.y, v[2] = q.z, v[3] = q.w;
        continue;
      }
      const Vector old3(v[0], v[1], v[2]);
      const Vector now = path == headless::ChannelPath::kScale ? old3 * unit : point(old3);
      v[0] = now.x, v[1] = now.y, v[2] = now.z;
    }
    headless::Channel changed(path, old->GetMode());
    if (changed.SetKeys(old->GetTimes(), std::move(values))) node.SetChannel(std::move(changed));
  }
}

/// What only means something beside the rigs of the scene that it comes from.
void DropMarks(Scene& scene) {
  for (SceneNode* node : scene.GetNodes()) {
    node->SetTag("");
    node->SetHub(false);
    node->SetHome({});
    node->SetBackdrop(nullptr);
  }
}

}  // namespace

struct ModelFile::Content {
  ForeignModel foreign;
};

ModelFile::ModelFile() = default;
ModelFile::~ModelFile() = default;

const std::vector<std::string>& ModelFile::Endings() {
  static const std::vector<std::string> all = [] {
    std::vector<std::string> endings = ForeignModel::Endings();
    endings.insert(endings.end(), {".glb", ".gltf"});
    return endings;
  }();
  return all;
}

Problem ModelFile::Read(const std::string& path, const Monitor& monitor, bool& cancelled) {
  cancelled = false;
  m_path = path;
  m_facts = {};
  m_content.reset();
  const std::vector<std::string>& known = Endings();
  const std::string ending = EndingOf(path);
  if (std::find(known.begin(), known.end(), ending) == known.end())
    return {path,
            "models of this kind can't be imported",
            "import one of " + Joined(known) + "; other programs export .glb, which keeps most",
            {}};
  if (IsGltf(path)) {
    const headless::ReadResult read = headless::GltfReader::Read(path);
    cancelled = monitor.IsCancelled();
    if (!read) return {"", read.error, "", {}};
    m_facts = FactsOf(*read.scene);
    return {};
  }
  std::string bytes, error;
  auto content = std::make_unique<Content>();
  const Problem problem = content->foreign.Read(path, monitor, cancelled, m_facts);
  if (!problem && !cancelled) m_content = std::move(content);
  return problem;
}

ImportResult ModelFile::AddTo(SceneSession& session, const ImportOptions& options,
                              const Monitor& monitor) const {
  ImportResult result;
  headless::HeadlessAdaptor& adaptor = session.GetAdaptor();
  if (session.GetCore().IsRecording() || session.GetCore().IsResimulating()) {
    result.problem = {"", "nothing can be imported during a take", "stop it first", {}};
    return result;
  }
  headless::HeadlessNode* under = nullptr;
  if (!options.under.empty() && !(under = adaptor.FindSceneNode(options.under))) {
    result.problem = {options.under, "there is no node of this name", "", {}};
    return result;
  }
  const double unit = options.unitMeters.value_or(m_facts.unitMeters.value);
  const UpAxis up = options.up.value_or(m_facts.up.value);
  headless::ReadResult read =
      m_content ? headless::GltfReader::ReadMemory(
                      m_content->foreign.ToGltf(unit, up, result.warnings), m_path)
                : headless::GltfReader::Read(m_path);
  if (!read) {
    result.problem = {"", read.error, "", {}};
    return result;
  }
  result.cancelled = monitor.IsCancelled();
  if (result.cancelled) return result;
  Scene& added = *read.scene;
  // A rate is guessed of a file of the library's too, but to no user.
  if (!m_content) result.warnings = std::move(read.warnings);
  DropMarks(added);
  if (!m_content && (unit != 1.0 || up != UpAxis::kY))
    for (const auto& root : added.GetRoots()) ChangeTop(*root, unit, up);
  std::size_t renamed = 0;
  for (const auto& [old, name] : TakeFreeNames(
           added, session.GetScene(), [](const SceneNode& node) { return node.GetName(); }))
    renamed += old != name ? 1 : 0;
  if (renamed > 0)
    result.warnings.push_back(util::counted(renamed, "name was", "names were") +
                              " taken already, and counted up");
  UndoBlock block(adaptor, "Import " + FileNameOf(m_path));
  std::vector<headless::HeadlessNode*> roots;
  const std::string error = adaptor.Merge(added, under, roots);
  if (!error.empty()) {
    result.problem = {m_path, error, "", {}};
    return result;
  }
  block.Keep();
  for (headless::HeadlessNode* root : roots) result.nodes.push_back(root->GetSceneName());
  if (m_facts.keyedNodes > 0 &&
      HasKeysOffTheGrid(session.GetScene(), session.GetScene().GetFrameRate()))
    result.warnings.push_back("keys stand between the frames of the scene, which has " +
                              util::shortText(session.GetScene().GetFrameRate()) + " a second");
  return result;
}

}  // namespace orv::app
