#include "app/session/LineFollowing.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "adaptor/headless/SceneNode.h"
#include "app/session/SceneRange.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/InputFile.h"
#include "app/session/anyhost/Names.h"
#include "app/session/anyhost/RunRigs.h"
#include "app/session/anyhost/UndoBlock.h"
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "core/instances/NameRules.h"
#include "core/interface/CCamera.h"
#include "core/interface/LineToFollow.h"
#include "core/services/Translation.h"
#include "core/tools/Tool.h"
#include "unidevice/Property.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

namespace headless = rws::adaptor::headless;
using rws::LineToFollow;
using rws::core::Instance;
using rws::core::Translatable;
using Pose = util::QTransform<double>;
using Vector = util::Vector3<double>;

constexpr double kLeastSeconds = 1.0;  ///< of a path
constexpr double kLeastWay = 0.5;      ///< of a path, in sizes of the rig
constexpr double kMoves = 0.01;        ///< part of a line's top speed; slower counts as standing

headless::HeadlessNode* NodeNamed(const Instance& rig, const std::string& name) {
  for (rws::core::CoreNode* node : rig.GetNodes()) {
    auto* const own = static_cast<headless::HeadlessNode*>(node);
    if (node->GetName() == name && own->GetSceneNode()) return own;
  }
  return nullptr;
}

Pose PoseOf(const headless::SceneNode& node, double time) {
  const auto trs = rws::adaptor::Decompose(node.WorldMatrix(time));
  return {trs.translation, trs.rotation};
}

/// Kinds whose rigs follow a target by themselves.
std::vector<std::string> KindsThatFollow(rws::core::CoreImplementation& core) {
  std::vector<std::string> kinds;
  for (rws::core::Tool* tool : core.GetLibrary().GetTools()) {
    const std::unique_ptr<Instance> probe(tool->MakeInstance("probe"));
    if (probe && probe->GetRig()->HasExtension(rws::kFollowLine))
      kinds.push_back(tool->GetDisplayId());
  }
  return kinds;
}

// --- time ---

/// The line between its frames.
Pose PoseAt(const std::vector<Pose>& line, double frame) {
  const auto before = static_cast<std::size_t>(frame);
  const double part = frame - static_cast<double>(before);
  Pose pose = line[before];
  if (part == 0.0) return pose;
  const Pose& after = line[before + 1];
  pose.position += (after.position - pose.position) * part;
  const util::Quat<double>&p = pose.rotation, &q = after.rotation;
  const double side = p.x * q.x + p.y * q.y + p.z * q.z + p.w * q.w < 0.0 ? -part : part;
  // Frames are near each other: the straight way is as good as the arc.
  const double rest = 1.0 - part;
  pose.rotation = {p.x * rest + q.x * side, p.y * rest + q.y * side, p.z * rest + q.z * side,
                   p.w * rest + q.w * side};
  pose.rotation.normalize();
  return pose;
}

/// For each frame the one of the line in whose place a rig that goes no faster than `mostWay` (m) a
/// frame can be: its own, or as soon after it as can be. What is late catches up at a quarter more
/// than the line's own pace. With `toEnd` it goes on behind the line's time, for up to as long
/// again and again, until the line's end is reached.
std::vector<double> InReach(const std::vector<Pose>& line, double mostWay, bool toEnd) {
  constexpr double kCatchUp = 1.25;
  constexpr std::size_t kLongest = 3;  ///< times the line's own
  const double lineEnd = static_cast<double>(line.size() - 1);
  const std::size_t most = line.size() * (toEnd ? kLongest : 1);
  std::vector<double> reached;
  double at = 0.0;
  for (std::size_t i = 0; i < line.size() || (at < lineEnd && i < most); ++i) {
    reached.push_back(at);
    const double wanted = std::min({static_cast<double>(i + 1), lineEnd, at + kCatchUp});
    double left = mostWay;
    while (at < wanted) {
      const auto segment = static_cast<std::size_t>(at);
      const double end = std::min(wanted, static_cast<double>(segment + 1));
      const double whole = (line[segment + 1].position - line[segment].position).length();
      const double way = whole * (end - at);
      if (way > left) {
        at = std::min(end, at + left / whole);
        break;
      }
      left -= way;
      at = end;
    }
  }
  return reached;
}

// --- distances ---

/// Where on the line, between two frames, a place is nearest.
struct Foot {
  double distance = 0.0;  ///< m
  double time = 0.0;      ///< s
};

/// Of feet that are as near the one that is nearest in time.
Foot FootOf(const std::vector<Pose>& line, double start, double dt, std::size_t frame, double led,
            const Vector& place) {
  const auto window = static_cast<std::size_t>(std::ceil(kFollowWindow / dt));
  const auto from = static_cast<std::size_t>(led);
  const std::size_t first = from > window ? from - window : 0;
  const std::size_t last = std::min(line.size() - 1, frame + window);
  const double now = static_cast<double>(frame);
  double best = -1.0, at = 0.0;
  for (std::size_t i = first; i < last; ++i) {
    const Vector way = line[i + 1].position - line[i].position;
    const double square = way.dot(way);
    const double here = (place - line[i].position).dot(way);
    // Where the line stands still any part of the frame will do.
    const double part = square > 0.0 ? std::clamp(here / square, 0.0, 1.0)
                                     : std::clamp(now - static_cast<double>(i), 0.0, 1.0);
    const double distance = (line[i].position + way * part - place).length();
    const double when = static_cast<double>(i) + part;
    if (best < 0.0 || distance < best - 1e-9 ||
        (distance < best + 1e-9 && std::abs(when - now) < std::abs(at - now))) {
      best = distance;
      at = when;
    }
  }
  return {best, start + at * dt};
}

double WayInto(const std::vector<Pose>& line, std::size_t frame) {
  return (line[frame].position - line[frame - 1].position).length();
}

LineDistances Measure(const std::vector<Pose>& line, const std::vector<double>& led,
                      const std::vector<Pose>& driven, double start, double dt, double size) {
  LineDistances off;
  off.frames = static_cast<long>(driven.size());
  off.margin = size;
  double fastest = 0.0;
  for (std::size_t i = 1; i < line.size(); ++i) fastest = std::max(fastest, WayInto(line, i));
  std::vector<double> distances;
  for (std::size_t i = 0; i < driven.size(); ++i) {
    const double time = start + static_cast<double>(i) * dt;
    const Foot foot = FootOf(line, start, dt, i, led[i], driven[i].position);
    distances.push_back(foot.distance);
    off.mean += foot.distance / static_cast<double>(driven.size());
    if (foot.distance > off.largest) {
      off.largest = foot.distance;
      off.largestTime = time;
    }
    if (foot.distance <= off.margin) off.left.reset();
    if (foot.distance > off.margin && !off.left) off.left = time;
    if (i == 0) continue;
    const Vector led1 = PoseAt(line, led[i]).position, led0 = PoseAt(line, led[i - 1]).position;
    if ((led1 - led0).length() > kMoves * fastest) off.delay = time - foot.time;
    if (i >= line.size()) continue;
    const double way = WayInto(line, i);
    off.length += way;
    const double speed = std::abs(WayInto(driven, i) - way) / dt;
    if (speed > off.speed) {
      off.speed = speed;
      off.speedTime = time;
    }
  }
  if (off.left) off.delay.reset();
  std::sort(distances.begin(), distances.end());
  off.p95 = distances[static_cast<std::size_t>(
      std::ceil(0.95 * static_cast<double>(distances.size())) - 1.0)];
  return off;
}

// --- the run ---

class PathFollowing {
 public:
  PathFollowing(SceneSession& session, const FollowWish& wish)
      : m_session(session), m_core(session.GetCore()), m_wish(wish) {}

  FollowResult Run(const Monitor& monitor) {
    if (!Find() || !ReadLine()) return m_result;
    UndoBlock block(*m_core.GetAdaptor(), "Follow " + m_wish.rig);
    if (!MakeDriver() || !Prepare() || !PlaceTarget()) return m_result;
    const RunResult run =
        Resimulate(m_core, m_result.span, monitor, {m_core.Find(m_driver->GetInstanceName())});
    m_result.cancelled = run.cancelled;
    if (!run.began) Refuse(Translatable("the rig could not be simulated"));
    if (!run.began || run.cancelled) return m_result;
    const headless::SceneNode& node = *NodeNamed(*m_driver, m_asked.lineNode)->GetSceneNode();
    std::vector<Pose> driven;
    for (std::size_t i = 0; i < m_led.size(); ++i) driven.push_back(PoseOf(node, TimeOf(i)));
    m_result.off =
        Measure(m_line, m_led, driven, m_result.span.from, m_core.GetFrameDuration(), m_asked.size);
    block.Keep();
    return m_result;
  }

 private:
  bool Refuse(const util::Sentence& problem, const util::Sentence& hint = {}) {
    m_result.problem = problem;
    m_result.hint = hint;
    return false;
  }
  double TimeOf(std::size_t frame) const {
    return (m_first + static_cast<int>(frame)) * m_core.GetFrameDuration();
  }
  void Ask() { m_driver->GetRig()->Extension(rws::kFollowLine, &m_asked, nullptr); }

  bool Find() {
    m_driver = m_core.FindInstance(m_wish.rig);
    if (!m_driver) return Refuse(Translatable("there is no such rig"));
    if (!m_driver->GetRig()->HasExtension(rws::kFollowLine))
      return Refuse(
          {Translatable("a %1 follows no target by itself"), {m_driver->GetTool()->GetDisplayId()}},
          {Translatable("kinds that do: %1"), {Joined(KindsThatFollow(m_core))}});
    const auto& profiles = m_driver->GetTool()->GetConfigProfiles();
    if (!m_wish.profile.empty() && !profiles.Find(m_wish.profile))
      return Refuse({Translatable("there is no profile \"%1\""), {m_wish.profile}},
                    HintFor(m_wish.profile, profiles.GetNames(), "profiles"));
    std::string wrong;
    if (!m_wish.name.empty() && !rws::core::IsNameAllowed(m_wish.name, wrong))
      return Refuse({Translatable("the name %1 can't be had: %2"), {m_wish.name, wrong}});
    if (!m_wish.name.empty() && m_core.FindInstance(m_wish.name))
      return Refuse({Translatable("a rig named %1 is in the scene"), {m_wish.name}},
                    Translatable("choose another name"));
    return true;
  }

  /// The poses of the path, as long as it has keys.
  bool ReadLine() {
    Ask();
    const headless::HeadlessNode* const own = NodeNamed(*m_driver, m_asked.lineNode);
    const headless::Channel* const keys =
        own ? own->GetSceneNode()->GetChannel(headless::ChannelPath::kTranslation) : nullptr;
    const util::Sentence remedy = Translatable("drive it first: record a take of it");
    if (!keys || keys->IsEmpty()) return Refuse(Translatable("it has no recorded path"), remedy);
    m_first = m_core.FrameIndex(m_core.SnapToFrame(keys->GetTimes().front()));
    const int last = m_core.FrameIndex(keys->GetTimes().back() + 1e-5);
    for (int i = m_first; i <= last; ++i) {
      m_line.push_back(PoseOf(*own->GetSceneNode(), i * m_core.GetFrameDuration()));
      const Vector& at = m_line.back().position;
      if (!std::isfinite(at.x) || !std::isfinite(at.y) || !std::isfinite(at.z))
        return Refuse({Translatable("its path has no place at %1 s"),
                       {util::shortText(i * m_core.GetFrameDuration())}});
    }
    m_asked.start = TimeOf(0);
    m_result.span = {TimeOf(0), TimeOf(m_line.size() - 1)};
    const double seconds = m_result.span.to - m_result.span.from;
    if (seconds < kLeastSeconds - 1e-5)
      return Refuse({Translatable("its recorded path of %1 s is too short to follow"),
                     {util::shortText(seconds)}},
                    {Translatable("it takes %1 s"), {util::shortText(kLeastSeconds)}});
    m_asked.line = m_line;
    Ask();
    double way = 0.0;
    for (std::size_t i = 1; i < m_line.size(); ++i) way += WayInto(m_line, i);
    if (way < kLeastWay * m_asked.size)
      return Refuse(Translatable("it stands still all along its recorded path"), remedy);
    return true;
  }

  bool MakeDriver() {
    std::string problem;
    if (!m_wish.inPlace) m_driver = m_core.Clone(m_core.Find(m_wish.rig), problem);
    if (!m_driver) return Refuse({Translatable("it could not be copied: %1"), {problem}});
    if (!m_wish.inPlace && !m_wish.name.empty()) {
      problem = m_core.Rename(m_core.Find(m_driver->GetInstanceName()), m_wish.name);
      if (!problem.empty())
        return Refuse({Translatable("the copy could not be named: %1"), {problem}});
    }
    m_result.driver = m_driver->GetInstanceName();
    if (!m_wish.profile.empty()) problem = m_core.LoadProfile(m_result.driver, m_wish.profile);
    return problem.empty() || Refuse({Translatable("profile %1: %2"), {m_wish.profile, problem}});
  }

  bool Set(const std::vector<std::pair<std::string, double>>& values) {
    for (const auto& [label, value] : values)
      for (const rws::core::ConfigElement* element : m_driver->GetConfig().FindAll(label)) {
        std::string problem;
        if (!m_core.EditParameter(*m_driver, element->GetId(), util::exactText(value), problem))
          return Refuse({Translatable("parameter %1: %2"), {label, problem}});
      }
    return true;
  }

  /// Parameters and inputs of the mode, and a target that nothing carries along.
  bool Prepare() {
    headless::HeadlessNode* const target = NodeNamed(*m_driver, m_asked.targetNode);
    if (!target)
      return Refuse({Translatable("its %1 is gone"), {m_asked.targetNode}},
                    Translatable("undo what deleted it"));
    m_result.target = target->GetSceneName();
    if (target->GetSceneNode()->GetParent() && !target->SetParent(nullptr))
      return Refuse({Translatable("%1 could not be taken from its parent"), {m_result.target}});
    if (!m_wish.asProfile && !Set(m_asked.sharp)) return false;
    Ask();
    m_led = InReach(m_line, m_asked.topSpeed * m_core.GetFrameDuration(), m_wish.toEnd);
    m_asked.line.clear();
    for (const double frame : m_led) m_asked.line.push_back(PoseAt(m_line, frame));
    m_result.span.to = TimeOf(m_led.size() - 1);
    if (m_led.size() > m_line.size()) StretchRange(m_session, m_result.span);
    Ask();
    if (!Set(m_asked.mode)) return false;
    util::AVar_Linear<double> rest;
    rest.set(m_result.span.from, 0.0);
    rest.set(m_result.span.to, 0.0);
    for (const std::string& name : m_asked.inputs)
      if (unidevice::Property* const input = m_driver->GetProperties().find(name))
        ReplaceTrack({m_driver, input, {}}, rest);
    return true;
  }

  bool PlaceTarget() {
    Ask();
    std::vector<double> times, places;
    for (std::size_t i = 0; i < m_asked.targets.size(); ++i) {
      times.push_back(TimeOf(i));
      const Vector& place = m_asked.targets[i];
      places.insert(places.end(), {place.x, place.y, place.z});
    }
    headless::HeadlessNode& target = *NodeNamed(*m_driver, m_asked.targetNode);
    headless::Channel keys(headless::ChannelPath::kTranslation);
    if (times.empty() || !keys.SetKeys(std::move(times), std::move(places)))
      return Refuse(Translatable("its path gives the target no place"));
    m_session.GetAdaptor().KeepPose(target);
    target.GetSceneNode()->SetChannel(std::move(keys));
    return true;
  }

  SceneSession& m_session;
  rws::core::CoreImplementation& m_core;
  const FollowWish& m_wish;
  FollowResult m_result;
  std::vector<Pose> m_line;   ///< one a frame
  std::vector<double> m_led;  ///< frames of the line that the target leads to
  LineToFollow m_asked;
  Instance* m_driver = nullptr;  ///< the original, until a copy takes its place
  int m_first = 0;               ///< frame with which the line begins
};

}  // namespace

FollowResult FollowPath(SceneSession& session, const FollowWish& wish, const Monitor& monitor) {
  return PathFollowing(session, wish).Run(monitor);
}

}  // namespace orv::app
