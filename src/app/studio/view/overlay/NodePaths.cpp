#include "app/studio/view/overlay/NodePaths.h"

#include <algorithm>
#include <cmath>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/studio/view/overlay/RunClock.h"
#include "util/FrameGrid.h"

namespace orv::app::view {

bool NodePaths::HasOthers(const std::vector<HeadlessNode*>& nodes) const {
  return nodes.size() != m_paths.size() ||
         !std::equal(nodes.begin(), nodes.end(), m_paths.begin(),
                     [](HeadlessNode* node, const Path& path) { return node == path.node; });
}

void NodePaths::Follow(const std::vector<HeadlessNode*>& nodes) {
  Source source{&m_host.GetScene(), m_host.GetChangeId(), 0.0, 0.0, m_core.GetFrameDuration()};
  m_host.GetTimeRange(source.start, source.end);
  const bool isRunning = m_host.IsRecording();
  if (!isRunning) {
    const bool hasRun = std::exchange(m_isRunning, false);
    if (!hasRun && !HasOthers(nodes) && source == m_source) return;
    Begin(nodes, source);
    FollowUntil(source.end);
    return;
  }
  // In a run the keys behind its start are about to go, and the range may grow.
  if (!m_isRunning || HasOthers(nodes) || m_source.scene != source.scene) {
    m_isRunning = true;
    source.start = std::min(source.start, m_core.GetStartTime());
    Begin(nodes, source);
  }
  FollowUntil(GetLatestFrame(m_core));
}

void NodePaths::Begin(const std::vector<HeadlessNode*>& nodes, const Source& source) {
  m_source = source;
  m_frame = source.frame;
  m_start = static_cast<double>(util::firstFrameFrom(source.start, m_frame)) * m_frame;
  const double points = (source.end - m_start) / m_frame *
                        static_cast<double>(std::max<std::size_t>(nodes.size(), 1));
  m_step = m_frame * std::max(1.0, std::ceil(points / static_cast<double>(kMostPoints)));
  m_paths.resize(nodes.size());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    m_paths[i].node = nodes[i];
    m_paths[i].points.clear();
  }
}

void NodePaths::FollowUntil(double time) {
  for (Path& path : m_paths) {
    if (!path.node->IsValid() || path.node->Extension(rws::kMayMove, nullptr, nullptr) != 1)
      continue;
    for (;;) {
      const double next =
          util::snapToFrame(m_start + static_cast<double>(path.points.size()) * m_step, m_frame);
      if (next > time + util::kFrameTolerance) break;
      path.points.push_back(path.node->GetWorldPose(next).translation());
    }
  }
}

}  // namespace orv::app::view
