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

void TakeFilm::Begin(double start, double frame, const std::vector<HeadlessNode*>& nodes) {
  Clear();
  for (HeadlessNode* node : nodes)
    m_actors.push_back({node, node->GetSceneName(), MeshLook::Of(*node->GetSceneNode())});
  m_start = start;
  m_frame = frame;
  m_stride = 1;
  m_origin =
      m_actors.empty() ? Vector3<double>() : m_actors[0].node->GetWorldPose(start).translation();
}

void TakeFilm::AddRound(HeadlessNode* node) {
  m_actors.push_back(
      {node, node->GetSceneName(), MeshLook::Of(*node->GetSceneNode()), true, m_frames});
}

void TakeFilm::Clear() {
  std::vector<Actor>().swap(m_actors);
  m_frames = m_poses = 0;
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

bool TakeFilm::IsThere(const Actor& actor) {
  return actor.node->IsValid();
}

void TakeFilm::Add(Actor& actor, double time, From from) {
  if (!IsThere(actor)) {
    actor.poses.push_back(actor.poses.empty() ? Pose{} : actor.poses.back());
    return;
  }
  const Matrix<double> pose = from == From::kKeys ? actor.node->GetSceneNode()->WorldMatrix(time)
                                                  : actor.node->GetWorldPose(time);
  const Vector3<double> place = pose.translation() - m_origin;
  Pose kept;
  for (int i = 0; i < 9; ++i) kept.axes[i] = static_cast<float>(pose[4 * (i / 3) + i % 3]);
  for (int i = 0; i < 3; ++i) kept.place[i] = static_cast<float>(place[i]);
  actor.poses.push_back(kept);
}

void TakeFilm::Follow(double time, From from) {
  if (m_actors.empty()) return;
  for (double next = TimeOf(m_frames); next <= time + util::kFrameTolerance;
       next = TimeOf(m_frames)) {
    if (m_frames > 1 && m_poses + m_actors.size() > kMostPoses) {
      Thin();
      continue;
    }
    for (Actor& actor : m_actors) Add(actor, next, from);
    m_poses += m_actors.size();
    ++m_frames;
  }
}

/// Every second frame goes.
void TakeFilm::Thin() {
  m_poses = 0;
  for (Actor& actor : m_actors) {
    const std::size_t first = (actor.first + 1) / 2;
    std::size_t left = 0;
    for (std::size_t old = 2 * first - actor.first; old < actor.poses.size(); old += 2)
      actor.poses[left++] = actor.poses[old];
    actor.poses.resize(left);
    actor.first = first;
    m_poses += left;
  }
  m_frames = (m_frames + 1) / 2;
  m_stride *= 2;
}

bool TakeFilm::Covers(double time) const {
  return m_frames > 0 && time >= m_start - util::kFrameTolerance &&
         time < TimeOf(m_frames) - util::kFrameTolerance;
}

Matrix<double> TakeFilm::Unpack(const Pose& kept) const {
  Matrix<double> pose;
  for (int i = 0; i < 9; ++i) pose[4 * (i / 3) + i % 3] = kept.axes[i];
  pose.setTranslation(m_origin + Vector3<double>(kept.place[0], kept.place[1], kept.place[2]));
  return pose;
}

bool TakeFilm::GetPose(const Actor& actor, double time, Matrix<double>& pose) const {
  const double at = (time - m_start + util::kFrameTolerance) / (m_frame * m_stride);
  const auto frame =
      static_cast<std::size_t>(std::clamp(at, 0.0, static_cast<double>(m_frames) - 1.0));
  if (frame < actor.first) return false;
  pose = Unpack(actor.poses[frame - actor.first]);
  return true;
}

/// A round that is gone is another take's; of a rig that is gone nothing is missed.
bool TakeFilm::IsSame(std::size_t frame) const {
  const double time = TimeOf(frame);
  bool isAny = false, misses = false;
  for (const Actor& actor : m_actors) {
    if (frame < actor.first) continue;
    if (!IsThere(actor)) {
      misses = misses || actor.isRound;
      continue;
    }
    isAny = isAny || !actor.isRound;
    if (!LookSame(Unpack(actor.poses[frame - actor.first]), actor.node->GetWorldPose(time)))
      return false;
  }
  return !(misses && isAny);
}

bool TakeFilm::IsOther() const {
  constexpr std::size_t kLooks = 16;
  const std::size_t step = std::max<std::size_t>(m_frames / kLooks, 1);
  for (std::size_t frame = 0; frame < m_frames; frame += step)
    if (!IsSame(frame)) return true;
  return m_frames > 0 && !IsSame(m_frames - 1);
}

}  // namespace orv::app::view
