#include "app/plot/PlotShots.h"

#include <algorithm>

#include "adaptor/headless/Scene.h"
#include "adaptor/headless/SceneNode.h"
#include "app/plot/PlotCut.h"
#include "app/plot/PlotSubject.h"
#include "core/instances/Instance.h"

namespace orv::app {

using rws::adaptor::headless::SceneNode;
using Matrix = util::Matrix<double>;
using Vector = util::Vector3<double>;

namespace {

/// The way of one projectile.
struct Shot {
  double birth = 0.0;          ///< s
  std::vector<Vector> points;  ///< from its birth to where it stays, with its corners (m)
  std::vector<Vector> hits;    ///< those corners
};

/// Its places from its birth to its rest. Before it is born a projectile is too small to be seen.
std::vector<Vector> FlightOf(const SceneNode& node, const std::vector<double>& times,
                             double& birth) {
  const std::vector<Matrix> poses = PosesOf(node, times);
  const double grown = poses.back().rowLengths().length() * 0.5;
  std::vector<Vector> points;
  for (std::size_t i = 0; i < poses.size(); ++i) {
    if (poses[i].rowLengths().length() < grown) continue;
    if (points.empty()) birth = times[i];
    points.push_back(poses[i].translation());
  }
  while (points.size() > 1 && points.back() == points[points.size() - 2]) points.pop_back();
  return points;
}

/// How the way of one frame before the k-th point differs from that of one frame after the next.
Vector TurnAt(const std::vector<Vector>& p, std::size_t k) {
  return (p[k + 2] - p[k + 1]) - (p[k] - p[k - 1]);
}

/// A hit lies between two frames: where the ways of the frames before and after meet so that both
/// parts make a frame. The frames beside it show a smaller turn.
Shot ShotOf(const std::vector<Vector>& p, double birth, double frameDuration) {
  constexpr double kLeastPart = 0.3;   ///< of the speed that a hit changes
  constexpr double kLeastSpeed = 2.0;  ///< m/s, that a hit changes; free flight changes less
  Shot shot{birth, {}, {}};
  for (std::size_t k = 0; k < p.size(); ++k) {
    shot.points.push_back(p[k]);
    if (k == 0 || k + 2 >= p.size()) continue;
    const Vector in = p[k] - p[k - 1], turn = TurnAt(p, k);
    const double size = turn.length();
    if (size < std::max(kLeastPart * in.length(), kLeastSpeed * frameDuration)) continue;
    if (k > 1 && TurnAt(p, k - 1).length() >= size) continue;
    if (k + 3 < p.size() && TurnAt(p, k + 1).length() > size) continue;
    const Vector miss = p[k] + (p[k + 2] - p[k + 1]) - p[k + 1];
    const double part = std::clamp(miss.dot(turn) / (size * size), 0.0, 1.0);
    shot.hits.push_back(p[k] + in * part);
    shot.points.push_back(shot.hits.back());
  }
  return shot;
}

/// Number of shots by time.
std::vector<double> CountsOf(const std::vector<Shot>& shots, const std::vector<double>& times) {
  std::vector<double> counts;
  for (const double time : times) {
    const auto isFired = [time](const Shot& shot) { return shot.birth <= time; };
    counts.push_back(static_cast<double>(std::count_if(shots.begin(), shots.end(), isFired)));
  }
  return counts;
}

/// How far the barrel stands from where it stands at first, by time (m).
std::vector<double> RecoilOf(const SceneNode& trigger, const SceneNode& barrel,
                             const std::vector<double>& times) {
  const std::vector<Matrix> triggers = PosesOf(trigger, times), barrels = PosesOf(barrel, times);
  std::vector<double> recoil;
  Vector rest;
  for (std::size_t i = 0; i < times.size(); ++i) {
    const Vector place = triggers[i].affineInverse().transformPoint(barrels[i].translation());
    if (i == 0) rest = place;
    recoil.push_back((place - rest).length() * triggers[i].rowLengths().z);
  }
  return recoil;
}

/// Level and unit; to the right where the gun fires straight up or all round.
Vector MeanAim(const SceneNode& barrel, const std::vector<Shot>& shots) {
  Vector sum;
  for (const Shot& shot : shots) sum += -barrel.WorldMatrix(shot.birth).axisRow(2).normalized();
  sum.y = 0.0;
  return sum.length() > 1e-6 ? sum.normalized() : Vector(1.0, 0.0, 0.0);
}

}  // namespace

void AddShots(PlotData& data, const std::vector<PlotSubject>& subjects,
              const rws::adaptor::headless::Scene& scene) {
  PlotPanel fired{"Shots fired", "", {}, {}};
  PlotPanel recoil{"Recoil of the barrel", "m", {}, {}};
  int pen = 0;
  for (const PlotSubject& subject : subjects) {
    const int own = pen;
    pen += subject.followed ? 2 : 1;
    const SceneNode* const trigger = RigNode(*subject.rig, "fire trigger");
    const SceneNode* const barrel = RigNode(*subject.rig, "barrel");
    if (!trigger || !barrel) continue;
    std::vector<Shot> shots;
    for (const SceneNode* node : RigNodes(*subject.rig, kShotName)) {
      double birth = 0.0;
      const std::vector<Vector> points = FlightOf(*node, data.times, birth);
      if (points.size() > 1) shots.push_back(ShotOf(points, birth, scene.GetFrameDuration()));
    }
    if (shots.empty()) continue;
    const std::string rig = subject.rig->GetInstanceName();
    const Vector muzzle = shots.front().points.front(), up(0.0, 1.0, 0.0);
    PlotView view{rig + ": the shots from the side", MeanAim(*barrel, shots), {}, {}};
    view.lines = CutOf(scene, shots.front().birth, muzzle, view.across.cross(up));
    for (PlotLine& line : CutOf(scene, shots.front().birth, muzzle, up))
      data.lines.push_back(std::move(line));
    for (const Shot& shot : shots) {
      const bool first = &shot == &shots.front();
      const PlotLine line{shot.points, own, 0.8, false, first ? rig + ", shots and hits" : ""};
      for (auto* const lines : {&view.lines, &data.lines}) lines->push_back(line);
      for (auto* const marks : {&view.marks, &data.marks})
        marks->insert(marks->end(), shot.hits.begin(), shot.hits.end());
    }
    data.views.push_back(std::move(view));
    fired.Add({rig, data.times, CountsOf(shots, data.times)}, own);
    recoil.Add({rig, data.times, RecoilOf(*trigger, *barrel, data.times)}, own);
  }
  if (fired.curves.empty()) return;
  data.panels.push_back(std::move(fired));
  const auto isStill = [](const PlotCurve& curve) {
    return *std::max_element(curve.values.begin(), curve.values.end()) < 1e-9;
  };
  if (!std::all_of(recoil.curves.begin(), recoil.curves.end(), isStill))
    data.panels.push_back(std::move(recoil));
}

}  // namespace orv::app
