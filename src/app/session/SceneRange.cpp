#include "app/session/SceneRange.h"

#include <algorithm>

#include "adaptor/headless/FrameRate.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/session/SceneSession.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"

namespace orv::app {

namespace headless = rws::adaptor::headless;

namespace {

TimeSpan both(const TimeSpan& a, const TimeSpan& b) {
  return {std::min(a.from, b.from), std::max(a.to, b.to)};
}

/// The least span that has all keys and recorded inputs in it, and `span`.
TimeSpan spanWithKeys(SceneSession& session, TimeSpan span) {
  double first = 0.0, last = 0.0;
  if (session.scene().keyRange(first, last)) span = both(span, {first, last});
  for (rws::core::Instance* rig : session.core().List(false))
    for (const auto& track : rig->GetTracks())
      if (!track.samples.empty())
        span = both(span, {track.samples.front().time, track.samples.back().time});
  return span;
}

}  // namespace

TimeSpan playbackRange(const headless::Scene& scene) {
  return {scene.rangeStart(), scene.rangeEnd()};
}

TimeSpan keyedRange(const headless::Scene& scene) {
  const TimeSpan range = playbackRange(scene);
  TimeSpan keyed;
  return scene.keyRange(keyed.from, keyed.to) ? both(range, keyed) : range;
}

void stretchRange(SceneSession& session, const TimeSpan& span) {
  const TimeSpan now = both(playbackRange(session.scene()), span);
  session.adaptor().SetTimeRange(now.from, now.to);
}

void settleRange(SceneSession& session, const TimeSpan& before, const TimeSpan& performed) {
  const TimeSpan keyed = spanWithKeys(session, performed);
  session.adaptor().SetTimeRange(std::min(performed.from, std::max(before.from, keyed.from)),
                                 std::max(performed.to, std::min(before.to, keyed.to)));
}

bool hasKeysOffTheGrid(const headless::Scene& scene) {
  for (const headless::SceneNode* node : scene.nodes()) {
    const auto channels = node->animation().channels;
    for (const auto& channel : channels) {
      if (!channel) continue;
      for (const double time : channel->times())
        if (!headless::standsOnFrame(time, scene.frameRate())) return true;
    }
  }
  return false;
}

}  // namespace orv::app
