#include "app/studio/view/overlay/Ghost.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/studio/view/overlay/RunClock.h"
#include "core/instances/Instance.h"

namespace orv::app::view {

using rws::adaptor::headless::SceneNode;

namespace {

/// Of the keys that a run replaces; to read more would hold up its first frame.
constexpr std::size_t kMostKeyPoses = 20000;

}  // namespace

void Ghost::Follow() {
  if (m_scene != &m_host.GetScene()) {
    m_latest.Clear();
    m_before.Clear();
    m_isRunning = false;
    m_isShownOld = true;
    m_scene = &m_host.GetScene();
    ++m_serial;
  }
  if (!m_host.IsRecording()) {
    if (m_isRunning) End();
    FindRounds();
    return;
  }
  if (!m_isRunning) Begin();
  FindRounds();
  m_latest.Follow(GetLatestFrame(m_core), TakeFilm::From::kHost);
}

void Ghost::Begin() {
  m_isRunning = true;
  m_isShownOld = true;
  m_isResimulation = m_core.IsResimulating();
  ++m_serial;
  m_rigs.clear();
  for (const rws::core::Instance* rig : m_core.GetTakeInstances()) m_rigs.insert(rig);
  m_known.clear();
  m_rounds = 0;
  for (SceneNode* node : m_scene->GetNodes()) m_known.insert(&m_host.NodeFor(*node));
  std::vector<HeadlessNode*> actors = FindActors();
  actors.resize(std::min(actors.size(), kMostActors));
  if (HasFilmed(actors))
    std::swap(m_before, m_latest);
  else
    FilmKeys(actors);
  m_latest.Begin(m_core.GetStartTime(), m_core.GetFrameDuration(), actors);
}

/// The frames behind the latest picture are read from the keys that the run has left. Where it was
/// rolled back these are others, and the film ends with what was seen of it.
void Ghost::End() {
  FindRounds();
  m_isRunning = false;
  m_isShownOld = true;
  if (m_latest.IsGoingOn())
    m_latest.Follow(m_isResimulation ? m_core.GetEndTime() : m_core.GetFrameTime(),
                    TakeFilm::From::kHost);
}

/// Meshes of the rigs that take part and of all that hangs on them.
std::vector<Ghost::HeadlessNode*> Ghost::FindActors() const {
  std::vector<HeadlessNode*> actors;
  std::unordered_set<const SceneNode*> carried;
  for (SceneNode* node : m_host.GetScene().GetNodes()) {
    HeadlessNode& host = m_host.NodeFor(*node);
    if (!m_rigs.count(host.GetOwner()) && !carried.count(node->GetParent())) continue;
    carried.insert(node);
    if (node->HasMesh() && node->IsVisible()) actors.push_back(&host);
  }
  return actors;
}

/// What has been fired since the latest look, and what takes the place of what is gone.
void Ghost::FindRounds() {
  if (!std::exchange(m_isTreeOld, false)) return;
  ++m_serial;
  m_isShownOld = true;
  if (m_isRunning)
    for (HeadlessNode* node : FindActors())
      if (m_rounds < kMostRounds && m_known.insert(node).second) {
        m_latest.AddRound(node);
        ++m_rounds;
      }
  const auto find = [this](const std::string& name) -> HeadlessNode* {
    SceneNode* node = m_host.GetScene().Find(name);
    return node ? &m_host.NodeFor(*node) : nullptr;
  };
  m_latest.FindRounds(find);
  m_before.FindRounds(find);
}

/// Whether the latest film has all of them.
bool Ghost::HasFilmed(const std::vector<HeadlessNode*>& actors) const {
  if (m_latest.IsEmpty()) return false;
  const auto& filmed = m_latest.GetActors();
  return std::all_of(actors.begin(), actors.end(), [&](HeadlessNode* node) {
    return std::any_of(filmed.begin(), filmed.end(),
                       [node](const TakeFilm::Actor& actor) { return actor.node == node; });
  });
}

void Ghost::FilmKeys(const std::vector<HeadlessNode*>& actors) {
  m_before.Clear();
  double start = 0.0, end = 0.0;
  const bool hasKeys = std::any_of(actors.begin(), actors.end(),
                                   [](HeadlessNode* actor) { return actor->HasKeys(); });
  if (!hasKeys || !m_scene->KeyRange(start, end)) return;
  m_before.Begin(m_core.GetStartTime(), m_core.GetFrameDuration(), actors);
  m_before.Spare(end, kMostKeyPoses);
  m_before.Follow(end, TakeFilm::From::kKeys);
}

const TakeFilm* Ghost::GetFilm() {
  if (m_isRunning) return m_before.IsEmpty() ? nullptr : &m_before;
  const int change = m_host.GetChangeId();
  if (!m_isShownOld && change == m_change) return m_shown;
  m_isShownOld = false;
  m_change = change;
  m_shown = m_latest.IsOther() ? &m_latest : m_before.IsOther() ? &m_before : nullptr;
  return m_shown;
}

}  // namespace orv::app::view
