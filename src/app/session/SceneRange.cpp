#include "app/session/SceneRange.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "adaptor/headless/FrameRate.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "adaptor/headless/SceneNode.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/UndoBlock.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"

namespace orv::app {

namespace headless = rws::adaptor::headless;

namespace {

TimeSpan Both(const TimeSpan& a, const TimeSpan& b) {
  return {std::min(a.from, b.from), std::max(a.to, b.to)};
}

/// The least span that has all keys and recorded inputs in it, and `span`.
TimeSpan SpanWithKeys(SceneSession& session, TimeSpan span) {
  double first = 0.0, last = 0.0;
  if (session.GetScene().KeyRange(first, last)) span = Both(span, {first, last});
  for (rws::core::Instance* rig : session.GetCore().List(false))
    for (const auto& track : rig->GetTracks())
      if (!track.samples.empty())
        span = Both(span, {track.samples.front().time, track.samples.back().time});
  return span;
}

}  // namespace

TimeSpan PlaybackRange(const headless::Scene& scene) {
  return {scene.GetRangeStart(), scene.GetRangeEnd()};
}

TimeSpan KeyedRange(const headless::Scene& scene) {
  const TimeSpan range = PlaybackRange(scene);
  TimeSpan keyed;
  return scene.KeyRange(keyed.from, keyed.to) ? Both(range, keyed) : range;
}

double LastKeyOfRigs(const SceneSession& session, double none) {
  double last = -std::numeric_limits<double>::infinity();
  for (const rws::core::Instance* rig : session.GetCore().List(false)) {
    for (rws::core::CoreNode* node : rig->GetNodes()) {
      const headless::SceneNode* own = static_cast<headless::HeadlessNode*>(node)->GetSceneNode();
      if (!own) continue;
      for (const auto& channel : own->GetAnimation().channels)
        if (channel && !channel->GetTimes().empty())
          last = std::max(last, channel->GetTimes().back());
    }
  }
  return std::isfinite(last) ? last : none;
}

bool SetTiming(SceneSession& session, const TimeSpan& range, std::optional<double> rate) {
  auto& adaptor = session.GetAdaptor();
  UndoBlock block(adaptor, "Change range and rate");
  if (rate && !adaptor.SetFrameRate(*rate)) return false;
  adaptor.SetTimeRange(range.from, range.to);
  if (!(PlaybackRange(session.GetScene()) == range)) return false;
  block.Keep();
  return true;
}

void StretchRange(SceneSession& session, const TimeSpan& span) {
  const TimeSpan now = Both(PlaybackRange(session.GetScene()), span);
  session.GetAdaptor().SetTimeRange(now.from, now.to);
}

void SettleRange(SceneSession& session, const TimeSpan& before, const TimeSpan& performed) {
  const TimeSpan keyed = SpanWithKeys(session, performed);
  session.GetAdaptor().SetTimeRange(std::min(performed.from, std::max(before.from, keyed.from)),
                                    std::max(performed.to, std::min(before.to, keyed.to)));
}

bool HasKeysOffTheGrid(const headless::Scene& scene, double rate) {
  for (const headless::SceneNode* node : scene.GetNodes()) {
    const auto channels = node->GetAnimation().channels;
    for (const auto& channel : channels) {
      if (!channel) continue;
      for (const double time : channel->GetTimes())
        if (!headless::StandsOnFrame(time, rate)) return true;
    }
  }
  return false;
}

}  // namespace orv::app
