#include "app/session/CleanScene.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "adaptor/headless/Scene.h"
#include "app/session/anyhost/FrameTimes.h"
#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/TimeSpan.h"

namespace orv::app {

namespace {

using rws::adaptor::Trs;
using rws::adaptor::headless::Channel;
using rws::adaptor::headless::ChannelPath;
using rws::adaptor::headless::Scene;
using rws::adaptor::headless::SceneNode;
using Matrix = util::Matrix<double>;
using Quat = util::Quat<double>;

constexpr ChannelPath kPaths[] = {ChannelPath::kTranslation, ChannelPath::kRotation,
                                  ChannelPath::kScale};

/// Keys nearer to a frame than this count as the frame's (frames).
constexpr double kOnFrame = 1e-3;
/// Part of its size by which a pose may differ from what its parent can hold; floats round to less.
constexpr double kSheared = 1e-5;
/// Part of a value by which keys may differ and still stand still; floats round to more.
constexpr double kStill = 1e-9;

/// A node that leaves its rig, with its poses relative to its new parent.
struct BakedNode {
  SceneNode* node = nullptr;
  SceneNode* parent = nullptr;  ///< null is the world
  std::vector<double> times;    ///< s
  std::vector<Trs> poses;
};

/// The work on one scene.
class Cleaner {
 public:
  Cleaner(Scene& scene, const std::set<std::string>& keep, const TimeSpan& span);

  /// False when it was cancelled.
  bool Bake(const Monitor& monitor);
  void Apply();

  CleanResult result;

 private:
  bool Stays(const SceneNode& node) const;
  SceneNode* PlaceOf(const SceneNode& node) const;
  std::vector<SceneNode*> PlacesOf(const SceneNode& node) const;
  std::vector<double> TimesOf(const SceneNode& node) const;
  bool IsBelow(const SceneNode* place, const SceneNode& node) const;
  bool BakeUnder(BakedNode& baked, SceneNode* parent) const;
  void RemoveRigs();

  Scene& m_scene;
  const std::set<std::string>& m_keep;
  TimeSpan m_span;
  FrameTimes m_frames;
  std::vector<BakedNode> m_baked;
  std::map<const SceneNode*, SceneNode*> m_parents;  ///< of those in m_baked
};

Cleaner::Cleaner(Scene& scene, const std::set<std::string>& keep, const TimeSpan& span)
    : m_scene(scene),
      m_keep(keep),
      m_span(span),
      m_frames(span.from, span.to, scene.GetFrameDuration()) {}

/// A hub has done its work when what it hangs on goes.
bool Cleaner::Stays(const SceneNode& node) const {
  if (node.IsHub()) return node.HangsOnRig() && Stays(*node.GetParent());
  return node.GetTag().empty() || m_keep.count(node.GetName()) != 0;
}

/// What a node belongs below; null is the world. Of a node whose parent goes that is its home or,
/// where that is not known, the nearest ancestor that stays.
SceneNode* Cleaner::PlaceOf(const SceneNode& node) const {
  SceneNode* above = node.GetParent();
  if (!above || Stays(*above)) return above;
  SceneNode* const home = node.GetHome() ? m_scene.Find(*node.GetHome()) : nullptr;
  if (node.GetHome() && (node.GetHome()->empty() || (home && Stays(*home)))) return home;
  while (above && !Stays(*above)) above = above->GetParent();
  return above;
}

/// Where a node may go, the best place first. The last one, the world, is always possible.
std::vector<SceneNode*> Cleaner::PlacesOf(const SceneNode& node) const {
  std::vector<SceneNode*> places{PlaceOf(node)};
  while (places.back()) {
    SceneNode* const next = PlaceOf(*places.back());
    // Homes may go round in a circle.
    places.push_back(std::count(places.begin(), places.end(), next) > 0 ? nullptr : next);
  }
  return places;
}

/// All frames, and the keys between them that move the node: of a wheel that spins fast.
std::vector<double> Cleaner::TimesOf(const SceneNode& node) const {
  std::vector<double> times;
  for (long i = 0; i < m_frames.Count(); ++i) times.push_back(m_frames.Time(m_frames.first + i));
  for (const SceneNode* above = &node; above; above = above->GetParent()) {
    for (const ChannelPath path : kPaths) {
      const Channel* channel = above->GetChannel(path);
      if (!channel) continue;
      for (const double time : channel->GetTimes()) {
        const double frame = time / m_frames.duration;
        if (time > m_span.from && time < m_span.to &&
            std::abs(frame - std::round(frame)) > kOnFrame)
          times.push_back(time);
      }
    }
  }
  std::sort(times.begin(), times.end());
  const auto same = [this](double a, double b) { return b - a < kOnFrame * m_frames.duration; };
  times.erase(std::unique(times.begin(), times.end(), same), times.end());
  return times;
}

/// Whether `place` would be below `node` in the tree as it is going to be.
bool Cleaner::IsBelow(const SceneNode* place, const SceneNode& node) const {
  while (place && place != &node) {
    const auto moved = m_parents.find(place);
    place = moved == m_parents.end() ? place->GetParent() : moved->second;
  }
  return place == &node;
}

/// False when no pose under `parent` gives the node its place in the world, as under an uneven
/// scale.
bool Cleaner::BakeUnder(BakedNode& baked, SceneNode* parent) const {
  baked.parent = parent;
  baked.poses.clear();
  for (const double time : baked.times) {
    Matrix local = baked.node->WorldMatrix(time);
    if (parent) {
      const Matrix inverse = parent->WorldMatrix(time).affineInverse();
      if (inverse[15] == 0.0) return false;
      local = inverse * local;
    }
    baked.poses.push_back(rws::adaptor::Decompose(local));
    const Matrix held = rws::adaptor::Compose(baked.poses.back());
    for (int i = 0; i < 3 && parent; ++i)
      if ((held.axisRow(i) - local.axisRow(i)).length() > kSheared * local.axisRow(i).length())
        return false;
  }
  return true;
}

bool Cleaner::Bake(const Monitor& monitor) {
  for (SceneNode* node : m_scene.GetNodes())
    if (Stays(*node) && node->GetParent() && !Stays(*node->GetParent()))
      m_baked.push_back({node, nullptr, TimesOf(*node), {}});
  long done = 0;
  for (BakedNode& baked : m_baked) {
    const std::vector<SceneNode*> places = PlacesOf(*baked.node);
    for (SceneNode* const place : places) {
      if (monitor.IsCancelled()) return false;
      if (!IsBelow(place, *baked.node) && (BakeUnder(baked, place) || !place)) break;
    }
    m_parents[baked.node] = baked.parent;
    if (baked.parent != places.front())
      result.warnings.push_back(
          baked.node->GetName() + ": it can't go back below " + places.front()->GetName() +
          ", which would shear it by an uneven scale or hangs on it; it is below " +
          (baked.parent ? baked.parent->GetName() : std::string("the world")) + " now");
    monitor.Tell(m_frames.Count() * ++done / static_cast<long>(m_baked.size()), m_frames.Count());
    if (monitor.IsCancelled()) return false;
  }
  result.baked = static_cast<int>(m_baked.size());
  return true;
}

/// One property of all poses: as keys, or as the static pose when it never changes.
void BakeProperty(SceneNode& node, ChannelPath path, const std::vector<double>& times,
                  const std::vector<double>& values) {
  const auto width = static_cast<std::size_t>(ComponentCount(path));
  bool still = true;
  for (std::size_t i = width; i < values.size() && still; ++i)
    still = std::abs(values[i] - values[i % width]) <= kStill * (1.0 + std::abs(values[i]));
  if (still) {
    node.RemoveChannel(path);
    return;
  }
  Channel channel(path);
  channel.SetKeys(times, values);
  node.SetChannel(std::move(channel));
}

void ApplyPoses(const BakedNode& baked) {
  if (baked.poses.empty()) return;
  std::vector<double> translations, rotations, scales;
  Quat before = baked.poses.front().rotation;
  for (const Trs& pose : baked.poses) {
    // Of the two quaternions of a rotation the one next to the frame before.
    Quat q = pose.rotation;
    if (q.x * before.x + q.y * before.y + q.z * before.z + q.w * before.w < 0.0) q = -q;
    before = q;
    translations.insert(translations.end(),
                        {pose.translation.x, pose.translation.y, pose.translation.z});
    rotations.insert(rotations.end(), {q.x, q.y, q.z, q.w});
    scales.insert(scales.end(), {pose.scale.x, pose.scale.y, pose.scale.z});
  }
  baked.node->SetPose(baked.poses.front());
  BakeProperty(*baked.node, ChannelPath::kTranslation, baked.times, translations);
  BakeProperty(*baked.node, ChannelPath::kRotation, baked.times, rotations);
  BakeProperty(*baked.node, ChannelPath::kScale, baked.times, scales);
}

/// All poses are known before anything moves: one may be the parent of another.
void Cleaner::Apply() {
  for (const BakedNode& baked : m_baked) m_scene.Move(*baked.node, nullptr);
  for (const BakedNode& baked : m_baked) {
    if (baked.parent) m_scene.Move(*baked.node, baked.parent);
    ApplyPoses(baked);
  }
  RemoveRigs();
}

void Cleaner::RemoveRigs() {
  std::vector<SceneNode*> gone;
  for (SceneNode* node : m_scene.GetNodes())
    if (!Stays(*node)) gone.push_back(node);
  // Children stand behind their parents: from the back, a node goes after all that is below it.
  for (auto node = gone.rbegin(); node != gone.rend(); ++node) m_scene.Detach(**node);
  for (SceneNode* node : m_scene.GetNodes()) {
    node->SetTag({});
    node->SetHub(false);
    node->SetBackdrop(nullptr);
  }
  m_scene.GetRigs().clear();
}

}  // namespace

std::set<std::string> NodesNamed(const Scene& scene, const std::string& pattern) {
  const bool all = !pattern.empty() && pattern.back() == '*';
  const std::string start = all ? pattern.substr(0, pattern.size() - 1) : pattern;
  std::set<std::string> names;
  for (const SceneNode* node : scene.GetNodes())
    if (all ? node->GetName().compare(0, start.size(), start) == 0 : node->GetName() == pattern)
      names.insert(node->GetName());
  return names;
}

CleanResult CleanScene(Scene& scene, const std::set<std::string>& keep, const TimeSpan& span,
                       const Monitor& monitor) {
  Cleaner cleaner(scene, keep, span);
  if (cleaner.Bake(monitor))
    cleaner.Apply();
  else
    cleaner.result.cancelled = true;
  return std::move(cleaner.result);
}

}  // namespace orv::app
