#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "adaptor/headless/GltfAssembly.h"
#include "adaptor/headless/GltfDocument.h"

namespace orv::rws::adaptor::headless {

namespace {

constexpr const char* kPathNames[3] = {"translation", "rotation", "scale"};
constexpr const char* kModeNames[3] = {"LINEAR", "STEP", "CUBICSPLINE"};
constexpr int kRecordVersion = 1;

bool sameBits(const std::vector<double>& a, const std::vector<double>& b) {
  return a.size() == b.size() &&
         (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0);
}

bool sameBits(const Channel* a, const Channel* b) {
  if (a == b) return true;
  return a != nullptr && b != nullptr && a->mode() == b->mode() &&
         sameBits(a->times(), b->times()) && sameBits(a->values(), b->values());
}

bool isTarget(const Json& channel, std::size_t node, const char* path) {
  const Json* target = member(channel, "target");
  if (target == nullptr) return false;
  const Json* targetNode = member(*target, "node");
  const Json* targetPath = member(*target, "path");
  return targetNode != nullptr && targetPath != nullptr && *targetNode == node &&
         *targetPath == path;
}

}  // namespace

bool GltfWriter::Assembly::channelChanged(const SceneNode& node, ChannelPath path) const {
  const auto slot = static_cast<std::size_t>(path);
  const SceneNode::Source* source = sourceOf(node);
  const Channel* before = source == nullptr ? nullptr : source->animation.channels[slot].get();
  return !sameBits(node.m_channels[slot].get(), before);
}

void GltfWriter::Assembly::writeKeys() {
  for (const SceneNode* node : m_nodes)
    for (const ChannelPath path :
         {ChannelPath::kTranslation, ChannelPath::kRotation, ChannelPath::kScale})
      if (channelChanged(*node, path)) writeChannel(*node, path, node->channel(path));
  if (m_keysChanged) dropEmptyClips();
}

/// glTF allows no clip without channels.
void GltfWriter::Assembly::dropEmptyClips() {
  Json kept = Json::array();
  for (Json& animation : list("animations")) {
    const Json* channels = member(animation, "channels");
    if (channels == nullptr || channels->empty()) continue;
    dropUnusedSamplers(animation);
    kept.push_back(std::move(animation));
  }
  list("animations") = std::move(kept);
}

/// The clip that keys go to, made where there is none.
Json& GltfWriter::Assembly::clip() {
  Json& animations = list("animations");
  const int index = m_scene.evaluatedClip();
  if (index < 0 && animations.empty())
    animations.push_back(
        Json{{"name", "Rigwright"}, {"channels", Json::array()}, {"samplers", Json::array()}});
  Json& result = animations[static_cast<std::size_t>(std::max(index, 0))];
  for (const char* part : {"channels", "samplers"})
    if (member(result, part) == nullptr) result[part] = Json::array();
  return result;
}

void GltfWriter::Assembly::writeChannel(const SceneNode& node, ChannelPath path,
                                        const Channel* channel) {
  m_keysChanged = true;
  const char* name = kPathNames[static_cast<std::size_t>(path)];
  const std::size_t index = m_indices.at(&node);
  Json& animation = clip();
  Json& channels = animation["channels"];
  const auto first = std::find_if(channels.begin(), channels.end(),
                                  [&](const Json& json) { return isTarget(json, index, name); });
  if (channel == nullptr) {
    Json kept = Json::array();
    for (Json& json : channels)
      if (!isTarget(json, index, name)) kept.push_back(std::move(json));
    channels = std::move(kept);
    return;
  }
  const std::size_t sampler = addSampler(node, *channel);
  if (first != channels.end())
    (*first)["sampler"] = sampler;
  else
    channels.push_back(Json{{"sampler", sampler}, {"target", {{"node", index}, {"path", name}}}});
}

std::size_t GltfWriter::Assembly::addSampler(const SceneNode& node, const Channel& channel) {
  const FloatKeys keys = toFloatKeys(channel);
  const auto finite = [](float v) { return std::isfinite(v); };
  if (!std::all_of(keys.times.begin(), keys.times.end(), finite) ||
      !std::all_of(keys.values.begin(), keys.values.end(), finite))
    throw GltfError("node \"" + node.name() + '"', "has a key that no glTF file can hold");
  auto time = m_timeAccessors.find(keys.times);
  if (time == m_timeAccessors.end())
    time = m_timeAccessors.emplace(keys.times, addAccessor(keys.times, "SCALAR", 1, 0, true)).first;
  const bool rotation = channel.path() == ChannelPath::kRotation;
  const std::size_t output = addAccessor(keys.values, rotation ? "VEC4" : "VEC3",
                                         componentCount(channel.path()), 0, false);
  Json& samplers = clip()["samplers"];
  samplers.push_back(Json{{"input", time->second},
                          {"interpolation", kModeNames[static_cast<int>(channel.mode())]},
                          {"output", output}});
  return samplers.size() - 1;
}

/// Looks whether nodes, keys or roots differ from what was read.
void GltfWriter::Assembly::noteChanges() {
  if (m_document == nullptr) return;
  const Json& before = m_document->json();
  const auto differs = [&](const char* name) {
    const Json empty = Json::array();
    const Json* old = member(before, name);
    const Json* now = member(m_json, name);
    return (old == nullptr ? empty : *old) != (now == nullptr ? empty : *now);
  };
  m_touched = differs("nodes") || differs("animations");
  if (m_touched || m_document->sceneIndex < 0) return;
  Json roots = Json::array();
  for (const auto& root : m_scene.roots()) roots.push_back(m_indices.at(root.get()));
  const Json& scene = before["scenes"][static_cast<std::size_t>(m_document->sceneIndex)];
  const Json* old = member(scene, "nodes");
  m_touched = (old == nullptr ? Json::array() : *old) != roots;
}

bool GltfWriter::Assembly::somethingChanged() const {
  return m_document == nullptr || m_scene.m_hadRecord || !m_scene.m_rigs.empty() ||
         m_scene.m_frameRate != 25.0 || m_scene.m_rangeStart != m_scene.m_sourceRange[0] ||
         m_scene.m_rangeEnd != m_scene.m_sourceRange[1] || m_touched;
}

Json GltfWriter::Assembly::rigJson(const RigRecord& rig) const {
  if (rig.damaged()) return Json::parse(rig.raw);
  Json json{{"kind", rig.kind}, {"name", rig.name}, {"record", rig.record}};
  if (!rig.others.empty()) json.update(Json::parse(rig.others));
  return json;
}

/// Frame rate, range, rigs and exact keys in the extras of the shown scene. A scene of others that
/// nobody changed gets none.
void GltfWriter::Assembly::writeRecord() {
  if (!somethingChanged()) return;
  const int shown = m_document == nullptr ? 0 : std::max(m_document->sceneIndex, 0);
  Json& record = extrasObject(list("scenes")[static_cast<std::size_t>(shown)])[kOwnKey];
  if (!record.is_object()) {
    Json damaged = std::move(record);
    record = Json::object();
    if (!damaged.is_null()) record["damaged"] = std::move(damaged);
  }
  record["version"] = kRecordVersion;
  record["frameRate"] = m_scene.m_frameRate;
  record["range"] = Json::array({m_scene.m_rangeStart, m_scene.m_rangeEnd});
  Json rigs = Json::array();
  for (const RigRecord& rig : m_scene.m_rigs) rigs.push_back(rigJson(rig));
  if (rigs.empty())
    record.erase("rigs");
  else
    record["rigs"] = std::move(rigs);
  Json exact = exactJson();
  if (exact.is_null())
    record.erase("exact");
  else
    list("scenes")[static_cast<std::size_t>(shown)]["extras"][kOwnKey]["exact"] = std::move(exact);
}

/// The doubles behind the float keys that we write, and behind the poses of nodes of ours.
Json GltfWriter::Assembly::exactJson() {
  std::vector<double> numbers;
  Json nodes = Json::array();
  for (const SceneNode* node : m_nodes) appendExact(*node, numbers, nodes);
  if (nodes.empty()) return nullptr;
  std::string bytes(numbers.size() * sizeof(double), '\0');
  std::memcpy(bytes.data(), numbers.data(), bytes.size());
  return Json{{"bufferView", addView(std::move(bytes), 0)}, {"nodes", std::move(nodes)}};
}

void GltfWriter::Assembly::appendExact(const SceneNode& node, std::vector<double>& numbers,
                                       Json& nodes) {
  const SceneNode::Source* source = sourceOf(node);
  const std::size_t index = m_indices.at(&node);
  const Json* name = member(list("nodes")[index], "name");
  Json json{
      {"node", index}, {"name", name == nullptr ? Json("") : *name}, {"pose", numbers.size()}};
  std::vector<double> own;
  const auto& [t, r, s] = node.m_pose;
  own.insert(own.end(), {t.x, t.y, t.z, r.x, r.y, r.z, r.w, s.x, s.y, s.z});
  bool wanted = !node.m_tag.empty();
  for (std::size_t i = 0; i < 3; ++i) {
    const Channel* channel = node.m_channels[i].get();
    if (channel == nullptr) continue;
    const bool ours = channelChanged(node, static_cast<ChannelPath>(i)) ||
                      (source != nullptr && source->exact[i]);
    if (!ours || fitsFloats(*channel, toFloatKeys(*channel))) continue;
    wanted = true;
    json[kPathNames[i]] = Json{{"at", numbers.size() + own.size()}, {"count", channel->size()}};
    own.insert(own.end(), channel->times().begin(), channel->times().end());
    own.insert(own.end(), channel->values().begin(), channel->values().end());
  }
  if (!wanted) return;
  numbers.insert(numbers.end(), own.begin(), own.end());
  nodes.push_back(std::move(json));
}

}  // namespace orv::rws::adaptor::headless
