#include "adaptor/headless/GltfContent.h"

#include <algorithm>
#include <cmath>

#include "adaptor/headless/GltfAccessor.h"
#include "adaptor/headless/GltfKeys.h"
#include "adaptor/headless/GltfMedia.h"
#include "util/Angles.h"
#include "util/NumberText.h"

namespace orv::rws::adaptor::headless {

namespace {

using util::Matrix;
using util::Quat;

/// A rotation farther from unit length than this is brought back to it.
constexpr double kUnitTolerance = 1e-5;

void CheckTimes(const std::vector<double>& times, const Place& place) {
  for (std::size_t i = 0; i < times.size(); ++i) {
    if (!std::isfinite(times[i])) place.Fail("key time " + std::to_string(i) + " is not finite");
    if (i > 0 && !(times[i] > times[i - 1]))
      place.Fail("key time " + std::to_string(i) + " is not above the one before");
  }
}

}  // namespace

void GltfReader::Content::Read() {
  BuildNodes();
  ChooseClip();
  ReadChannels();
}

void GltfReader::Content::BuildNodes() {
  m_file.nodes.assign(m_tree.GetNodeCount(), nullptr);
  m_meshes.resize(m_file.List("meshes").size());
  for (const std::size_t i : m_tree.ParentsFirst()) {
    const int above = m_tree.ParentOf(i);
    SceneNode* parent = above < 0 ? nullptr : m_file.nodes[static_cast<std::size_t>(above)];
    m_file.nodes[i] = &m_file.scene->AddNode(m_tree.Name(i), parent);
    m_file.sources[m_file.nodes[i]] = std::make_unique<SceneNode::Source>();
    ReadNode(i, *m_file.nodes[i]);
  }
}

void GltfReader::Content::ReadNode(std::size_t index, SceneNode& node) {
  const Place place("nodes", index);
  const Json& json = m_file.List("nodes")[index];
  SceneNode::Source& source = *m_file.sources[&node];
  source.document = m_file.document;
  source.index = static_cast<int>(index);
  source.mesh = -1;
  ReadPose(json, place, node, source);
  ReadLens(json, place, node);
  ReadMesh(json, place, node, source);
  const Json* extras = Member(json, "extras");
  const Json* tag = extras == nullptr ? nullptr : Member(*extras, kTagKey);
  if (tag != nullptr && tag->is_string()) node.SetTag(tag->get<std::string>());
  if (tag != nullptr && !tag->is_string())
    m_file.Warn(place.In("extras").In(kTagKey), "is no text and does not count");
  const Json* home = extras == nullptr ? nullptr : Member(*extras, kHomeKey);
  if (home != nullptr && home->is_string()) node.SetHome(home->get<std::string>());
  const Json* hub = extras == nullptr ? nullptr : Member(*extras, kHubKey);
  node.SetHub(hub != nullptr && *hub == true);
  if (const Json* behind = extras == nullptr ? nullptr : Member(*extras, kBackdropKey)) {
    if (const auto backdrop = BackdropOf(*behind, m_file.document->GetFolder()))
      node.SetBackdrop(std::make_shared<const Backdrop>(*backdrop));
    else
      m_file.Warn(place.In("extras").In(kBackdropKey), "names no file and does not count");
  }
  const Json* extensions = ObjectAt(json, "extensions", place);
  const Json* visibility =
      extensions == nullptr ? nullptr : Member(*extensions, "KHR_node_visibility");
  const Json* visible = visibility == nullptr ? nullptr : Member(*visibility, "visible");
  node.m_visible = visible == nullptr || *visible != false;
}

void GltfReader::Content::ReadPose(const Json& json, const Place& place, SceneNode& node,
                                   SceneNode::Source& source) {
  double v[16];
  if (NumbersAt(json, "matrix", 16, v, place)) {
    if (v[3] != 0.0 || v[7] != 0.0 || v[11] != 0.0 || v[15] != 1.0)
      place.In("matrix").Fail("is not affine: its last row must be 0 0 0 1");
    Matrix<double> matrix;
    std::copy(v, v + 16, matrix.data());
    node.m_pose = Decompose(matrix);
    source.matrix = matrix;
    return;
  }
  if (NumbersAt(json, "translation", 3, v, place)) node.m_pose.translation = VectorOf(v);
  if (NumbersAt(json, "scale", 3, v, place)) node.m_pose.scale = VectorOf(v);
  if (!NumbersAt(json, "rotation", 4, v, place)) return;
  Quat<double> rotation(v[0], v[1], v[2], v[3]);
  const double length = rotation.length();
  if (!(length > 0.0) || !std::isfinite(length)) place.In("rotation").Fail("is no unit quaternion");
  if (std::abs(length - 1.0) > kUnitTolerance) rotation.normalize();
  node.m_pose.rotation = rotation;
}

void GltfReader::Content::ReadLens(const Json& json, const Place& place, SceneNode& node) {
  const Json& cameras = m_file.List("cameras");
  const int index = IndexAt(json, "camera", cameras.size(), place);
  if (index < 0) return;
  const Place here("cameras", static_cast<std::size_t>(index));
  const Json& camera = cameras[static_cast<std::size_t>(index)];
  if (!camera.is_object()) here.Fail("is no object");
  if (TextAt(camera, "type", here) != "perspective") return;
  const Json* perspective = ObjectAt(camera, "perspective", here);
  const Place inner = here.In("perspective");
  if (perspective == nullptr) inner.Fail("is missing");
  Lens lens;
  const double angle = FiniteAt(*perspective, "yfov", 0.0, inner);
  if (!(angle > 0.0)) inner.In("yfov").Fail("must be above 0");
  lens.fieldOfView = angle * util::kDegreesPerRadian;
  lens.nearClip = FiniteAt(*perspective, "znear", lens.nearClip, inner);
  lens.farClip = FiniteAt(*perspective, "zfar", 0.0, inner);
  lens.aspectRatio = std::max(0.0, NumberOr(*perspective, "aspectRatio", 0.0));
  if (const Json* own = OwnExtras(camera)) {
    // Degrees do not survive the way through radians to the last bit.
    const double degrees = NumberOr(*own, "fieldOfView", lens.fieldOfView);
    if (degrees / util::kDegreesPerRadian == angle) lens.fieldOfView = degrees;
    // glTF knows neither a near plane at the eye nor a far one in front of it.
    const double nearClip = NumberOr(*own, "nearClip", lens.nearClip);
    if (nearClip < lens.nearClip && lens.nearClip == Lens::kLeastClip) lens.nearClip = nearClip;
    lens.focusDistance = NumberOr(*own, "focusDistance", lens.focusDistance);
  }
  node.m_lens = lens;
}

void GltfReader::Content::ReadMesh(const Json& json, const Place& place, SceneNode& node,
                                   SceneNode::Source& source) {
  const Json* own = OwnExtras(json);
  const Json* empty = own == nullptr ? nullptr : Member(*own, "emptyMesh");
  source.hasTriangles = empty != nullptr && *empty == true;
  const int index = IndexAt(json, "mesh", m_meshes.size(), place);
  if (index < 0) return;
  std::unique_ptr<MeshContent>& content = m_meshes[static_cast<std::size_t>(index)];
  if (!content) {
    if (!m_file.List("meshes")[static_cast<std::size_t>(index)].is_object())
      Place("meshes", static_cast<std::size_t>(index)).Fail("is no object");
    content = std::make_unique<MeshContent>(CheckMesh(*m_file.document, index));
    m_file.warnings.insert(m_file.warnings.end(), content->warnings.begin(),
                           content->warnings.end());
  }
  if (content->hasTriangles) {
    source.mesh = index;
    source.hasTriangles = true;
    node.m_colour = content->colour;
  }
  node.m_curve = content->curve;
}

void GltfReader::Content::ChooseClip() {
  const Json& clips = m_file.List("animations");
  for (std::size_t i = 0; i < clips.size(); ++i) {
    if (!clips[i].is_object()) Place("animations", i).Fail("is no object");
    m_file.scene->m_clips.push_back(TextAt(clips[i], "name", Place("animations", i)));
  }
  int& chosen = m_file.scene->m_evaluatedClip;
  if (m_options.clip.empty()) {
    chosen = clips.empty() ? -1 : 0;
    return;
  }
  const auto& names = m_file.scene->m_clips;
  const auto at = std::find(names.begin(), names.end(), m_options.clip);
  chosen = static_cast<int>(at - names.begin());
  if (at != names.end()) return;
  if (!util::parseNumber(m_options.clip, chosen) || chosen < 0 ||
      static_cast<std::size_t>(chosen) >= names.size())
    throw GltfError("animations", "there is no clip " + Quoted(m_options.clip) +
                                      " (clips are chosen by name or by number from 0)");
}

void GltfReader::Content::ReadChannels() {
  if (m_file.scene->m_evaluatedClip < 0) return;
  const auto clip = static_cast<std::size_t>(m_file.scene->m_evaluatedClip);
  const Place place("animations", clip);
  const Json& json = m_file.List("animations")[clip];
  const Json& channels = ListAt(json, "channels", place);
  const Json& samplers = ListAt(json, "samplers", place);
  for (std::size_t i = 0; i < channels.size(); ++i)
    ReadChannel(channels[i], samplers, place.In("channels", i), place);
  // The exact keys may replace what is held here.
  m_decoded.clear();
  m_firstOfTimes.clear();
}

void GltfReader::Content::ReadChannel(const Json& json, const Json& samplers, const Place& place,
                                      const Place& clip) {
  const Json* target = ObjectAt(json, "target", place);
  if (target == nullptr) place.In("target").Fail("is missing");
  const std::string pathName = TextAt(*target, "path", place.In("target"));
  const int index = IndexAt(*target, "node", m_file.nodes.size(), place.In("target"));
  const int sampler = IndexAt(json, "sampler", samplers.size(), place);
  if (sampler < 0) place.In("sampler").Fail("is missing");
  const auto name = std::find(kPathNames, kPathNames + 3, pathName);
  if (index < 0 || name == kPathNames + 3) return;
  SceneNode* node = m_file.nodes[static_cast<std::size_t>(index)];
  if (node == nullptr) return;
  const auto path = static_cast<ChannelPath>(name - kPathNames);
  std::shared_ptr<Channel>& slot = node->m_channels[static_cast<std::size_t>(path)];
  if (slot) {
    m_file.Warn(place, "keys " + pathName + " of " + Quoted(node->GetName()) +
                           " a second time; the first keys count");
    return;
  }
  slot = DecodeSampler(samplers, static_cast<std::size_t>(sampler), path, clip);
}

std::shared_ptr<Channel> GltfReader::Content::DecodeSampler(const Json& samplers, std::size_t index,
                                                            ChannelPath path, const Place& clip) {
  std::shared_ptr<Channel>& channel = m_decoded[{index, path}];
  if (channel) return channel;
  const Place place = clip.In("samplers", index);
  const Json& json = samplers[index];
  if (!json.is_object()) place.Fail("is no object");
  const std::size_t accessors = m_file.List("accessors").size();
  const int input = IndexAt(json, "input", accessors, place);
  const int output = IndexAt(json, "output", accessors, place);
  if (input < 0 || output < 0) place.Fail("input or output is missing");
  Interpolation mode = Interpolation::kLinear;
  const std::string modeName = TextAt(json, "interpolation", place);
  if (modeName == "STEP")
    mode = Interpolation::kStep;
  else if (modeName == "CUBICSPLINE")
    mode = Interpolation::kCubicSpline;
  else if (!modeName.empty() && modeName != "LINEAR")
    place.In("interpolation").Fail(Quoted(modeName) + " is no interpolation");

  auto result = std::make_shared<Channel>(path, mode);
  const Place inputPlace("accessors", static_cast<std::size_t>(input));
  const Place outputPlace("accessors", static_cast<std::size_t>(output));
  const AccessorView times = m_file.document->Accessor(static_cast<std::size_t>(input));
  const AccessorView values = m_file.document->Accessor(static_cast<std::size_t>(output));
  if (times.components != 1 || times.type != ComponentType::kFloat)
    inputPlace.Fail("is used as key times, but is not of type SCALAR with float components");
  if (values.components != ComponentCount(path) || values.matrix ||
      (values.type != ComponentType::kFloat &&
       (path != ChannelPath::kRotation || !values.normalized)))
    outputPlace.Fail("is used as " + std::string(kPathNames[static_cast<int>(path)]) +
                     " keys, but is not of their type");
  const std::size_t perKey = mode == Interpolation::kCubicSpline ? 3 : 1;
  if (values.count != times.count * perKey)
    outputPlace.Fail("has " + std::to_string(values.count) + " elements for " +
                     std::to_string(times.count) + " keys");
  if (times.compressed || values.compressed) {
    m_file.Warn(place, "is compressed; its keys stay in the file but do not play here");
    return nullptr;
  }
  m_file.document->Spend(times.count + values.count * static_cast<std::size_t>(values.components),
                         place);
  std::vector<double> keyTimes = times.ReadNumbers();
  CheckTimes(keyTimes, inputPlace);
  if (!result->SetKeys(std::move(keyTimes), values.ReadNumbers()))
    outputPlace.Fail("has a key whose value is not finite");
  if (const Channel*& first = m_firstOfTimes[input])
    result->ShareTimes(*first);
  else
    first = result.get();
  return channel = std::move(result);
}

void GltfReader::Content::KeepSources() {
  for (SceneNode* const node : m_file.nodes)
    if (node != nullptr) KeepSource(*node);
}

void GltfReader::Content::KeepSource(SceneNode& node) {
  std::unique_ptr<SceneNode::Source> source = std::move(m_file.sources[&node]);
  source->name = node.m_name;
  source->animation = node.GetAnimation();
  source->visible = node.m_visible;
  source->tag = node.m_tag;
  source->home = node.m_home;
  source->hub = node.m_hub;
  source->lens = node.m_lens;
  source->hasBackdrop = node.m_backdrop != nullptr;
  source->curve = node.m_curve;
  source->colour = node.m_colour;
  node.m_source = std::move(source);
}

}  // namespace orv::rws::adaptor::headless
