#include "app/plot/PlotBelt.h"

#include <algorithm>
#include <cmath>

#include "adaptor/headless/SceneNode.h"
#include "app/plot/PlotCut.h"
#include "app/plot/PlotSubject.h"
#include "core/instances/Instance.h"
#include "util/Angles.h"
#include "util/CMesh.h"
#include "util/NumberText.h"

namespace orv::app {

using rws::adaptor::headless::SceneNode;
using Matrix = util::Matrix<double>;
using Vector = util::Vector3<double>;
using Poses = std::vector<Matrix>;

namespace {

constexpr std::size_t kViews = 4;

/// Of a mesh, in its node's space (m).
struct Box {
  Vector low, high;
};

Box BoxOf(const SceneNode& node) {
  const util::CMesh* const mesh = node.HasMesh() ? node.GetMesh() : nullptr;
  if (!mesh || mesh->vertices.empty()) return {};
  Box box{mesh->vertices.front(), mesh->vertices.front()};
  for (const Vector& vertex : mesh->vertices) {
    for (int i = 0; i < 3; ++i) {
      box.low[i] = std::min(box.low[i], vertex[i]);
      box.high[i] = std::max(box.high[i], vertex[i]);
    }
  }
  return box;
}

struct Belt {
  const PlotSubject* subject;
  int pen;  ///< of the driveWheel's path
  const SceneNode *frame, *driveWheel;
  std::vector<const SceneNode*> steps;  ///< in the order of the chain
  Poses framePoses;
  std::vector<Poses> stepPoses;
  Box step;
};

std::vector<Belt> BeltsOf(const PlotData& data, const std::vector<PlotSubject>& subjects) {
  std::vector<Belt> belts;
  int pen = 0;
  for (const PlotSubject& subject : subjects) {
    Belt belt{&subject,
              pen,
              RigNode(*subject.rig, "Frame"),
              RigNode(*subject.rig, "driveWheel"),
              RigNodes(*subject.rig, "step"),
              {},
              {},
              {}};
    pen += subject.followed ? 2 : 1;
    if (!belt.frame || !belt.driveWheel || belt.steps.size() < 2) continue;
    belt.framePoses = PosesOf(*belt.frame, data.times);
    for (const SceneNode* step : belt.steps) belt.stepPoses.push_back(PosesOf(*step, data.times));
    belt.step = BoxOf(*belt.steps.front());
    belts.push_back(std::move(belt));
  }
  return belts;
}

const std::string& NameOf(const Belt& belt) {
  return belt.subject->rig->GetInstanceName();
}

// --- curves ---

/// Mean way of the steps within the Frame from frame to frame, by time (m/s).
PlotCurve BeltSpeed(const Belt& belt, const std::vector<double>& times) {
  PlotCurve curve{NameOf(belt) + ", mean of the steps", {}, {}};
  const double unit = belt.framePoses.front().rowLengths().z;
  for (std::size_t i = 1; i < times.size(); ++i) {
    const Matrix before = belt.framePoses[i - 1].affineInverse();
    const Matrix now = belt.framePoses[i].affineInverse();
    double way = 0.0;
    for (const Poses& step : belt.stepPoses)
      way += (now.transformPoint(step[i].translation()) -
              before.transformPoint(step[i - 1].translation()))
                 .length();
    curve.times.push_back(times[i]);
    curve.values.push_back(way * unit / static_cast<double>(belt.stepPoses.size()) /
                           (times[i] - times[i - 1]));
  }
  return curve;
}

/// Speed of the driveWheel at the middle of the steps that lie on it (m/s).
PlotCurve RimSpeed(const Belt& belt, const std::vector<double>& times) {
  PlotCurve curve{NameOf(belt) + ", rim of the driveWheel", {}, {}};
  const Poses wheel = PosesOf(*belt.driveWheel, times);
  const double radius =
      BoxOf(*belt.driveWheel).high.y * wheel.front().rowLengths().y +
      (belt.step.high.y - belt.step.low.y) / 2.0 * belt.stepPoses.front().front().rowLengths().y;
  for (std::size_t i = 1; i < times.size(); ++i) {
    const double turn = AngleBetween(belt.framePoses[i - 1].affineInverse() * wheel[i - 1],
                                     belt.framePoses[i].affineInverse() * wheel[i]);
    curve.times.push_back(times[i]);
    curve.values.push_back(turn * util::kRadiansPerDegree * radius / (times[i] - times[i - 1]));
  }
  return curve;
}

/// Between the end of a step and the beginning of the next, in percent of a step's length.
PlotCurve WidestGap(const Belt& belt, const std::vector<double>& times) {
  PlotCurve curve{NameOf(belt), times, {}};
  const Vector middle = (belt.step.low + belt.step.high) * 0.5;
  const Vector begin(middle.x, middle.y, belt.step.low.z),
      end(middle.x, middle.y, belt.step.high.z);
  for (std::size_t i = 0; i < times.size(); ++i) {
    double widest = 0.0, length = 1.0;
    for (std::size_t k = 0; k < belt.stepPoses.size(); ++k) {
      const Matrix& step = belt.stepPoses[k][i];
      const Matrix& next = belt.stepPoses[(k + 1) % belt.stepPoses.size()][i];
      const Vector here = step.transformPoint(end);
      widest = std::max(widest, (next.transformPoint(begin) - here).length());
      length = (here - step.transformPoint(begin)).length();
    }
    curve.values.push_back(length > 0.0 ? 100.0 * widest / length : 0.0);
  }
  return curve;
}

// --- side views ---

PlotLine StepOutline(const Box& box, const Matrix& pose, int pen) {
  PlotLine line{{}, pen, 1.1, true, {}};
  const double x = (box.low.x + box.high.x) / 2.0;
  for (const auto& [y, z] : {std::pair{box.low.y, box.low.z},
                             {box.low.y, box.high.z},
                             {box.high.y, box.high.z},
                             {box.high.y, box.low.z}})
    line.points.push_back(pose.transformPoint({x, y, z}));
  return line;
}

/// The rim and two spokes, one of which is whole, so that its turn shows.
void AddWheel(std::vector<PlotLine>& lines, const SceneNode& wheel, double time, int pen) {
  constexpr int kCorners = 32;
  const Matrix pose = wheel.WorldMatrix(time);
  const double radius = BoxOf(wheel).high.y;
  const auto at = [&](double angle, double share) {
    return pose.transformPoint(
        {0.0, share * radius * std::cos(angle), share * radius * std::sin(angle)});
  };
  PlotLine rim{{}, pen, 1.4, true, {}};
  for (int i = 0; i < kCorners; ++i)
    rim.points.push_back(at(360.0 * util::kRadiansPerDegree * i / kCorners, 1.0));
  lines.push_back(std::move(rim));
  lines.push_back({{at(0.0, 1.0), at(0.0, -1.0)}, pen, 1.0, false, {}});
  lines.push_back({{at(0.0, 0.0), at(90.0 * util::kRadiansPerDegree, 1.0)}, pen, 1.0, false, {}});
}

PlotView SideView(const Belt& belt, std::size_t frame, double time,
                  const rws::adaptor::headless::Scene& scene) {
  PlotView view;
  view.title = NameOf(belt) + " at " + util::shortText(time) + " s";
  // The belt's forward is the Frame's -Z.
  const Vector forward = -belt.framePoses[frame].axisRow(2);
  const Vector level(forward.x, 0.0, forward.z);
  if (level.length() > 1e-6) view.across = level.normalized();
  const Vector normal = view.across.cross(Vector(0.0, 1.0, 0.0));
  view.lines = CutOf(scene, time, belt.driveWheel->WorldMatrix(time).translation(), normal);
  for (const char* kind : {"driveWheel", "bogie", "supportBogie"})
    for (const SceneNode* wheel : RigNodes(*belt.subject->rig, kind))
      AddWheel(view.lines, *wheel, time, belt.pen + 1);
  for (const Poses& step : belt.stepPoses)
    view.lines.push_back(StepOutline(belt.step, step[frame], belt.pen));
  return view;
}

}  // namespace

void AddBelts(PlotData& data, const std::vector<PlotSubject>& subjects,
              const rws::adaptor::headless::Scene& scene) {
  const std::vector<Belt> belts = BeltsOf(data, subjects);
  if (belts.empty()) return;
  PlotPanel speed{"Speed of the belt", "m/s", {}, {}};
  PlotPanel gap{"Widest gap between two steps", "% of a step", {}, {}};
  int pen = 0;
  for (const Belt& belt : belts) {
    speed.Add(RimSpeed(belt, data.times), pen + 1);
    speed.Add(BeltSpeed(belt, data.times), pen);
    gap.Add(WidestGap(belt, data.times), pen);
    pen += 2;
  }
  data.panels.push_back(std::move(speed));
  data.panels.push_back(std::move(gap));
  const std::size_t last = data.times.size() - 1;
  const std::size_t views = std::min(kViews, data.times.size());
  for (std::size_t i = 0; i < views; ++i) {
    const std::size_t frame = views > 1 ? last * i / (views - 1) : 0;
    data.views.push_back(SideView(belts.front(), frame, data.times[frame], scene));
  }
}

}  // namespace orv::app
