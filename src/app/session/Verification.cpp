#include "app/session/Verification.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "adaptor/headless/FrameRate.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "adaptor/headless/SceneNode.h"
#include "app/session/SceneRange.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/RunRigs.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "unidevice/Property.h"
#include "util/Angles.h"
#include "util/NumberText.h"
#include "util/Quat.h"

namespace orv::app {

namespace {

namespace headless = rws::adaptor::headless;
using rws::core::Instance;

constexpr std::array<const char*, 3> kChannelNames{"translation", "rotation", "scale"};

/// A node of a rig, and what moves it.
struct KeyedNode {
  std::string name;
  headless::NodeAnimation animation;
};

bool HasAnyKey(const headless::NodeAnimation& animation) {
  return std::any_of(animation.channels.begin(), animation.channels.end(),
                     [](const auto& channel) { return channel && !channel->IsEmpty(); });
}

std::vector<KeyedNode> KeyedNodes(SceneSession& session) {
  std::vector<KeyedNode> nodes;
  for (const Instance* rig : session.GetCore().List(true)) {
    for (rws::core::CoreNode* node : rig->GetNodes()) {
      const headless::SceneNode* own = static_cast<headless::HeadlessNode*>(node)->GetSceneNode();
      if (own && HasAnyKey(own->GetAnimation()))
        nodes.push_back({own->GetName(), own->GetAnimation()});
    }
  }
  return nodes;
}

double AmountBetween(headless::ChannelPath path, const double* a, const double* b) {
  if (path == headless::ChannelPath::kRotation) {
    const util::Quat<double> p(a[0], a[1], a[2], a[3]), q(b[0], b[1], b[2], b[3]);
    const auto turn = p.conjugate() * q;
    const double sine = util::Vector3<double>(turn.x, turn.y, turn.z).length();
    return 2.0 * std::atan2(sine, std::abs(turn.w)) * util::kDegreesPerRadian;
  }
  const util::Vector3<double> way(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
  return path == headless::ChannelPath::kTranslation
             ? way.length()
             : std::max({std::abs(way.x), std::abs(way.y), std::abs(way.z)});
}

/// Gathers what differs, channel by channel.
class KeyComparison {
 public:
  KeyComparison(VerifyReport& report) : m_report(report) {}

  void Compare(const std::string& node, const headless::Channel* before,
               const headless::Channel* now) {
    if (!before || before->IsEmpty()) return;
    const auto& times = before->GetTimes();
    const auto perKey = static_cast<std::size_t>(before->ValuesPerKey());
    const auto first = static_cast<std::size_t>(
        std::lower_bound(times.begin(), times.end(), m_report.span.from) - times.begin());
    for (std::size_t i = first; i < times.size() && times[i] <= m_report.span.to; ++i) {
      ++m_report.keys;
      double is[4] = {}, was[4] = {};
      before->Evaluate(times[i], was);
      if (now && !now->IsEmpty()) now->Evaluate(times[i], is);
      const auto count = static_cast<std::size_t>(headless::ComponentCount(before->GetPath()));
      if (now && perKey == count && std::equal(was, was + count, is)) continue;
      Note({times[i], node, kChannelNames[static_cast<std::size_t>(before->GetPath())],
            AmountBetween(before->GetPath(), was, is)},
           before->GetPath() == headless::ChannelPath::kTranslation);
    }
  }

  /// The largest of each second since the first.
  void Finish() {
    if (!m_report.first) return;
    for (const auto& [second, difference] : m_seconds)
      if (second >= std::floor(m_report.first->time)) m_report.growth.push_back(difference);
  }

 private:
  void Note(const KeyDifference& found, bool isMove) {
    ++m_report.differing;
    if (!m_report.first || found.time < m_report.first->time) m_report.first = found;
    auto& largest = m_report.largest;
    if (!largest || (isMove && !m_largestMoves) ||
        (isMove == m_largestMoves && found.amount > largest->amount)) {
      largest = found;
      m_largestMoves = isMove;
    }
    if (!isMove) return;
    KeyDifference& inSecond = m_seconds[std::floor(found.time)];
    if (inSecond.node.empty() || found.amount > inSecond.amount) inSecond = found;
  }

  VerifyReport& m_report;
  bool m_largestMoves = false;
  std::map<double, KeyDifference> m_seconds;
};

/// From where the rigs' inputs begin, a frame ahead of what is recorded first, to their last key.
TimeSpan SpanOfRigs(SceneSession& session) {
  const TimeSpan range = PlaybackRange(session.GetScene());
  double first = std::numeric_limits<double>::infinity();
  for (Instance* rig : session.GetCore().List(true))
    for (const auto& track : rig->GetTracks())
      if (!track.samples.empty()) first = std::min(first, track.samples.front().time);
  const double frame = session.GetScene().GetFrameDuration();
  const double from = std::isfinite(first) ? std::max(range.from, first - frame) : range.from;
  return {session.GetCore().SnapToFrame(from), LastKeyOfRigs(session, range.to)};
}

void FindReasons(SceneSession& session, const std::vector<KeyedNode>& before,
                 VerifyReport& report) {
  auto& core = session.GetCore();
  const double rate = session.GetScene().GetFrameRate();
  for (const KeyedNode& node : before) {
    const auto& channel = node.animation.channels[0];
    if (!channel || channel->IsEmpty()) continue;
    const auto& times = channel->GetTimes();
    if (std::all_of(times.begin(), times.end(),
                    [rate](double time) { return headless::StandsOnFrame(time, rate); }))
      continue;
    report.reasons.push_back(
        "keys of " + node.name + " stand between the frames of " + headless::FrameRateText(rate) +
        " frames per second: they were made at another rate, or by another program");
    break;
  }
  if (PlaybackRange(session.GetScene()).from > report.span.from)
    report.reasons.push_back("the playback range begins behind what was recorded");
  for (Instance* rig : core.List(true)) {
    const auto& tracks = rig->GetTracks();
    const bool silent = std::all_of(tracks.begin(), tracks.end(),
                                    [](const auto& track) { return track.samples.empty(); });
    if (silent && rig->GetProperties().count() > 0 && !rig->GetNodes().empty())
      report.reasons.push_back("nothing has been recorded of the inputs of " +
                               rig->GetInstanceName());
  }
  if (report.first && report.first->time > report.span.from + 1.5 / rate)
    report.reasons.push_back("all is the same up to " + util::shortText(report.first->time) +
                             " s: what changed acts from there on, such as the ground or an input");
  else if (report.first)
    report.reasons.push_back(
        "the first frame differs already: a parameter, a profile, a node's place or the frame rate "
        "has been changed since the keys were made");
}

}  // namespace

VerifyReport Verify(SceneSession& session, const std::optional<TimeSpan>& span,
                    const Monitor& monitor) {
  VerifyReport report;
  const std::vector<KeyedNode> before = KeyedNodes(session);
  report.nodes = static_cast<long>(before.size());
  report.span = span ? *span : SpanOfRigs(session);
  if (before.empty()) report.problem = "no checked rig has keys";
  if (!report.problem.empty()) return report;
  // The run's undo step takes back what it has written.
  const RunResult run = Resimulate(session.GetCore(), report.span, monitor);
  report.cancelled = run.cancelled;
  if (!run.began) report.problem = "no rig could be simulated";
  if (!run.began || run.cancelled) return report;
  std::map<std::string, headless::NodeAnimation> now;
  for (KeyedNode& node : KeyedNodes(session)) now[node.name] = std::move(node.animation);

  KeyComparison comparison(report);
  for (const KeyedNode& node : before) {
    const auto found = now.find(node.name);
    if (found == now.end()) {
      report.missing.push_back(node.name + " has keys that no simulation makes");
      continue;
    }
    for (std::size_t i = 0; i < kChannelNames.size(); ++i)
      comparison.Compare(node.name, node.animation.channels[i].get(),
                         found->second.channels[i].get());
    now.erase(found);
  }
  for (const auto& [name, animation] : now)
    report.missing.push_back(name + " has no keys and would get some");
  comparison.Finish();
  if (!report.IsSame()) FindReasons(session, before, report);
  session.GetCore().GetAdaptor()->HostUndo();
  return report;
}

}  // namespace orv::app
