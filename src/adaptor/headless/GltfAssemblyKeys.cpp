#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "adaptor/headless/GltfAssembly.h"
#include "adaptor/headless/GltfDocument.h"
#include "adaptor/headless/GltfMedia.h"

namespace orv::rws::adaptor::headless {

namespace {

constexpr const char* kModeNames[3] = {"LINEAR", "STEP", "CUBICSPLINE"};
constexpr int kRecordVersion = 1;
/// Translation, rotation (x, y, z, w) and scale, as they stand in memory.
constexpr std::size_t kPoseNumbers = 10;
static_assert(sizeof(Trs) == kPoseNumbers * sizeof(double), "a pose has no padding");

bool SameBits(const std::vector<double>& a, const std::vector<double>& b) {
  return a.size() == b.size() &&
         (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0);
}

bool SameBits(const Channel* a, const Channel* b) {
  if (a == b) return true;
  return a != nullptr && b != nullptr && a->GetMode() == b->GetMode() &&
         SameBits(a->GetTimes(), b->GetTimes()) && SameBits(a->GetValues(), b->GetValues());
}

/// A number for the property of the node that a channel moves; kNoTarget for none of ours.
constexpr std::size_t kNoTarget = static_cast<std::size_t>(-1);
std::size_t TargetOf(std::size_t node, std::size_t path) {
  return node * 3 + path;
}

std::size_t TargetOf(const Json& channel) {
  const Json* target = Member(channel, "target");
  if (target == nullptr) return kNoTarget;
  const Json* node = Member(*target, "node");
  const Json* path = Member(*target, "path");
  if (node == nullptr || path == nullptr || !IsIndex(*node)) return kNoTarget;
  for (std::size_t i = 0; i < 3; ++i)
    if (*path == kPathNames[i]) return TargetOf(node->get<std::size_t>(), i);
  return kNoTarget;
}

std::string_view BytesOf(const std::vector<double>& numbers) {
  return {reinterpret_cast<const char*>(numbers.data()), numbers.size() * sizeof(double)};
}

std::string_view BytesOf(const Trs& pose) {
  return {reinterpret_cast<const char*>(&pose), sizeof pose};
}

std::string_view BytesOf(const std::vector<float>& numbers) {
  return {reinterpret_cast<const char*>(numbers.data()), numbers.size() * sizeof(float)};
}

}  // namespace

bool GltfWriter::Assembly::ChannelChanged(const SceneNode& node, ChannelPath path) const {
  const auto slot = static_cast<std::size_t>(path);
  const SceneNode::Source* source = SourceOf(node);
  const Channel* before = source == nullptr ? nullptr : source->animation.channels[slot].get();
  return !SameBits(node.m_channels[slot].get(), before);
}

void GltfWriter::Assembly::WriteKeys() {
  FindChannels();
  for (const SceneNode* node : m_nodes)
    for (const ChannelPath path :
         {ChannelPath::kTranslation, ChannelPath::kRotation, ChannelPath::kScale})
      if (ChannelChanged(*node, path)) WriteChannel(*node, path, node->GetChannel(path));
  DropChannels();
  if (m_keysChanged) DropEmptyClips();
}

/// Notes where the channels of the clip that keys go to stand.
void GltfWriter::Assembly::FindChannels() {
  const Json& animations = List("animations");
  const auto index = static_cast<std::size_t>(std::max(m_scene.GetEvaluatedClip(), 0));
  const Json* channels =
      index < animations.size() ? Member(animations[index], "channels") : nullptr;
  if (channels == nullptr) return;
  for (std::size_t i = 0; i < channels->size(); ++i)
    m_channelAt.emplace(TargetOf((*channels)[i]), i);
}

/// Takes out the channels of properties that have lost their keys, all at once.
void GltfWriter::Assembly::DropChannels() {
  if (m_lostTargets.empty()) return;
  Json kept = Json::array();
  Json& channels = Clip()["channels"];
  for (Json& json : channels)
    if (m_lostTargets.count(TargetOf(json)) == 0) kept.push_back(std::move(json));
  channels = std::move(kept);
}

/// glTF allows no clip without channels.
void GltfWriter::Assembly::DropEmptyClips() {
  Json kept = Json::array();
  for (Json& animation : List("animations")) {
    const Json* channels = Member(animation, "channels");
    if (channels == nullptr || channels->empty()) continue;
    DropUnusedSamplers(animation);
    kept.push_back(std::move(animation));
  }
  List("animations") = std::move(kept);
}

/// The clip that keys go to, made where there is none.
Json& GltfWriter::Assembly::Clip() {
  Json& animations = List("animations");
  const int index = m_scene.GetEvaluatedClip();
  if (index < 0 && animations.empty())
    animations.push_back(
        Json{{"name", "Rigwright"}, {"channels", Json::array()}, {"samplers", Json::array()}});
  Json& result = animations[static_cast<std::size_t>(std::max(index, 0))];
  for (const char* part : {"channels", "samplers"})
    if (Member(result, part) == nullptr) result[part] = Json::array();
  return result;
}

void GltfWriter::Assembly::WriteChannel(const SceneNode& node, ChannelPath path,
                                        const Channel* channel) {
  m_keysChanged = true;
  const auto slot = static_cast<std::size_t>(path);
  const std::size_t index = m_indices.at(&node);
  const std::size_t target = TargetOf(index, slot);
  if (channel == nullptr) {
    m_lostTargets.insert(target);
    return;
  }
  const std::size_t sampler = AddSampler(node, *channel);
  Json& channels = Clip()["channels"];
  const auto known = m_channelAt.find(target);
  if (known != m_channelAt.end())
    channels[known->second]["sampler"] = sampler;
  else
    channels.push_back(
        Json{{"sampler", sampler}, {"target", {{"node", index}, {"path", kPathNames[slot]}}}});
}

std::size_t GltfWriter::Assembly::AddSampler(const SceneNode& node, const Channel& channel) {
  const FloatKeys keys = ToFloatKeys(channel);
  const auto finite = [](float v) { return std::isfinite(v); };
  if (!std::all_of(keys.times.begin(), keys.times.end(), finite) ||
      !std::all_of(keys.values.begin(), keys.values.end(), finite))
    throw GltfError("node \"" + node.GetName() + '"', "has a key that no glTF file can hold");
  auto time = m_timeAccessors.find(keys.times);
  if (time == m_timeAccessors.end())
    time = m_timeAccessors.emplace(keys.times, AddAccessor(keys.times, "SCALAR", 1, 0, true)).first;
  const std::size_t output = AddValues(channel, keys.values.size());
  Json& samplers = Clip()["samplers"];
  samplers.push_back(Json{{"input", time->second},
                          {"interpolation", kModeNames[static_cast<int>(channel.GetMode())]},
                          {"output", output}});
  return samplers.size() - 1;
}

/// The accessor of a channel's values, `count` floats, which are made when they are sent.
std::size_t GltfWriter::Assembly::AddValues(const Channel& channel, std::size_t count) {
  const ViewBytes bytes{count * sizeof(float), [&channel](const Emit& emit) {
                          emit(BytesOf(ToFloatKeys(channel).values));
                        }};
  const auto n = static_cast<std::size_t>(ComponentCount(channel.GetPath()));
  return Append("accessors", Json{{"bufferView", AddView(bytes, 0)},
                                  {"componentType", 5126},
                                  {"count", count / n},
                                  {"type", n == 4 ? "VEC4" : "VEC3"},
                                  {"extras", OwnMark()}});
}

/// Looks whether nodes, keys or roots differ from what was read.
void GltfWriter::Assembly::NoteChanges() {
  if (m_document == nullptr) return;
  const Json& before = m_document->GetJson();
  const auto differs = [&](const char* name) {
    const Json empty = Json::array();
    const Json* old = Member(before, name);
    const Json* now = Member(m_json, name);
    return (old == nullptr ? empty : *old) != (now == nullptr ? empty : *now);
  };
  m_touched = differs("nodes") || differs("animations");
  if (m_touched || m_document->sceneIndex < 0) return;
  Json roots = Json::array();
  for (const auto& root : m_scene.GetRoots()) roots.push_back(m_indices.at(root.get()));
  const Json& scene = before["scenes"][static_cast<std::size_t>(m_document->sceneIndex)];
  const Json* old = Member(scene, "nodes");
  m_touched = (old == nullptr ? Json::array() : *old) != roots;
}

bool GltfWriter::Assembly::SomethingChanged() const {
  return m_document == nullptr || m_scene.m_hadRecord || !m_scene.m_rigs.empty() ||
         !m_scene.m_rows.empty() || !m_scene.m_takes.empty() || m_scene.m_sound ||
         m_scene.m_rateIsChosen || m_scene.m_rangeStart != m_scene.m_sourceRange[0] ||
         m_scene.m_rangeEnd != m_scene.m_sourceRange[1] || m_touched;
}

Json GltfWriter::Assembly::RigJson(const RigRecord& rig) const {
  if (rig.Damaged()) return Json::parse(rig.raw);
  Json json{{"kind", rig.kind}, {"name", rig.name}, {"record", rig.record}};
  if (!rig.others.empty()) json.update(Json::parse(rig.others));
  return json;
}

/// Frame rate, range, rigs and exact keys in the extras of the shown scene. A scene of others that
/// nobody changed gets none.
void GltfWriter::Assembly::WriteRecord() {
  if (!SomethingChanged()) return;
  const int shown = m_document == nullptr ? 0 : std::max(m_document->sceneIndex, 0);
  Json& record = ExtrasObject(List("scenes")[static_cast<std::size_t>(shown)])[kOwnKey];
  if (!record.is_object()) {
    Json damaged = std::move(record);
    record = Json::object();
    if (!damaged.is_null()) record["damaged"] = std::move(damaged);
  }
  record["version"] = kRecordVersion;
  record["frameRate"] = m_scene.m_frameRate;
  record["range"] = Json::array({m_scene.m_rangeStart, m_scene.m_rangeEnd});
  Json rigs = Json::array();
  for (const RigRecord& rig : m_scene.m_rigs) rigs.push_back(RigJson(rig));
  if (rigs.empty())
    record.erase("rigs");
  else
    record["rigs"] = std::move(rigs);
  if (m_scene.m_rows.empty())
    record.erase("rows");
  else
    record["rows"] = m_scene.m_rows;
  if (m_scene.m_takes.empty())
    record.erase("takes");
  else
    record["takes"] = m_scene.m_takes;
  if (m_scene.m_sound)
    WriteSound(*m_scene.m_sound, m_folder, record["sound"]);
  else if (m_scene.m_hadSound)
    record.erase("sound");
  Json exact = ExactJson();
  if (exact.is_null())
    record.erase("exact");
  else
    List("scenes")[static_cast<std::size_t>(shown)]["extras"][kOwnKey]["exact"] = std::move(exact);
}

/// The doubles behind the float keys that we write, and behind the poses of nodes of ours.
Json GltfWriter::Assembly::ExactJson() {
  // Where the numbers stand in the scene, which does not change during a save.
  std::vector<std::string_view> parts;
  std::size_t count = 0;
  Json nodes = Json::array();
  for (const SceneNode* node : m_nodes) AppendExact(*node, parts, count, nodes);
  if (nodes.empty()) return nullptr;
  ViewBytes bytes{count * sizeof(double), [parts = std::move(parts)](const Emit& emit) {
                    for (const std::string_view part : parts) emit(part);
                  }};
  return Json{{"bufferView", AddView(std::move(bytes), 0)}, {"nodes", std::move(nodes)}};
}

/// Adds what is exact of a node behind the `count` numbers so far.
void GltfWriter::Assembly::AppendExact(const SceneNode& node, std::vector<std::string_view>& parts,
                                       std::size_t& count, Json& nodes) {
  const SceneNode::Source* source = SourceOf(node);
  const std::size_t index = m_indices.at(&node);
  const Json* name = Member(List("nodes")[index], "name");
  Json json{{"node", index}, {"name", name == nullptr ? Json("") : *name}, {"pose", count}};
  std::vector<std::string_view> own{BytesOf(node.m_pose)};
  std::size_t next = count + kPoseNumbers;
  bool wanted = !node.m_tag.empty();
  for (std::size_t i = 0; i < 3; ++i) {
    const Channel* channel = node.m_channels[i].get();
    if (channel == nullptr) continue;
    const bool ours = ChannelChanged(node, static_cast<ChannelPath>(i)) ||
                      (source != nullptr && source->exact[i]);
    if (!ours || FitsFloats(*channel, ToFloatKeys(*channel))) continue;
    wanted = true;
    json[kPathNames[i]] = Json{{"at", next}, {"count", channel->GetKeyCount()}};
    own.insert(own.end(), {BytesOf(channel->GetTimes()), BytesOf(channel->GetValues())});
    next += channel->GetTimes().size() + channel->GetValues().size();
  }
  if (!wanted) return;
  count = next;
  parts.insert(parts.end(), own.begin(), own.end());
  nodes.push_back(std::move(json));
}

}  // namespace orv::rws::adaptor::headless
