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
  explicit WorldPoses(const Scene& scene) : m_nodes(scene.GetNodes()) {
    std::map<const SceneNode*, int> places;
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
      const auto parent = places.find(m_nodes[i]->GetParent());
      m_parents.push_back(parent == places.end() ? -1 : parent->second);
      places[m_nodes[i]] = static_cast<int>(i);
    }
    m_world.resize(m_nodes.size());
  }

  void Evaluate(double time) {
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
      const Matrix local = m_nodes[i]->LocalMatrix(time);
      m_world[i] =
          m_parents[i] < 0 ? local : m_world[static_cast<std::size_t>(m_parents[i])] * local;
    }
  }

  const std::vector<SceneNode*>& GetNodes() const { return m_nodes; }
  const Matrix& World(std::size_t i) const { return m_world[i]; }

 private:
  std::vector<SceneNode*> m_nodes;
  std::vector<int> m_parents;  ///< place of each node's parent, -1 for the world
  std::vector<Matrix> m_world;
};

std::string PoseRow(double time, const std::string& name, const Matrix& world) {
  const Trs pose = rws::adaptor::Decompose(world);
  const double numbers[] = {
      pose.translation.x, pose.translation.y, pose.translation.z, pose.rotation.x, pose.rotation.y,
      pose.rotation.z,    pose.rotation.w,    pose.scale.x,       pose.scale.y,    pose.scale.z};
  std::string row = util::exactText(time) + "," + name;
  for (const double number : numbers) row += "," + util::exactText(number);
  return row + "\n";
}

}  // namespace

PosesResult WritePoses(const Scene& scene, const std::vector<const SceneNode*>& only,
                       const TimeSpan& span, const std::string& path, const Monitor& monitor) {
  WorldPoses poses(scene);
  const std::set<const SceneNode*> named(only.begin(), only.end());
  std::vector<std::pair<std::size_t, std::string>> wanted;  // place and the name as a CSV field
  for (std::size_t i = 0; i < poses.GetNodes().size(); ++i)
    if (named.empty() || named.count(poses.GetNodes()[i]) > 0)
      wanted.emplace_back(i, unidevice::csvField(poses.GetNodes()[i]->GetName()));

  const FrameTimes frames(span.from, span.to, scene.GetFrameDuration());
  PosesResult result;
  util::AtomicFile file(path);
  file.write("time,node,tx,ty,tz,qx,qy,qz,qw,sx,sy,sz\n");
  for (; result.frames < frames.Count(); ++result.frames) {
    result.cancelled = monitor.IsCancelled();
    if (result.cancelled) return result;
    const double time = frames.Time(frames.first + result.frames);
    poses.Evaluate(time);
    std::string rows;
    for (const auto& [place, name] : wanted) rows += PoseRow(time, name, poses.World(place));
    if (!file.write(rows)) break;
    monitor.Tell(result.frames, frames.Count());
  }
  result.cancelled = monitor.IsCancelled();
  if (!result.cancelled && !file.commit()) result.error = file.error();
  return result;
}

}  // namespace orv::app
