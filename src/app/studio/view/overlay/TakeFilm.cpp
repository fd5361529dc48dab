#include "app/studio/view/overlay/TakeFilm.h"

#include <algorithm>
#include <cmath>

#include "adaptor/headless/HeadlessNode.h"
#include "util/FrameGrid.h"

namespace orv::app::view {

using util::Matrix;
using util::Vector3;

bool TakeFilm::LookSame(const Matrix<double>& a, const Matrix<double>& b) {
  constexpr double kSamePose = 1e-4;  ///< m, and parts of an axis
  constexpr double kRounding = 1e-6;  ///< of a place, far from where the film began
  for (int i = 0; i < 16; ++i)
    if (std::abs(a[i] - b[i]) > kSamePose + kRounding * std::abs(b[i])) return false;
  return true;
}

void TakeFilm::Begin(double start, double frame, std::vector<HeadlessNode*> actors) {
  m_actors = std::move(actors);
  m_poses.clear();
  m_start = start;
  m_frame = frame;
  m_stride = 1;
  m_frames = 0;
  m_origin = m_actors.empty() ? Vector3<double>() : m_actors[0]->GetWorldPose(start).translation();
}

void TakeFilm::Clear() {
  m_actors.clear();
  std::vector<Pose>().swap(m_poses);
  m_frames = 0;
}

void TakeFilm::Spare(double time, std::size_t most) {
  while ((time - m_start) / (m_frame * m_stride) * static_cast<double>(m_actors.size()) >
         static_cast<double>(most))
    m_stride *= 2;
}

/// On the frame grid to the bit, as the host has it.
double TakeFilm::TimeOf(std::size_t frame) const {
  return util::snapToFrame(m_start + static_cast<double>(frame) * m_stride * m_frame, m_frame);
}

void TakeFilm::Follow(double time, From from) {
  if (m_actors.empty()) return;
  for (double next = TimeOf(m_frames); next <= time + util::kFrameTolerance;
       next = TimeOf(m_frames)) {
    if (m_frames > 1 && m_poses.size() + m_actors.size() > kMostPoses) {
      Thin();
      continue;
    }
    for (HeadlessNode* actor : m_actors) {
      Matrix<double> pose;
      if (actor->IsValid())
        pose = from == From::kKeys ? actor->GetSceneNode()->WorldMatrix(next)
                                   : actor->GetWorldPose(next);
      const Vector3<double> place = pose.translation() - m_origin;
      Pose& kept = m_poses.emplace_back();
      for (int i = 0; i < 9; ++i) kept.axes[i] = static_cast<float>(pose[4 * (i / 3) + i % 3]);
      for (int i = 0; i < 3; ++i) kept.place[i] = static_cast<float>(place[i]);
    }
    ++m_frames;
  }
}

/// Every second frame goes.
void TakeFilm::Thin() {
  const std::size_t count = m_actors.size(), left = (m_frames + 1) / 2;
  for (std::size_t frame = 1; frame < left; ++frame)
    std::copy_n(m_poses.begin() + static_cast<std::ptrdiff_t>(2 * frame * count), count,
                m_poses.begin() + static_cast<std::ptrdiff_t>(frame * count));
  m_poses.resize(left * count);
  m_frames = left;
  m_stride *= 2;
}

bool TakeFilm::Covers(double time) const {
  return m_frames > 0 && time >= m_start - util::kFrameTolerance &&
         time < TimeOf(m_frames) - util::kFrameTolerance;
}

Matrix<double> TakeFilm::Unpack(std::size_t actor, std::size_t frame) const {
  const Pose& kept = m_poses[frame * m_actors.size() + actor];
  Matrix<double> pose;
  for (int i = 0; i < 9; ++i) pose[4 * (i / 3) + i % 3] = kept.axes[i];
  pose.setTranslation(m_origin + Vector3<double>(kept.place[0], kept.place[1], kept.place[2]));
  return pose;
}

Matrix<double> TakeFilm::GetPose(std::size_t actor, double time) const {
  const double frame = (time - m_start + util::kFrameTolerance) / (m_frame * m_stride);
  return Unpack(
      actor, static_cast<std::size_t>(std::clamp(frame, 0.0, static_cast<double>(m_frames) - 1.0)));
}

bool TakeFilm::IsSame(std::size_t frame) const {
  const double time = TimeOf(frame);
  for (std::size_t i = 0; i < m_actors.size(); ++i)
    if (m_actors[i]->IsValid() && !LookSame(Unpack(i, frame), m_actors[i]->GetWorldPose(time)))
      return false;
  return true;
}

bool TakeFilm::IsOther() const {
  constexpr std::size_t kLooks = 16;
  const std::size_t step = std::max<std::size_t>(m_frames / kLooks, 1);
  for (std::size_t frame = 0; frame < m_frames; frame += step)
    if (!IsSame(frame)) return true;
  return m_frames > 0 && !IsSame(m_frames - 1);
}

}  // namespace orv::app::view
