#include "app/session/PosesFile.h"

#include <map>
#include <set>
#include <utility>

#include "adaptor/headless/Scene.h"
#include "app/session/anyhost/FrameTimes.h"
#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/TimeSpan.h"
#include "unidevice/software/CsvReader.h"
#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::app {

using rws::adaptor::Trs;
using rws::adaptor::headless::Scene;
using rws::adaptor::headless::SceneNode;
using Matrix = util::Matrix<double>;

namespace {

/// World poses of all nodes at one time after another.
class WorldPoses {
 public:
  explicit WorldPoses(const Scene& scene) : m_nodes(scene.nodes()) {
    std::map<const SceneNode*, int> places;
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
      const auto parent = places.find(m_nodes[i]->parent());
      m_parents.push_back(parent == places.end() ? -1 : parent->second);
      places[m_nodes[i]] = static_cast<int>(i);
    }
    m_world.resize(m_nodes.size());
  }

  void evaluate(double time) {
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
      const Matrix local = m_nodes[i]->localMatrix(time);
      m_world[i] =
          m_parents[i] < 0 ? local : m_world[static_cast<std::size_t>(m_parents[i])] * local;
    }
  }

  const std::vector<SceneNode*>& nodes() const { return m_nodes; }
  const Matrix& world(std::size_t i) const { return m_world[i]; }

 private:
  std::vector<SceneNode*> m_nodes;
  std::vector<int> m_parents;  ///< place of each node's parent, -1 for the world
  std::vector<Matrix> m_world;
};

std::string poseRow(double time, const std::string& name, const Matrix& world) {
  const Trs pose = rws::adaptor::decompose(world);
  const double numbers[] = {
      pose.translation.x, pose.translation.y, pose.translation.z, pose.rotation.x, pose.rotation.y,
      pose.rotation.z,    pose.rotation.w,    pose.scale.x,       pose.scale.y,    pose.scale.z};
  std::string row = util::exactText(time) + "," + name;
  for (const double number : numbers) row += "," + util::exactText(number);
  return row + "\n";
}

}  // namespace

PosesResult writePoses(const Scene& scene, const std::vector<const SceneNode*>& only,
                       const TimeSpan& span, const std::string& path, const Monitor& monitor) {
  WorldPoses poses(scene);
  const std::set<const SceneNode*> named(only.begin(), only.end());
  std::vector<std::pair<std::size_t, std::string>> wanted;  // place and the name as a CSV field
  for (std::size_t i = 0; i < poses.nodes().size(); ++i)
    if (named.empty() || named.count(poses.nodes()[i]) > 0)
      wanted.emplace_back(i, unidevice::csvField(poses.nodes()[i]->name()));

  const FrameTimes frames(span.from, span.to, scene.frameDuration());
  PosesResult result;
  util::AtomicFile file(path);
  file.write("time,node,tx,ty,tz,qx,qy,qz,qw,sx,sy,sz\n");
  for (; result.frames < frames.count(); ++result.frames) {
    result.cancelled = monitor.isCancelled();
    if (result.cancelled) return result;
    const double time = frames.time(frames.first + result.frames);
    poses.evaluate(time);
    std::string rows;
    for (const auto& [place, name] : wanted) rows += poseRow(time, name, poses.world(place));
    if (!file.write(rows)) break;
    monitor.tell(result.frames, frames.count());
  }
  result.cancelled = monitor.isCancelled();
  if (!result.cancelled && !file.commit()) result.error = file.error();
  return result;
}

}  // namespace orv::app
