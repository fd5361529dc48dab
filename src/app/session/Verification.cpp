#include "app/session/Verification.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <set>

#include "adaptor/headless/FrameRate.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "adaptor/headless/SceneNode.h"
#include "app/session/SceneRange.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/RunRigs.h"
#include "app/session/anyhost/UndoBlock.h"
#include "app/session/takes/KeptTakes.h"
#include "app/session/takes/KeyOrigins.h"
#include "app/session/takes/RigSettings.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceHost.h"
#include "core/instances/InstanceReference.h"
#include "core/take/TakeUndo.h"
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
  std::string name, rig;
  headless::NodeAnimation animation;
};

using IsMeant = std::function<bool(double time)>;

bool HasKeyIn(const headless::NodeAnimation& animation, const IsMeant& isMeant) {
  for (const auto& channel : animation.channels)
    if (channel && std::any_of(channel->GetTimes().begin(), channel->GetTimes().end(), isMeant))
      return true;
  return false;
}

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
        nodes.push_back({own->GetName(), rig->GetInstanceName(), own->GetAnimation()});
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

  void Compare(const std::string& node, const IsMeant& isMeant, const headless::Channel* before,
               const headless::Channel* now) {
    if (!before || before->IsEmpty()) return;
    const auto& times = before->GetTimes();
    const auto perKey = static_cast<std::size_t>(before->ValuesPerKey());
    for (std::size_t i = 0; i < times.size(); ++i) {
      if (!isMeant(times[i])) continue;
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

void FindReasons(SceneSession& session, const std::vector<KeyedNode>& before,
                 VerifyReport& report) {
  report.reasons = FindChanges(session);
  const bool isKnown = !report.reasons.empty();
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
  if (isKnown) return;
  if (report.first && report.first->time > report.span.from + 1.5 / rate)
    report.reasons.push_back("all is the same up to " + util::shortText(report.first->time) +
                             " s: what changed acts from there on, such as the ground or an input");
  else if (report.first)
    report.reasons.push_back(
        "the first frame differs already: a parameter, a profile, a node's place or the frame rate "
        "has been changed since the keys were made");
}

/// Simulates a stretch and compares its keys, then takes all back.
class StretchCheck {
 public:
  StretchCheck(SceneSession& session, const std::vector<KeyedNode>& before, VerifyReport& report)
      : m_session(session), m_before(before), m_report(report), m_comparison(report) {}

  /// False when there is no use in going on.
  bool Check(const KeyStretch& stretch, const Monitor& monitor) {
    const KeptTakes::Pause pause(m_session.GetTakes());
    UndoBlock block(m_session.GetAdaptor(), "Verify");  // never kept
    auto& core = m_session.GetCore();
    RowsToStep rows;
    for (const auto& [name, end] : stretch.rigs) {
      if (end.isReplaced) PutBack(*core.FindInstance(name), end);
      rows.push_back(core.Find(name));
    }
    const RunResult run = Resimulate(core, stretch.span, monitor, rows);
    m_report.cancelled = run.cancelled;
    if (!run.began) m_report.problem = "no rig could be simulated";
    if (!run.began || run.cancelled) return false;
    Compare(stretch);
    return true;
  }
  void Finish() { m_comparison.Finish(); }

 private:
  /// The rig as it stood when the stretch was made, where another run has come in the place of what
  /// lay behind: its inputs held there what they did, or nothing.
  static void PutBack(Instance& rig, const KeyStretch::End& end) {
    using rws::core::TakeUndo;
    rig.GetHost().GetAdaptor()->PushUndo(new TakeUndo(rig, TakeUndo::Of::kTake));
    for (int i = 0; i < static_cast<int>(rig.GetTracks().size()); ++i) {
      auto track = rig.GetTracks()[static_cast<std::size_t>(i)];
      track.cutFrom(end.time);
      const KeptInput* kept =
          end.settings ? end.settings->Find(rig.GetProperties().property(i)->name) : nullptr;
      if (kept)
        for (const auto& sample : kept->track.samples)
          if (sample.time >= end.time) track.set(sample.time, sample.value);
      rig.SetTrack(i, std::move(track));
    }
    if (!end.settings) return;
    PutBindings(rig, end.settings->bindings);
    PutParameters(rig, *end.settings);
  }

  void Compare(const KeyStretch& stretch) {
    std::map<std::string, KeyedNode> now;
    for (KeyedNode& node : KeyedNodes(m_session)) now[node.name] = std::move(node);
    std::set<std::string> known;
    for (const KeyedNode& node : m_before) {
      known.insert(node.name);
      const IsMeant isMeant = [&](double time) { return stretch.Holds(node.rig, time); };
      if (!HasKeyIn(node.animation, isMeant)) continue;
      const auto found = now.find(node.name);
      if (found == now.end()) {
        m_report.missing.push_back(node.name + " has keys that no simulation makes");
        continue;
      }
      for (std::size_t i = 0; i < kChannelNames.size(); ++i)
        m_comparison.Compare(node.name, isMeant, node.animation.channels[i].get(),
                             found->second.animation.channels[i].get());
    }
    for (const auto& [name, node] : now) {
      const IsMeant isMeant = [&, rig = &node.rig](double time) {
        return stretch.Holds(*rig, time);
      };
      if (known.count(name) == 0 && HasKeyIn(node.animation, isMeant))
        m_report.missing.push_back(name + " has no keys and would get some");
    }
  }

  SceneSession& m_session;
  const std::vector<KeyedNode>& m_before;
  VerifyReport& m_report;
  KeyComparison m_comparison;
};

VerifyReport CheckAll(SceneSession& session, const std::vector<KeyStretch>& stretches,
                      const Monitor& monitor) {
  VerifyReport report;
  const std::vector<KeyedNode> before = KeyedNodes(session);
  report.nodes = static_cast<long>(before.size());
  if (before.empty()) report.problem = "no checked rig has keys";
  if (!report.problem.empty() || stretches.empty()) return report;
  report.span = stretches.front().span;
  for (const KeyStretch& stretch : stretches)
    report.span = {std::min(report.span.from, stretch.span.from),
                   std::max(report.span.to, stretch.span.to)};
  StretchCheck check(session, before, report);
  for (const KeyStretch& stretch : stretches)
    if (!check.Check(stretch, monitor)) return report;
  check.Finish();
  if (!report.IsSame()) FindReasons(session, before, report);
  return report;
}

}  // namespace

VerifyReport Verify(SceneSession& session, const std::optional<TimeSpan>& span,
                    const Monitor& monitor) {
  const auto cut = [&span](std::vector<KeyStretch> stretches) {
    return span ? Within(std::move(stretches), *span) : stretches;
  };
  VerifyReport report = CheckAll(session, cut(FindStretches(session)), monitor);
  if (span && report.IsSame() && report.keys == 0 && report.problem.empty() && !report.cancelled)
    report.problem = "no rig has keys from " + RangeText(*span);
  if (report.IsSame() || report.cancelled || !report.problem.empty() ||
      !session.GetTakes().GetChain().empty())
    return report;
  // Nothing is kept of how the keys were made; a take in the middle leaves a trace all the same.
  const std::vector<KeyStretch> parts = cut(FindStretchesByGaps(session));
  if (parts.size() < 2) return report;
  VerifyReport inParts = CheckAll(session, parts, monitor);
  return inParts.IsSame() ? inParts : report;
}

}  // namespace orv::app
