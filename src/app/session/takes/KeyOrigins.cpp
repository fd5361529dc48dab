#include "app/session/takes/KeyOrigins.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include "adaptor/headless/FrameRate.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/session/SceneRange.h"
#include "app/session/SceneSession.h"
#include "app/session/takes/KeptTakes.h"
#include "app/session/takes/RigSettings.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "util/FrameGrid.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using rws::core::Instance;
using Rigs = std::vector<Instance*>;

constexpr double kNever = std::numeric_limits<double>::infinity();

/// From where the rigs' inputs begin, a frame ahead of what is recorded first, to their last key.
TimeSpan WholeSpan(SceneSession& session, const Rigs& rigs) {
  const TimeSpan range = PlaybackRange(session.GetScene());
  double first = kNever;
  for (Instance* rig : rigs)
    for (const auto& track : rig->GetTracks())
      if (!track.samples.empty()) first = std::min(first, track.samples.front().time);
  const double frame = session.GetScene().GetFrameDuration();
  const double from = std::isfinite(first) ? std::max(range.from, first - frame) : range.from;
  return {session.GetCore().SnapToFrame(from), LastKeyOfRigs(session, range.to)};
}

double FirstKey(const Instance& rig) {
  double first = kNever;
  for (rws::core::CoreNode* each : rig.GetNodes()) {
    const auto* node = static_cast<rws::adaptor::headless::HeadlessNode*>(each)->GetSceneNode();
    if (!node) continue;
    for (const auto& channel : node->GetAnimation().channels)
      if (channel && !channel->IsEmpty()) first = std::min(first, channel->GetTimes().front());
  }
  return first;
}

/// One run that reaches from where the rigs begin to `end`, or to their last key.
void AddWhole(SceneSession& session, const Rigs& rigs, std::optional<double> end,
              std::vector<KeyStretch>& stretches) {
  if (rigs.empty()) return;
  KeyStretch stretch;
  stretch.span = WholeSpan(session, rigs);
  if (end) stretch.span.to = *end;
  if (end && stretch.span.from > *end - util::kFrameTolerance) return;
  for (const Instance* rig : rigs)
    stretch.rigs[rig->GetInstanceName()] = {stretch.span.to, end.has_value(), nullptr};
  stretches.push_back(std::move(stretch));
}

/// The part of `chain[at]` that no later one has replaced.
KeyStretch StretchOf(const std::vector<const KeptTake*>& chain, std::size_t at, const Rigs& rigs) {
  KeyStretch stretch;
  stretch.span = {chain[at]->range.from, chain[at]->range.from};
  for (const Instance* rig : rigs) {
    const KeptRig* const kept = chain[at]->Find(rig->GetInstanceName());
    if (!kept) continue;
    KeyStretch::End end{chain[at]->range.to, false, nullptr};
    for (std::size_t i = at + 1; i < chain.size(); ++i) {
      const KeptRig* const later = chain[i]->Find(kept->name);
      if (!later) continue;
      const double from = later->isFirst ? stretch.span.from : chain[i]->range.from;
      if (!end.isReplaced || from < end.time) end = {from, true, kept};
    }
    stretch.rigs[kept->name] = end;
    stretch.span.to = std::max(stretch.span.to, std::min(end.time, chain[at]->range.to));
  }
  return stretch;
}

/// Frames without a sample between two that have one, where no input of the rig has any.
std::set<double> GapsOf(Instance& rig, double frame) {
  std::set<double> gaps;
  for (const auto& track : rig.GetTracks())
    for (std::size_t i = 1; i < track.samples.size(); ++i) {
      const double last = track.samples[i - 1].time;
      if (std::abs(track.samples[i].time - last - 2.0 * frame) < util::kFrameTolerance)
        gaps.insert((std::round(last / frame) + 1.0) * frame);
    }
  for (const auto& track : rig.GetTracks())
    for (const auto& sample : track.samples) gaps.erase(sample.time);
  return gaps;
}

/// From when on, if anywhere, an input plays something else than in the take (s).
std::optional<double> FirstChange(const KeptRig& kept, Instance& rig, const TimeSpan& span) {
  using Tracks = std::map<std::string, util::AVar_Linear<double>>;
  Tracks before, now;
  for (const KeptInput& input : kept.inputs) before[input.name] = input.track;
  for (KeptInput& input : InputsOf(rig, span.from)) now[input.name] = std::move(input.track);
  std::optional<double> first;
  for (const Tracks* one : {&before, &now}) {
    const Tracks& other = one == &before ? now : before;
    for (const auto& [name, track] : *one) {
      const auto found = other.find(name);
      for (const auto& sample : track.samples) {
        if (sample.time < span.from) continue;
        if (sample.time > span.to + util::kFrameTolerance) break;
        const bool same = found != other.end() && found->second.value(sample.time) == sample.value;
        if (!same && (!first || sample.time < *first)) first = sample.time;
      }
    }
  }
  return first;
}

}  // namespace

bool KeyStretch::Holds(const std::string& rig, double time) const {
  const auto found = rigs.find(rig);
  if (found == rigs.end() || time < span.from - util::kFrameTolerance) return false;
  const End& end = found->second;
  return time < end.time + (end.isReplaced ? -util::kFrameTolerance : util::kFrameTolerance);
}

std::vector<KeyStretch> FindStretches(SceneSession& session) {
  std::vector<KeyStretch> stretches;
  const Rigs rigs = session.GetCore().List(true);
  const std::vector<const KeptTake*> chain = session.GetTakes().GetChain();
  Rigs unknown;
  std::map<double, Rigs> earlier;  // that have keys ahead of their first run, by its start
  for (Instance* rig : rigs) {
    double start = kNever;
    for (const KeptTake* take : chain)
      if (take->Find(rig->GetInstanceName())) start = std::min(start, take->range.from);
    if (start == kNever && std::isfinite(FirstOf(*rig)))
      unknown.push_back(rig);  // else it never ran
    else if (start != kNever && FirstKey(*rig) < start - util::kFrameTolerance)
      earlier[start].push_back(rig);
  }
  AddWhole(session, unknown, {}, stretches);
  for (const auto& [start, those] : earlier) AddWhole(session, those, start, stretches);
  for (std::size_t i = 0; i < chain.size(); ++i) {
    KeyStretch stretch = StretchOf(chain, i, rigs);
    if (!stretch.rigs.empty()) stretches.push_back(std::move(stretch));
  }
  return stretches;
}

std::vector<KeyStretch> FindStretchesByGaps(SceneSession& session) {
  const Rigs rigs = session.GetCore().List(true);
  std::set<double> starts;
  for (Instance* rig : rigs)
    for (const double gap : GapsOf(*rig, session.GetScene().GetFrameDuration())) starts.insert(gap);
  std::vector<KeyStretch> stretches;
  AddWhole(session, rigs, {}, stretches);
  for (const double start : starts) {
    if (stretches.empty() || !(start > stretches.back().span.from)) continue;
    KeyStretch next = stretches.back();
    next.span.from = stretches.back().span.to = start;
    for (auto& rig : stretches.back().rigs) rig.second = {start, true, nullptr};
    stretches.push_back(std::move(next));
  }
  return stretches;
}

std::vector<KeyStretch> Within(std::vector<KeyStretch> stretches, const TimeSpan& span) {
  const auto isOutside = [&span](const KeyStretch& stretch) {
    return stretch.span.from > span.to || stretch.span.to < span.from;
  };
  stretches.erase(std::remove_if(stretches.begin(), stretches.end(), isOutside), stretches.end());
  for (KeyStretch& stretch : stretches) {
    stretch.span = {std::max(stretch.span.from, span.from), std::min(stretch.span.to, span.to)};
    for (auto& rig : stretch.rigs)
      if (rig.second.time > span.to) rig.second = {span.to, false, rig.second.settings};
  }
  return stretches;
}

std::vector<std::string> FindChanges(SceneSession& session) {
  std::vector<std::string> changes;
  const std::vector<const KeptTake*> chain = session.GetTakes().GetChain();
  if (chain.empty()) return changes;
  const double rate = session.GetScene().GetFrameRate();
  if (chain.back()->rate != rate)
    changes.push_back("the frame rate is " + rws::adaptor::headless::FrameRateText(rate) +
                      " and was " + rws::adaptor::headless::FrameRateText(chain.back()->rate));
  for (Instance* rig : session.GetCore().List(true)) {
    const KeptRig* latest = nullptr;
    for (std::size_t i = 0; i < chain.size(); ++i) {
      const KeptRig* const kept = chain[i]->Find(rig->GetInstanceName());
      if (!kept) continue;
      latest = kept;
      const KeyStretch::End end = StretchOf(chain, i, {rig}).rigs[kept->name];
      const double frame = end.isReplaced ? 0.5 * session.GetScene().GetFrameDuration() : 0.0;
      if (const auto at = FirstChange(*kept, *rig, {chain[i]->range.from, end.time - frame}))
        changes.push_back(rig->GetInstanceName() + ": recorded inputs have changed from " +
                          util::shortText(*at) + " s on");
    }
    if (!latest) continue;
    for (std::string& text : DifferencesFrom(*latest, *rig, session.GetTakes().GetSurroundings()))
      changes.push_back(std::move(text));
  }
  return changes;
}

}  // namespace orv::app
