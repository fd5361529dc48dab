#include "app/sweep/SweepMeasuring.h"

#include <algorithm>
#include <cmath>

#include "adaptor/headless/Scene.h"
#include "adaptor/headless/SceneNode.h"
#include "app/plot/PlotSubject.h"
#include "app/session/SceneSession.h"
#include "app/session/anyhost/FrameTimes.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/interface/CCamera.h"
#include "util/Angles.h"

namespace orv::app {

namespace {

using SweptVector = util::Vector3<double>;

constexpr std::size_t kMostPathPoints = 300;

/// The largest angle (degrees) between straight up and what stood so at the first pose.
double LargestLean(const std::vector<util::Matrix<double>>& poses) {
  const SweptVector up(0.0, 1.0, 0.0);
  const auto first = util::Quat<double>::fromMatrix(poses.front());
  const SweptVector own = first.conjugate().rotate(up);
  double lean = 0.0;
  for (const auto& pose : poses) {
    const SweptVector now = util::Quat<double>::fromMatrix(pose).rotate(own);
    lean = std::max(lean, std::atan2(now.cross(up).length(), now.dot(up)));
  }
  return lean * util::kDegreesPerRadian;
}

}  // namespace

SweepMeasuring::SweepMeasuring(SceneSession& session, rws::core::Instance& rig,
                               const TimeSpan& span)
    : m_session(session),
      m_rig(rig),
      m_span(span),
      m_frame(session.GetScene().GetFrameDuration()) {}

void SweepMeasuring::NoteFrame() {
  // A resimulation tells the frame that it is about to step.
  m_marks.Begin(m_session.GetCore().GetFrameTime() - m_frame);
  m_rig.GetRig()->Extension(rws::kTellMarks, &m_marks, nullptr);
  double slip = 0.0;
  int touching = 0;
  for (const auto& contact : m_marks.contacts) {
    if (!(contact.load > 0.0)) continue;
    ++touching;
    slip += contact.slip.length();
    m_slip = std::max(m_slip, contact.slip.length());
  }
  m_touched = m_touched || touching > 0;
  if (touching > 0)
    m_slipped += slip / touching * m_frame;
  else if (m_touched)
    ++m_airFrames;
}

void SweepMeasuring::Finish(const std::string& near, SweepRow& row) {
  const auto& scene = m_session.GetScene();
  const FrameTimes frames(m_span.from, m_span.to, m_frame);
  std::vector<double> times;
  for (long i = 0; i < frames.Count(); ++i) times.push_back(frames.Time(frames.first + i));
  const PlotSubject subject = PlotSubjectOf(m_rig, times);
  if (!subject.chief || times.empty()) {
    row.error = "the rig has nothing to measure";
    return;
  }
  const auto* const other = near.empty() ? nullptr : scene.Find(near);
  double length = 0.0, speed = 0.0, distance = 0.0;
  for (std::size_t i = 0; i < times.size(); ++i) {
    const SweptVector here = subject.chiefPoses[i].translation();
    if (other) {
      const double far = (other->WorldMatrix(times[i]).translation() - here).length();
      distance = i == 0 ? far : std::min(distance, far);
    }
    if (i == 0) continue;
    const double way = (here - subject.chiefPoses[i - 1].translation()).length();
    length += way;
    speed = std::max(speed, way / m_frame);
  }
  row.measures[kSweepLength] = length;
  row.measures[kSweepSpeed] = speed;
  row.measures[kSweepLean] = LargestLean(subject.chiefPoses);
  if (other) row.measures[kSweepNear] = distance;
  if (m_touched) {
    row.measures[kSweepAir] = static_cast<double>(m_airFrames) * m_frame;
    row.measures[kSweepSlip] = m_slip;
    row.measures[kSweepSlipped] = m_slipped;
  }
  const std::size_t step = (times.size() + kMostPathPoints - 1) / kMostPathPoints;
  for (std::size_t i = 0; i < times.size(); i += step) {
    const SweptVector here = subject.chiefPoses[i].translation();
    // To the millimetre, which no picture shows.
    row.path.emplace_back(std::round(here.x * 1e3) / 1e3, std::round(here.z * 1e3) / 1e3);
  }
}

}  // namespace orv::app
