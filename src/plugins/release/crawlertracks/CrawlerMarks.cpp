// What a belt shows of its work.
#include "core/interface/RigMarks.h"
#include "plugins/release/crawlertracks/CrawlerTrack.h"
#include "util/FrameGrid.h"

namespace orv::rws::addon {

/// The speed of each step against the Frame, which carries them all.
std::intptr_t CrawlerTracks::TellMarks(RigMarks& marks) const {
  if (!m_track) return 1;
  const double time = marks.time, dt = m_pInterface->GetFrameDuration();
  const Matrix frame = m_frame.ReadMatrix(time);
  const Vector carried =
      (frame.translation() - m_frame.ReadMatrix(util::frameBefore(time, dt)).translation()) / dt;
  const double scale = FrameScale(time);
  const auto axes = util::Quat<double>::fromMatrix(frame);
  for (const auto& step : m_track->steps) {
    const auto& memory = step->linVelocity;
    if (memory.samples.empty() || memory.samples.front().time > time + util::kFrameTolerance)
      continue;
    const Vector velocity = axes.rotate(memory.value(time)) * scale - carried;
    const double speed = velocity.length();
    const Matrix pose = step->ReadMatrix(time);
    const auto turn = util::Quat<double>::fromMatrix(pose);
    marks.speeds.push_back({pose.translation() + turn.rotate(step->shape.middle) * scale,
                            speed > 0.0 ? velocity / speed : Vector(), speed});
  }
  return 1;
}

}  // namespace orv::rws::addon
