#include "app/session/models/RiggedModel.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <limits>
#include <map>
#include <memory>
#include <set>
#include <utility>

#include "adaptor/headless/GltfReader.h"
#include "adaptor/headless/GltfWriter.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/GroundText.h"
#include "app/session/anyhost/Names.h"
#include "app/session/anyhost/UndoBlock.h"
#include "app/session/models/GltfBuilder.h"
#include "app/session/models/MergeNames.h"
#include "app/session/models/ModelCardFile.h"
#include "core/CoreImplementation.h"
#include "core/host/CoreNode.h"
#include "core/instances/Instance.h"
#include "core/instances/RecordKeys.h"
#include "util/AtomicFile.h"
#include "util/CMesh.h"
#include "util/xml/Tag.h"

namespace orv::app {

namespace headless = rws::adaptor::headless;
namespace record = rws::core::record;
using headless::Scene;
using headless::SceneNode;
using Vector = util::Vector3<double>;

namespace {

constexpr const char* kEnding = ".prm";
constexpr const char* kShipped = ":/data/models";

/// The rig of which this is a node's tag.
std::string RigOfTag(const std::string& tag) {
  return tag.substr(0, tag.find('/'));
}

bool HasTake(const Scene& scene) {
  for (const SceneNode* node : scene.GetNodes())
    if (!node->GetTag().empty() && node->HasKeys()) return true;
  for (const auto& rig : scene.GetRigs())
    if (rig.record.find("<" + std::string(record::kTrack) + " ") != std::string::npos) return true;
  return false;
}

/// A model's scene and card, or what is wrong with the file.
struct OpenModel {
  Problem problem;
  ModelCard card;
  std::unique_ptr<Scene> scene;
};

OpenModel ReadModel(const std::string& path) {
  OpenModel model;
  std::string bytes, error;
  if (path.rfind(":/", 0) == 0) {
    QFile file(QString::fromStdString(path));
    if (file.open(QIODevice::ReadOnly))
      bytes = file.readAll().toStdString();
    else
      error = path + ": no such model comes with the program";
  } else {
    util::readFile(path, bytes, &error);
  }
  if (!error.empty()) {
    model.problem = {"", error, "", {}};
    return model;
  }
  if (!ReadCard(bytes, model.card)) {
    model.problem = {path,
                     "is damaged, or no pre-rigged model",
                     "rigwright model make makes one; rigwright import brings other models in",
                     {}};
    return model;
  }
  headless::ReadResult read = headless::GltfReader::ReadMemory(std::move(bytes), path);
  if (!read) model.problem = {"", read.error, "", {}};
  model.scene = std::move(read.scene);
  return model;
}

/// Takes what is not selected out of `scene`.
class Selecting {
 public:
  Selecting(Scene& scene, const ModelSelection& selection)
      : m_scene(scene),
        m_rigs(selection.rigs.begin(), selection.rigs.end()),
        m_nodes(selection.nodes.begin(), selection.nodes.end()) {}

  /// Warns of what loses the node that it hangs on.
  void run(std::vector<std::string>& warnings) {
    for (SceneNode* node : m_scene.GetNodes())
      if (IsChosen(*node) ||
          (node->GetTag().empty() && node->GetParent() && m_kept.count(node->GetParent()) > 0))
        m_kept.insert(node);
    for (SceneNode* node : m_scene.GetNodes()) {
      if (m_kept.count(node) == 0 || !node->GetParent() || m_kept.count(node->GetParent()) > 0)
        continue;
      warnings.push_back(node->GetName() + " hung on " + node->GetParent()->GetName() +
                         ", which is no part of the model: it hangs in the world now");
      m_scene.Reparent(*node, nullptr, m_scene.GetRangeStart());
    }
    std::vector<SceneNode*> tops;
    for (SceneNode* node : m_scene.GetNodes())
      if (m_kept.count(node) == 0 && (!node->GetParent() || m_kept.count(node->GetParent()) > 0))
        tops.push_back(node);
    for (SceneNode* node : tops) m_scene.Detach(*node);
    auto& rigs = m_scene.GetRigs();
    rigs.erase(std::remove_if(rigs.begin(), rigs.end(),
                              [this](const auto& rig) { return m_rigs.count(rig.name) == 0; }),
               rigs.end());
  }

 private:
  bool IsChosen(const SceneNode& node) const {
    return m_nodes.count(node.GetName()) > 0 ||
           (!node.GetTag().empty() && m_rigs.count(RigOfTag(node.GetTag())) > 0);
  }

  Scene& m_scene;
  const std::set<std::string> m_rigs;
  const std::set<std::string> m_nodes;
  std::set<const SceneNode*> m_kept;
};

Problem CheckSelection(SceneSession& session, const ModelSelection& selection,
                       const ModelCard& card, const std::string& path) {
  if (EndingOf(path) != kEnding)
    return {path, std::string("a pre-rigged model ends in ") + kEnding, "", {}};
  if (card.title.find_first_not_of(' ') == std::string::npos)
    return {path, "a pre-rigged model has a title", "give it one", {}};
  if (!card.picture.empty() && MimeOfImage(card.picture).empty())
    return {path, "the picture is no PNG and no JPEG", "", {}};
  if (selection.rigs.empty() && selection.nodes.empty())
    return {path, "nothing is selected for the model", "name its rigs and nodes", {}};
  for (const std::string& rig : selection.rigs)
    if (!session.GetCore().FindInstance(rig)) return {rig, "there is no rig of this name", "", {}};
  for (const std::string& node : selection.nodes)
    if (!session.GetScene().Find(node)) return {node, "there is no node of this name", "", {}};
  return {};
}

}  // namespace

RiggedModelInfo ReadRiggedModel(const std::string& path) {
  RiggedModelInfo info;
  OpenModel model = ReadModel(path);
  info.problem = model.problem;
  if (info.problem) return info;
  info.card = std::move(model.card);
  for (const auto& rig : model.scene->GetRigs()) info.rigs.push_back({rig.name, rig.kind});
  info.hasTake = HasTake(*model.scene);
  const double infinite = std::numeric_limits<double>::infinity();
  Vector low(infinite, infinite, infinite);
  Vector high = -low;
  for (const SceneNode* node : model.scene->GetNodes()) {
    ++info.nodes;
    if (!node->GetMesh() || !node->GetTag().empty()) continue;
    const util::Matrix<double> world = node->WorldMatrix(model.scene->GetRangeStart());
    for (const Vector& vertex : node->GetMesh()->vertices) {
      const Vector p = world.transformPoint(vertex);
      low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
      high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
  }
  if (high.x >= low.x) info.low = low, info.high = high;
  return info;
}

std::vector<std::string> ShippedModels() {
  std::vector<std::string> paths;
  for (const QString& name : QDir(kShipped).entryList({"*.prm"}, QDir::Files, QDir::Name))
    paths.push_back(std::string(kShipped) + "/" + name.toStdString());
  return paths;
}

Problem MakeRiggedModel(SceneSession& session, const ModelSelection& selection,
                        const ModelCard& card, const std::string& path,
                        std::vector<std::string>& warnings) {
  const Problem wrong = CheckSelection(session, selection, card, path);
  if (wrong) return wrong;
  std::string error;
  const std::unique_ptr<Scene> selected = session.Copy(error);
  if (!selected) return {"", error, "", {}};
  Selecting(*selected, selection).run(warnings);
  Scene model;
  model.SetFrameRate(selected->GetFrameRate());
  model.SetRange(selected->GetRangeStart(), selected->GetRangeEnd());
  model.GetRigs() = selected->GetRigs();
  // Into an empty scene, which takes no raw part along that nobody uses.
  headless::HeadlessAdaptor adaptor(model);
  std::vector<headless::HeadlessNode*> roots;
  error = adaptor.Merge(*selected, nullptr, roots);
  if (!error.empty()) return {"", error, "", {}};
  for (std::string& text : adaptor.TakeWarnings()) warnings.push_back(std::move(text));
  std::string bytes;
  headless::WriteResult written =
      headless::GltfWriter::WriteMemory(model, headless::GltfForm::kBinary, bytes);
  if (!written) return {"", written.error, "", {}};
  if (!PutCard(card, bytes)) return {path, "the model could not be put together", "", {}};
  if (!util::writeFile(path, bytes, &error)) return {"", error, "", {}};
  return {};
}

namespace {

/// A model on its way into a scene: its rigs get free names, and what tells of them follows.
class Arrival {
 public:
  Arrival(SceneSession& session, Scene& model) : m_session(session), m_model(model) {}

  Problem ReadRecords();
  void Rename();
  /// Adds the rigs, whose nodes are there by now.
  Problem AddRigs(AddedModel& result);
  Problem TakeGround(const std::string& ground);

 private:
  std::string FreeRigName(const std::string& wish) const;

  SceneSession& m_session;
  Scene& m_model;
  std::vector<util::xml::Tag> m_records;
  std::map<std::string, std::string> m_rigs;  ///< new names by the old ones
  std::vector<rws::core::Instance*> m_added;
};

Problem Arrival::ReadRecords() {
  for (const auto& rig : m_model.GetRigs()) {
    std::string problem = rig.problem;
    util::xml::Tag tag("");
    if (problem.empty()) tag.loadText(rig.record, &problem);
    if (problem.empty() && tag.attribute(record::kName) != rig.name)
      problem = "its record is that of \"" + tag.attribute(record::kName) + "\"";
    if (!problem.empty())
      return {
          "the rig " + rig.name, "its record is damaged: " + problem, "make the model anew", {}};
    m_records.push_back(std::move(tag));
    m_rigs.emplace(rig.name, std::string());
  }
  return {};
}

std::string Arrival::FreeRigName(const std::string& wish) const {
  const auto isFree = [this](const std::string& name) {
    if (m_session.GetCore().UniqueName(name) != name) return false;
    return std::none_of(m_rigs.begin(), m_rigs.end(), [&name](const auto& entry) {
      return entry.second == name || entry.first == name;
    });
  };
  std::string name = m_session.GetCore().UniqueName(wish);
  for (int i = 2; name != wish && !isFree(name); ++i) name = wish + "_" + std::to_string(i);
  return name;
}

void Arrival::Rename() {
  for (auto& [old, name] : m_rigs) name = FreeRigName(old);
  std::map<const SceneNode*, std::string> wishes;
  for (SceneNode* node : m_model.GetNodes()) {
    if (node->GetTag().empty()) continue;
    const auto rig = m_rigs.find(RigOfTag(node->GetTag()));
    if (rig == m_rigs.end()) {
      node->SetTag("");  // of a rig that the file does not have
      continue;
    }
    node->SetTag(rig->second + node->GetTag().substr(rig->first.size()));
    if (node->GetName().rfind(rig->first + "_", 0) == 0)
      wishes[node] = rig->second + node->GetName().substr(rig->first.size());
  }
  const auto names = TakeFreeNames(m_model, m_session.GetScene(), [&wishes](const SceneNode& node) {
    const auto wish = wishes.find(&node);
    return wish == wishes.end() ? node.GetName() : wish->second;
  });
  for (util::xml::Tag& tag : m_records) {
    const std::string old = tag.attribute(record::kName);
    tag.setAttribute(record::kName, m_rigs.at(old));
    util::xml::Element* info = tag.findChild(record::kNodeInfo);
    if (!info) continue;
    for (util::xml::Element* node : info->children) {
      const std::string handle = node->attribute(record::kHandle);
      if (RigOfTag(handle) == old)
        node->setAttribute(record::kHandle, m_rigs.at(old) + handle.substr(old.size()));
      const auto parent = names.find(node->attribute(record::kParent));
      if (parent != names.end()) node->setAttribute(record::kParent, parent->second);
    }
  }
}

Problem Arrival::AddRigs(AddedModel& result) {
  for (const util::xml::Tag& tag : m_records) {
    std::string problem;
    rws::core::Instance* const rig = m_session.GetCore().AddFromRecord(tag, problem);
    if (!rig)
      return {"the rig " + tag.attribute(record::kName),
              problem,
              "a model needs the kinds of rigs that it was made of",
              {}};
    m_added.push_back(rig);
    result.rigs.push_back(rig->GetInstanceName());
  }
  return {};
}

Problem Arrival::TakeGround(const std::string& ground) {
  if (ground.empty()) return {};
  headless::HeadlessNode* const node = m_session.GetAdaptor().FindSceneNode(ground);
  if (!node) return {ground, "there is no node of this name", "", {}};
  for (rws::core::Instance* rig : m_added) {
    const auto report = GroundOf(*rig);
    if (!report) continue;
    for (rws::core::CoreNode* own : rig->GetNodes())
      if (own->GetName() == report->declaredBy || own->GetSceneName() == report->declaredBy)
        own->SetParent(node);
  }
  return {};
}

Problem WhyNot(SceneSession& session, const Scene& model, const ModelPlacing& placing) {
  if (session.GetCore().IsRecording() || session.GetCore().IsResimulating())
    return {"", "no model can be added during a take", "stop it first", {}};
  if (HasTake(model) && !(placing.translation == Vector()))
    return {"", "the model holds a take, which can't be moved", "add it without a translation", {}};
  return {};
}

void MoveTop(SceneNode& node, const Vector& by) {
  rws::adaptor::Trs pose = node.GetPose();
  pose.translation += by;
  node.SetPose(pose);
  const headless::Channel* old = node.GetChannel(headless::ChannelPath::kTranslation);
  if (!old) return;
  std::vector<double> values = old->GetValues();
  // Of three values of a curved key the middle one is a place, the others are speeds.
  const bool curved = old->GetMode() == headless::Interpolation::kCubicSpline;
  for (std::size_t i = curved ? 3 : 0; i + 3 <= values.size(); i += curved ? 9 : 3) {
    values[i] += by.x;
    values[i + 1] += by.y;
    values[i + 2] += by.z;
  }
  headless::Channel moved(headless::ChannelPath::kTranslation, old->GetMode());
  if (moved.SetKeys(old->GetTimes(), std::move(values))) node.SetChannel(std::move(moved));
}

}  // namespace

AddedModel AddRiggedModel(SceneSession& session, const std::string& path,
                          const ModelPlacing& placing) {
  AddedModel result;
  OpenModel model = ReadModel(path);
  result.problem = model.problem ? model.problem : WhyNot(session, *model.scene, placing);
  if (result.problem) return result;
  Arrival arrival(session, *model.scene);
  result.problem = arrival.ReadRecords();
  if (result.problem) return result;
  arrival.Rename();
  for (const auto& root : model.scene->GetRoots()) MoveTop(*root, placing.translation);

  UndoBlock block(session.GetAdaptor(), "Add " + model.card.title);
  std::vector<headless::HeadlessNode*> roots;
  const std::string error = session.GetAdaptor().Merge(*model.scene, nullptr, roots);
  if (!error.empty()) result.problem = {path, error, "", {}};
  if (!result.problem) result.problem = arrival.AddRigs(result);
  if (!result.problem) result.problem = arrival.TakeGround(placing.ground);
  if (result.problem) {
    result.rigs.clear();
    return result;
  }
  block.Keep();
  for (headless::HeadlessNode* root : roots) result.nodes.push_back(root->GetSceneName());
  return result;
}

}  // namespace orv::app
