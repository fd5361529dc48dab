#include "adaptor/headless/GltfReader.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <new>
#include <set>
#include <utility>

#include "adaptor/headless/ForeignFile.h"
#include "adaptor/headless/FrameRate.h"
#include "adaptor/headless/FrameRateGuess.h"
#include "adaptor/headless/GltfAccessor.h"
#include "adaptor/headless/GltfDocument.h"
#include "adaptor/headless/GltfJson.h"
#include "adaptor/headless/GltfKeys.h"
#include "adaptor/headless/GltfMesh.h"
#include "adaptor/headless/GltfUri.h"
#include "util/NumberText.h"

namespace orv::rws::adaptor::headless {

namespace {

using util::Matrix;
using util::Quat;
using util::Vector3;

constexpr double kDegreesPerRadian = 57.295779513082323;
/// Nodes below nodes that are accepted: a pose is worked out from the root down.
constexpr std::size_t kDeepestNode = 1000;
/// A rotation farther from unit length than this is brought back to it.
constexpr double kUnitTolerance = 1e-5;
/// Near plane that stands for one that glTF can't tell (m).
constexpr double kLeastClip = 1e-4;
constexpr const char* kPathNames[3] = {"translation", "rotation", "scale"};

/// Extensions that change what the parts of a file that we read mean, and that we know.
const std::set<std::string> kKnownRequired = {
    "KHR_mesh_quantization", "KHR_node_visibility", "KHR_lights_punctual", "KHR_texture_transform",
    "KHR_texture_basisu",    "KHR_materials_unlit", "EXT_texture_webp"};

std::string quoted(const std::string& text) {
  return '"' + text + '"';
}

Vector3<double> vectorOf(const double* v) {
  return {v[0], v[1], v[2]};
}

void toNumbers(const Trs& pose, double* v) {
  const double numbers[10] = {
      pose.translation.x, pose.translation.y, pose.translation.z, pose.rotation.x, pose.rotation.y,
      pose.rotation.z,    pose.rotation.w,    pose.scale.x,       pose.scale.y,    pose.scale.z};
  std::copy(numbers, numbers + 10, v);
}

bool sameAsFloats(const Trs& a, const Trs& b) {
  double x[10];
  double y[10];
  toNumbers(a, x);
  toNumbers(b, y);
  return std::equal(x, x + 10, y, [](double p, double q) {
    return static_cast<float>(p) == static_cast<float>(q);
  });
}

}  // namespace

/// Turns a loaded document into a scene.
class GltfReader::Builder {
 public:
  Builder(std::shared_ptr<GltfDocument> document, const ReadOptions& options)
      : m_document(std::move(document)), m_json(m_document->json()), m_options(options) {}

  std::unique_ptr<Scene> run() {
    m_scene = std::make_unique<Scene>();
    m_scene->m_document = m_document;
    readTree();
    chooseScene();
    nameNodes();
    buildNodes();
    chooseClip();
    readChannels();
    readRecord();
    if (!m_rateTold) guessRate();
    warnOfExtensions();
    for (const auto& node : m_nodes)
      if (node != nullptr) keepSource(*node);
    return std::move(m_scene);
  }

  std::vector<std::string> warnings;

 private:
  const Json& list(const char* name) const { return listAt(m_json, name, Place("")); }

  /// Parents of all nodes; refuses second parents and circles.
  void readTree() {
    const Json& nodes = list("nodes");
    m_parents.assign(nodes.size(), -1);
    m_children.resize(nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      const Place place("nodes", i);
      if (!nodes[i].is_object()) place.fail("is no object");
      const Json& children = listAt(nodes[i], "children", place);
      for (std::size_t k = 0; k < children.size(); ++k) {
        const Place here = place.in("children", k);
        const std::size_t child = wholeNumber(children[k], here);
        if (child >= nodes.size())
          here.fail("refers to node " + std::to_string(child) + ", but there are only " +
                    std::to_string(nodes.size()));
        if (m_parents[child] >= 0)
          here.fail("node " + std::to_string(child) + " already has node " +
                    std::to_string(m_parents[child]) + " as its parent");
        m_parents[child] = static_cast<int>(i);
        m_children[i].push_back(child);
      }
    }
    std::vector<std::size_t> depth(nodes.size(), 0);
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < nodes.size(); ++i)
      if (m_parents[i] < 0) open.push_back(i);
    for (const std::size_t root : open) depth[root] = 1;
    while (!open.empty()) {
      const std::size_t node = open.back();
      open.pop_back();
      if (depth[node] > kDeepestNode)
        Place("nodes", node).fail("lies deeper than " + std::to_string(kDeepestNode) + " levels");
      for (const std::size_t child : m_children[node]) {
        depth[child] = depth[node] + 1;
        open.push_back(child);
      }
    }
    for (std::size_t i = 0; i < nodes.size(); ++i)
      if (depth[i] == 0)
        Place("nodes", i).fail("is in a circle of nodes that are each other's children");
  }

  void chooseScene() {
    const Json& scenes = list("scenes");
    for (std::size_t s = 0; s < scenes.size(); ++s) checkScene(scenes[s], Place("scenes", s));
    m_document->loaded.assign(m_parents.size(), false);
    int shown = indexAt(m_json, "scene", scenes.size(), Place(""));
    if (shown < 0 && !scenes.empty()) shown = 0;
    m_document->sceneIndex = shown;
    if (shown >= 0) {
      const auto index = static_cast<std::size_t>(shown);
      for (const Json& root : listAt(scenes[index], "nodes", Place("scenes", index)))
        m_roots.push_back(root.get<std::size_t>());
    } else {
      for (std::size_t i = 0; i < m_parents.size(); ++i)
        if (m_parents[i] < 0) m_roots.push_back(i);
    }
    std::vector<std::size_t> open = m_roots;
    while (!open.empty()) {
      const std::size_t node = open.back();
      open.pop_back();
      m_document->loaded[node] = true;
      open.insert(open.end(), m_children[node].begin(), m_children[node].end());
    }
  }

  void checkScene(const Json& scene, const Place& place) const {
    if (!scene.is_object()) place.fail("is no object");
    const Json& roots = listAt(scene, "nodes", place);
    std::set<std::size_t> seen;
    for (std::size_t i = 0; i < roots.size(); ++i) {
      const Place here = place.in("nodes", i);
      const std::size_t root = wholeNumber(roots[i], here);
      if (root >= m_parents.size())
        here.fail("refers to node " + std::to_string(root) + ", but there are only " +
                  std::to_string(m_parents.size()));
      if (m_parents[root] >= 0)
        here.fail("node " + std::to_string(root) + " is a child of node " +
                  std::to_string(m_parents[root]));
      if (!seen.insert(root).second) here.fail("names node " + std::to_string(root) + " twice");
    }
  }

  /// The first node of a name keeps it; further ones get a number behind it.
  void nameNodes() {
    const Json& nodes = list("nodes");
    m_names.resize(nodes.size());
    std::set<std::string> taken;
    std::vector<std::size_t> others;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      if (!m_document->loaded[i]) continue;
      m_names[i] = textAt(nodes[i], "name", Place("nodes", i));
      if (m_names[i].empty() || !taken.insert(m_names[i]).second) others.push_back(i);
    }
    std::map<std::string, std::size_t> next;
    std::size_t twins = 0;
    std::string told;
    for (const std::size_t i : others) {
      const std::string base = m_names[i].empty() ? "node_" + std::to_string(i) : m_names[i];
      std::string name = base;
      std::size_t& number = next[base];
      for (number = std::max<std::size_t>(number, m_names[i].empty() ? 1 : 2);
           !taken.insert(name = number > 1 ? base + "_" + std::to_string(number) : base).second;)
        ++number;
      if (!m_names[i].empty() && ++twins <= 3)
        told += (told.empty() ? "\"" : ", \"") + m_names[i] + "\" is \"" + name + '"';
      m_names[i] = name;
    }
    if (twins == 0) return;
    if (twins > 3) told += ", ...";
    warnings.push_back("nodes: " + std::to_string(twins) + (twins == 1 ? " has" : " have") +
                       " a name that another has already; here " + told);
  }

  void buildNodes() {
    m_nodes.assign(m_parents.size(), nullptr);
    m_meshes.resize(list("meshes").size());
    // Parents come before their children in this order, siblings in the file's.
    std::vector<std::size_t> order = m_roots;
    for (std::size_t i = 0; i < order.size(); ++i)
      order.insert(order.end(), m_children[order[i]].begin(), m_children[order[i]].end());
    for (const std::size_t i : order) {
      SceneNode* parent =
          m_parents[i] < 0 ? nullptr : m_nodes[static_cast<std::size_t>(m_parents[i])];
      m_nodes[i] = &m_scene->addNode(m_names[i], parent);
      m_sources[m_nodes[i]] = std::make_unique<SceneNode::Source>();
      readNode(i, *m_nodes[i]);
    }
  }

  void readNode(std::size_t index, SceneNode& node) {
    const Place place("nodes", index);
    const Json& json = list("nodes")[index];
    SceneNode::Source& source = *m_sources[&node];
    source.document = m_document;
    source.index = static_cast<int>(index);
    source.mesh = -1;
    readPose(json, place, node, source);
    readLens(json, place, node);
    readMesh(json, place, node, source);
    const Json* extras = member(json, "extras");
    const Json* tag = extras == nullptr ? nullptr : member(*extras, kTagKey);
    if (tag != nullptr && tag->is_string()) node.setTag(tag->get<std::string>());
    if (tag != nullptr && !tag->is_string())
      warn(place.in("extras").in(kTagKey), "is no text and does not count");
    const Json* home = extras == nullptr ? nullptr : member(*extras, kHomeKey);
    if (home != nullptr && home->is_string()) node.setHome(home->get<std::string>());
    const Json* hub = extras == nullptr ? nullptr : member(*extras, kHubKey);
    node.setHub(hub != nullptr && *hub == true);
    const Json* extensions = objectAt(json, "extensions", place);
    const Json* visibility =
        extensions == nullptr ? nullptr : member(*extensions, "KHR_node_visibility");
    const Json* visible = visibility == nullptr ? nullptr : member(*visibility, "visible");
    node.m_visible = visible == nullptr || *visible != false;
  }

  void readPose(const Json& json, const Place& place, SceneNode& node, SceneNode::Source& source) {
    double v[16];
    if (numbersAt(json, "matrix", 16, v, place)) {
      if (v[3] != 0.0 || v[7] != 0.0 || v[11] != 0.0 || v[15] != 1.0)
        place.in("matrix").fail("is not affine: its last row must be 0 0 0 1");
      Matrix<double> matrix;
      std::copy(v, v + 16, matrix.data());
      node.m_pose = decompose(matrix);
      source.matrix = matrix;
      return;
    }
    if (numbersAt(json, "translation", 3, v, place)) node.m_pose.translation = vectorOf(v);
    if (numbersAt(json, "scale", 3, v, place)) node.m_pose.scale = vectorOf(v);
    if (!numbersAt(json, "rotation", 4, v, place)) return;
    Quat<double> rotation(v[0], v[1], v[2], v[3]);
    const double length = rotation.length();
    if (!(length > 0.0) || !std::isfinite(length))
      place.in("rotation").fail("is no unit quaternion");
    if (std::abs(length - 1.0) > kUnitTolerance) rotation.normalize();
    node.m_pose.rotation = rotation;
  }

  void readLens(const Json& json, const Place& place, SceneNode& node) {
    const Json& cameras = list("cameras");
    const int index = indexAt(json, "camera", cameras.size(), place);
    if (index < 0) return;
    const Place here("cameras", static_cast<std::size_t>(index));
    const Json& camera = cameras[static_cast<std::size_t>(index)];
    if (!camera.is_object()) here.fail("is no object");
    if (textAt(camera, "type", here) != "perspective") return;
    const Json* perspective = objectAt(camera, "perspective", here);
    const Place inner = here.in("perspective");
    if (perspective == nullptr) inner.fail("is missing");
    Lens lens;
    const double angle = finiteAt(*perspective, "yfov", 0.0, inner);
    if (!(angle > 0.0)) inner.in("yfov").fail("must be above 0");
    lens.fieldOfView = angle * kDegreesPerRadian;
    lens.nearClip = finiteAt(*perspective, "znear", lens.nearClip, inner);
    lens.farClip = finiteAt(*perspective, "zfar", 0.0, inner);
    lens.aspectRatio = std::max(0.0, numberOr(*perspective, "aspectRatio", 0.0));
    if (const Json* own = ownExtras(camera)) {
      // Degrees do not survive the way through radians to the last bit.
      const double degrees = numberOr(*own, "fieldOfView", lens.fieldOfView);
      if (degrees / kDegreesPerRadian == angle) lens.fieldOfView = degrees;
      // glTF knows neither a near plane at the eye nor a far one in front of it.
      const double nearClip = numberOr(*own, "nearClip", lens.nearClip);
      if (nearClip < lens.nearClip && lens.nearClip == kLeastClip) lens.nearClip = nearClip;
      lens.focusDistance = numberOr(*own, "focusDistance", lens.focusDistance);
    }
    node.m_lens = lens;
  }

  static double numberOr(const Json& object, const char* key, double fallback) {
    const Json* value = member(object, key);
    if (value == nullptr || !value->is_number()) return fallback;
    const double number = value->get<double>();
    return std::isfinite(number) ? number : fallback;
  }

  void readMesh(const Json& json, const Place& place, SceneNode& node, SceneNode::Source& source) {
    const Json* own = ownExtras(json);
    const Json* empty = own == nullptr ? nullptr : member(*own, "emptyMesh");
    source.hasTriangles = empty != nullptr && *empty == true;
    const int index = indexAt(json, "mesh", m_meshes.size(), place);
    if (index < 0) return;
    std::unique_ptr<MeshContent>& content = m_meshes[static_cast<std::size_t>(index)];
    if (!content) {
      if (!list("meshes")[static_cast<std::size_t>(index)].is_object())
        Place("meshes", static_cast<std::size_t>(index)).fail("is no object");
      content = std::make_unique<MeshContent>(checkMesh(*m_document, index));
      warnings.insert(warnings.end(), content->warnings.begin(), content->warnings.end());
    }
    if (content->hasTriangles) {
      source.mesh = index;
      source.hasTriangles = true;
      node.m_colour = content->colour;
    }
    node.m_curve = content->curve;
  }

  void chooseClip() {
    const Json& clips = list("animations");
    for (std::size_t i = 0; i < clips.size(); ++i) {
      if (!clips[i].is_object()) Place("animations", i).fail("is no object");
      m_scene->m_clips.push_back(textAt(clips[i], "name", Place("animations", i)));
    }
    int& chosen = m_scene->m_evaluatedClip;
    if (m_options.clip.empty()) {
      chosen = clips.empty() ? -1 : 0;
      return;
    }
    const auto& names = m_scene->m_clips;
    const auto at = std::find(names.begin(), names.end(), m_options.clip);
    chosen = static_cast<int>(at - names.begin());
    if (at != names.end()) return;
    if (!util::parseNumber(m_options.clip, chosen) || chosen < 0 ||
        static_cast<std::size_t>(chosen) >= names.size())
      throw GltfError("animations", "there is no clip " + quoted(m_options.clip) +
                                        " (clips are chosen by name or by number from 0)");
  }

  void readChannels() {
    if (m_scene->m_evaluatedClip < 0) return;
    const auto clip = static_cast<std::size_t>(m_scene->m_evaluatedClip);
    const Place place("animations", clip);
    const Json& json = list("animations")[clip];
    const Json& channels = listAt(json, "channels", place);
    const Json& samplers = listAt(json, "samplers", place);
    for (std::size_t i = 0; i < channels.size(); ++i)
      readChannel(channels[i], samplers, place.in("channels", i), place);
    // The exact keys may replace what is held here.
    m_decoded.clear();
    m_firstOfTimes.clear();
  }

  void readChannel(const Json& json, const Json& samplers, const Place& place, const Place& clip) {
    const Json* target = objectAt(json, "target", place);
    if (target == nullptr) place.in("target").fail("is missing");
    const std::string pathName = textAt(*target, "path", place.in("target"));
    const int index = indexAt(*target, "node", m_nodes.size(), place.in("target"));
    const int sampler = indexAt(json, "sampler", samplers.size(), place);
    if (sampler < 0) place.in("sampler").fail("is missing");
    const auto name = std::find(kPathNames, kPathNames + 3, pathName);
    if (index < 0 || name == kPathNames + 3) return;
    SceneNode* node = m_nodes[static_cast<std::size_t>(index)];
    if (node == nullptr) return;
    const auto path = static_cast<ChannelPath>(name - kPathNames);
    std::shared_ptr<Channel>& slot = node->m_channels[static_cast<std::size_t>(path)];
    if (slot) {
      warn(place, "keys " + pathName + " of " + quoted(node->name()) +
                      " a second time; the first keys count");
      return;
    }
    slot = decodeSampler(samplers, static_cast<std::size_t>(sampler), path, clip);
  }

  std::shared_ptr<Channel> decodeSampler(const Json& samplers, std::size_t index, ChannelPath path,
                                         const Place& clip) {
    std::shared_ptr<Channel>& channel = m_decoded[{index, path}];
    if (channel) return channel;
    const Place place = clip.in("samplers", index);
    const Json& json = samplers[index];
    if (!json.is_object()) place.fail("is no object");
    const std::size_t accessors = list("accessors").size();
    const int input = indexAt(json, "input", accessors, place);
    const int output = indexAt(json, "output", accessors, place);
    if (input < 0 || output < 0) place.fail("input or output is missing");
    Interpolation mode = Interpolation::kLinear;
    const std::string modeName = textAt(json, "interpolation", place);
    if (modeName == "STEP")
      mode = Interpolation::kStep;
    else if (modeName == "CUBICSPLINE")
      mode = Interpolation::kCubicSpline;
    else if (!modeName.empty() && modeName != "LINEAR")
      place.in("interpolation").fail(quoted(modeName) + " is no interpolation");

    auto result = std::make_shared<Channel>(path, mode);
    const Place inputPlace("accessors", static_cast<std::size_t>(input));
    const Place outputPlace("accessors", static_cast<std::size_t>(output));
    const AccessorView times = m_document->accessor(static_cast<std::size_t>(input));
    const AccessorView values = m_document->accessor(static_cast<std::size_t>(output));
    if (times.components != 1 || times.type != ComponentType::kFloat)
      inputPlace.fail("is used as key times, but is not of type SCALAR with float components");
    if (values.components != componentCount(path) || values.matrix ||
        (values.type != ComponentType::kFloat &&
         (path != ChannelPath::kRotation || !values.normalized)))
      outputPlace.fail("is used as " + std::string(kPathNames[static_cast<int>(path)]) +
                       " keys, but is not of their type");
    const std::size_t perKey = mode == Interpolation::kCubicSpline ? 3 : 1;
    if (values.count != times.count * perKey)
      outputPlace.fail("has " + std::to_string(values.count) + " elements for " +
                       std::to_string(times.count) + " keys");
    if (times.compressed || values.compressed) {
      warn(place, "is compressed; its keys stay in the file but do not play here");
      return nullptr;
    }
    m_document->spend(times.count + values.count * static_cast<std::size_t>(values.components),
                      place);
    std::vector<double> keyTimes = times.numbers();
    checkTimes(keyTimes, inputPlace);
    if (!result->setKeys(std::move(keyTimes), values.numbers()))
      outputPlace.fail("has a key whose value is not finite");
    if (const Channel*& first = m_firstOfTimes[input])
      result->shareTimes(*first);
    else
      first = result.get();
    return channel = std::move(result);
  }

  static void checkTimes(const std::vector<double>& times, const Place& place) {
    for (std::size_t i = 0; i < times.size(); ++i) {
      if (!std::isfinite(times[i])) place.fail("key time " + std::to_string(i) + " is not finite");
      if (i > 0 && !(times[i] > times[i - 1]))
        place.fail("key time " + std::to_string(i) + " is not above the one before");
    }
  }

  /// Reads what we keep in the scene's extras. Damage there costs no more than what is damaged.
  void readRecord() {
    readRange();
    if (m_document->sceneIndex < 0) return;
    const auto index = static_cast<std::size_t>(m_document->sceneIndex);
    const Place scene("scenes", index);
    const Place extras = scene.in("extras");
    const Place place = extras.in(kOwnKey);
    const Json* record = ownExtras(list("scenes")[index]);
    if (record == nullptr) return;
    m_scene->m_hadRecord = true;
    if (!record->is_object()) {
      warn(place, "is no object; it is kept, but the scene opens without rigs");
      return;
    }
    if (numberOr(*record, "version", 1.0) > 1.0)
      warn(place, "was written by a newer version; what is new in it is kept but not used");
    m_rateTold = member(*record, "frameRate") != nullptr;
    if (m_rateTold && !m_scene->setFrameRate(numberOr(*record, "frameRate", 0.0)))
      warn(place.in("frameRate"), "is no rate above 0; 25 frames per second are used");
    if (const Json* range = member(*record, "range")) {
      const bool pair = range->is_array() && range->size() == 2 && (*range)[0].is_number() &&
                        (*range)[1].is_number();
      if (!pair || !m_scene->setRange((*range)[0].get<double>(), (*range)[1].get<double>()))
        warn(place.in("range"), "is no pair of times; the keys' range is used");
    }
    readRigs(*record, place);
    if (const Json* rows = member(*record, "rows")) {
      if (rows->is_string())
        m_scene->m_rows = rows->get<std::string>();
      else
        warn(place.in("rows"), "is no text; the rigs stand without their groups");
    }
    if (const Json* exact = member(*record, "exact")) readExact(*exact, place.in("exact"));
    m_scene->m_sourceRange[0] = m_scene->m_rangeStart;
    m_scene->m_sourceRange[1] = m_scene->m_rangeEnd;
  }

  /// Other programs tell the rate by nothing but where their keys stand.
  void guessRate() {
    constexpr const char* kHowToChange = "; rigwright range --fps changes it";
    const FrameRateGuess guess = guessFrameRate(*m_scene);
    if (!guess.tells) return;
    if (guess.rates.empty()) {
      warnings.push_back(
          "the file tells no frame rate, and its keys stand on frames of no common "
          "one: 25 per second is taken" +
          std::string(kHowToChange));
      return;
    }
    m_scene->m_frameRate = guess.rates.front();
    const std::vector<double> rivals = guess.rivals();
    if (m_scene->m_frameRate == Scene::kUsualRate && rivals.empty()) return;
    std::string others;
    for (const double rate : rivals) others += (others.empty() ? "" : ", ") + frameRateText(rate);
    warnings.push_back(
        "the file tells no frame rate; its keys stand on frames of " +
        frameRateText(m_scene->m_frameRate) + " per second, which is taken" +
        (others.empty() ? "" : " as the likeliest (they stand on those of " + others + " too)") +
        kHowToChange);
  }

  void readRange() {
    double start = 0.0;
    double end = 0.0;
    if (!m_scene->keyRange(start, end) || !(end > start)) return;
    m_scene->setRange(start, end);
    m_scene->m_sourceRange[0] = start;
    m_scene->m_sourceRange[1] = end;
  }

  void readRigs(const Json& record, const Place& place) {
    const Json* rigs = member(record, "rigs");
    if (rigs == nullptr) return;
    if (!rigs->is_array()) {
      addDamaged(*rigs, place.in("rigs"), "is no list");
      return;
    }
    for (std::size_t i = 0; i < rigs->size(); ++i) readRig((*rigs)[i], place.in("rigs", i));
  }

  void readRig(const Json& json, const Place& place) {
    if (!json.is_object()) return addDamaged(json, place, "is no object");
    for (const char* key : {"kind", "name", "record"}) {
      const Json* value = member(json, key);
      if (value == nullptr) return addDamaged(json, place.in(key), "is missing");
      if (!value->is_string()) return addDamaged(json, place.in(key), "is no text");
    }
    RigRecord rig;
    Json others = Json::object();
    for (const auto& [key, value] : json.items()) {
      if (key == "kind")
        rig.kind = value.get<std::string>();
      else if (key == "name")
        rig.name = value.get<std::string>();
      else if (key == "record")
        rig.record = value.get<std::string>();
      else
        others[key] = value;
    }
    if (!others.empty()) rig.others = others.dump();
    m_scene->m_rigs.push_back(std::move(rig));
  }

  void addDamaged(const Json& json, const Place& place, const std::string& what) {
    RigRecord rig;
    const Json* name = member(json, "name");
    if (name != nullptr && name->is_string()) rig.name = name->get<std::string>();
    rig.raw = json.dump();
    rig.problem = place.text() + ": " + what;
    warn(place, what + "; this rig is not brought back, its record is kept");
    m_scene->m_rigs.push_back(std::move(rig));
  }

  /// Doubles in a buffer view, which need not lie where doubles may.
  class Numbers {
   public:
    explicit Numbers(std::string_view bytes) : m_bytes(bytes) {}
    std::size_t size() const { return m_bytes.size() / sizeof(double); }
    void check(std::size_t at, std::size_t count, const Place& place) const {
      if (at > size() || count > size() - at) place.fail("reaches behind the end of the numbers");
    }
    void read(std::size_t at, std::size_t count, double* out, const Place& place) const {
      check(at, count, place);
      if (count > 0) std::memcpy(out, m_bytes.data() + at * sizeof(double), count * sizeof(double));
    }

   private:
    std::string_view m_bytes;
  };

  /// Puts the exact doubles in place of the floats that still are their rounding.
  void readExact(const Json& exact, const Place& place) {
    try {
      const int view = indexAt(exact, "bufferView", list("bufferViews").size(), place);
      if (view < 0) place.in("bufferView").fail("is missing");
      const Numbers numbers(m_document->viewBytes(static_cast<std::size_t>(view)));
      m_document->spend(numbers.size(), place);
      const Json& nodes = listAt(exact, "nodes", place);
      for (std::size_t i = 0; i < nodes.size(); ++i)
        readExactNode(nodes[i], numbers, place.in("nodes", i));
    } catch (const GltfError& e) {
      warnings.push_back(std::string(e.what()) + "; keys are taken in single precision");
    }
  }

  void readExactNode(const Json& json, const Numbers& numbers, const Place& place) {
    if (!json.is_object()) place.fail("is no object");
    SceneNode* node = exactNode(json, place);
    if (node == nullptr) return;
    if (member(json, "pose") != nullptr) {
      double v[10];
      numbers.read(wholeAt(json, "pose", place), 10, v, place.in("pose"));
      const Trs pose{vectorOf(v), Quat<double>(v[3], v[4], v[5], v[6]), vectorOf(v + 7)};
      if (sameAsFloats(pose, node->m_pose) &&
          std::all_of(v, v + 10, [](double x) { return std::isfinite(x); }))
        node->m_pose = pose;
      else
        warnEdited(*node, "pose");
    }
    for (std::size_t i = 0; i < 3; ++i) {
      const Json* keys = objectAt(json, kPathNames[i], place);
      if (keys != nullptr)
        readExactKeys(*keys, numbers, *node, static_cast<ChannelPath>(i), place.in(kPathNames[i]));
    }
  }

  void readExactKeys(const Json& json, const Numbers& numbers, SceneNode& node, ChannelPath path,
                     const Place& place) {
    const auto slot = static_cast<std::size_t>(path);
    const Channel* rough = node.m_channels[slot].get();
    if (rough == nullptr) return warnEdited(node, kPathNames[slot]);
    const std::size_t count = wholeAt(json, "count", place);
    Channel exact(path, rough->mode());
    const auto width = static_cast<std::size_t>(exact.valuesPerKey());
    if (count > numbers.size()) place.in("count").fail("is more than there are numbers");
    const std::size_t at = wholeAt(json, "at", place);
    numbers.check(at, count * (1 + width), place);
    m_document->spend(count * (1 + width), place);
    std::vector<double> times(count);
    std::vector<double> values(count * width);
    numbers.read(at, count, times.data(), place);
    numbers.read(at + count, count * width, values.data(), place);
    if (count == 0 || !exact.setKeys(std::move(times), std::move(values)) ||
        !fitsFloats(*rough, toFloatKeys(exact)))
      return warnEdited(node, kPathNames[slot]);
    for (const std::shared_ptr<Channel>& other : node.m_channels)
      if (other) exact.shareTimes(*other);
    node.m_channels[slot] = std::make_shared<Channel>(std::move(exact));
    m_sources[&node]->exact[slot] = true;
  }

  /// The node that an entry is about: by its place, or, where nodes were moved about, by its name.
  SceneNode* exactNode(const Json& json, const Place& place) {
    const std::size_t index = wholeAt(json, "node", place);
    const std::string name = textAt(json, "name", place);
    const Json& nodes = list("nodes");
    if (index < nodes.size() && m_nodes[index] != nullptr &&
        textAt(nodes[index], "name", Place("nodes", index)) == name)
      return m_nodes[index];
    SceneNode* node = m_scene->find(name);
    if (node == nullptr)
      warnings.push_back("node " + quoted(name) + ": was removed or renamed by another program");
    return node;
  }

  void warnEdited(const SceneNode& node, const std::string& what) {
    warnings.push_back("node " + quoted(node.name()) + ": its " + what +
                       " was changed by another program; that change is taken over");
  }

  void warn(const Place& place, const std::string& what) {
    warnings.push_back(place.text() + ": " + what);
  }

  void warnOfExtensions() {
    for (const Json& name : list("extensionsRequired")) {
      if (name.is_string() && kKnownRequired.count(name.get<std::string>()) == 0)
        warnings.push_back("extensionsRequired: " + name.get<std::string>() +
                           " is not known here; what it brings stays in the file but is not seen");
    }
  }

  /// Notes how the node was read, so that a save can tell what has changed since.
  void keepSource(SceneNode& node) {
    std::unique_ptr<SceneNode::Source> source = std::move(m_sources[&node]);
    source->name = node.m_name;
    source->animation = node.animation();
    source->visible = node.m_visible;
    source->tag = node.m_tag;
    source->home = node.m_home;
    source->hub = node.m_hub;
    source->lens = node.m_lens;
    source->curve = node.m_curve;
    source->colour = node.m_colour;
    node.m_source = std::move(source);
  }

  std::shared_ptr<GltfDocument> m_document;
  const Json& m_json;
  const ReadOptions& m_options;
  std::unique_ptr<Scene> m_scene;
  std::vector<int> m_parents;
  std::vector<std::vector<std::size_t>> m_children;
  std::vector<std::size_t> m_roots;
  std::vector<std::string> m_names;
  std::vector<SceneNode*> m_nodes;  ///< by index in the file; null outside the shown scene
  std::map<const SceneNode*, std::unique_ptr<SceneNode::Source>> m_sources;
  std::vector<std::unique_ptr<MeshContent>> m_meshes;
  std::map<std::pair<std::size_t, ChannelPath>, std::shared_ptr<Channel>> m_decoded;
  bool m_rateTold = false;  ///< the file has a frame rate of ours, be it damaged
  std::map<int, const Channel*> m_firstOfTimes;  ///< the first channel of an accessor of times
};

ReadResult GltfReader::read(const std::string& path, const ReadOptions& options) {
  ReadResult result;
  std::string bytes;
  if (!readWhole(path, bytes, result.error)) return result;
  const std::size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
  return build(std::move(bytes), path, &folder, options);
}

ReadResult GltfReader::readMemory(std::string bytes, const std::string& name,
                                  const ReadOptions& options) {
  return build(std::move(bytes), name, nullptr, options);
}

ReadResult GltfReader::build(std::string bytes, const std::string& name, const std::string* folder,
                             const ReadOptions& options) {
  ReadResult result;
  const std::string foreign = foreignFile(bytes, name);
  if (!foreign.empty()) {
    result.error = name + ": " + foreign;
    return result;
  }
  try {
    auto document = std::make_shared<GltfDocument>();
    document->load(std::move(bytes), folder);
    Builder builder(std::move(document), options);
    result.scene = builder.run();
    for (const std::string& warning : builder.warnings)
      result.warnings.push_back(name + ": " + warning);
  } catch (const GltfError& e) {
    result.error = name + ": " + e.what();
  } catch (const std::bad_alloc&) {
    result.error = name + ": is too large for this machine's memory";
  } catch (const std::exception& e) {
    result.error = name + ": " + e.what();
  }
  if (!result.error.empty()) result.scene.reset();
  return result;
}

}  // namespace orv::rws::adaptor::headless
