#include "app/plot/PlotScene.h"

#include <algorithm>
#include <utility>

#include "adaptor/headless/Scene.h"
#include "adaptor/headless/SceneNode.h"
#include "app/plot/PlotBelt.h"
#include "app/plot/PlotGround.h"
#include "app/plot/PlotShots.h"
#include "app/plot/PlotSubject.h"
#include "app/plot/PlotWheels.h"
#include "app/session/anyhost/FrameTimes.h"
#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/Names.h"
#include "app/session/anyhost/TimeSpan.h"
#include "core/instances/Instance.h"
#include "unidevice/Property.h"
#include "util/NumberText.h"

namespace orv::app {

using rws::adaptor::headless::SceneNode;
using rws::core::Instance;
using Matrix = util::Matrix<double>;
using Vector = util::Vector3<double>;

namespace {

constexpr std::size_t kMostInputs = 7;  ///< curves that can be told apart in one panel

PlotPath PathOf(const SceneNode& node, const std::vector<Matrix>& poses) {
  PlotPath path;
  path.name = node.GetName();
  for (const Matrix& pose : poses) path.points.push_back(pose.translation());
  return path;
}

PlotCurve SpeedCurve(const PlotPath& path, const std::vector<double>& times) {
  PlotCurve curve;
  curve.name = path.name;
  for (std::size_t i = 1; i < times.size(); ++i) {
    curve.times.push_back(times[i]);
    curve.values.push_back((path.points[i] - path.points[i - 1]).length() /
                           (times[i] - times[i - 1]));
  }
  return curve;
}

PlotCurve HeightCurve(const PlotPath& path, const std::vector<double>& times) {
  PlotCurve curve{path.name, times, {}};
  for (const Vector& point : path.points) curve.values.push_back(point.y);
  return curve;
}

PlotCurve TurnSpeedCurve(const std::string& name, const std::vector<Matrix>& poses,
                         const std::vector<double>& times) {
  PlotCurve curve;
  curve.name = name;
  for (std::size_t i = 1; i < times.size(); ++i) {
    curve.times.push_back(times[i]);
    curve.values.push_back(AngleBetween(poses[i - 1], poses[i]) / (times[i] - times[i - 1]));
  }
  return curve;
}

/// Whether the curves of a panel show more than rounding.
bool HasMovement(const PlotPanel& panel) {
  for (const PlotCurve& curve : panel.curves) {
    const auto [low, high] = std::minmax_element(curve.values.begin(), curve.values.end());
    if (low != curve.values.end() && *high - *low > 1e-6) return true;
  }
  return false;
}

/// How far the follower is from what it follows.
void AddDifferences(PlotData& data, const std::vector<PlotSubject>& subjects) {
  PlotPanel position{"Distance to what it follows", "m", {}, {}};
  PlotPanel rotation{"Turn against what it follows", "degrees", {}, {}};
  int colour = 0;
  for (const PlotSubject& subject : subjects) {
    if (subject.followed && IsCameraRig(*subject.rig)) {
      PlotCurve far{subject.chief->GetName(), data.times, {}};
      PlotCurve turned = far;
      for (std::size_t i = 0; i < data.times.size(); ++i) {
        const Matrix& a = subject.chiefPoses[i];
        const Matrix& b = subject.followedPoses[i];
        far.values.push_back((a.translation() - b.translation()).length());
        turned.values.push_back(AngleBetween(a, b));
      }
      position.Add(std::move(far), colour);
      rotation.Add(std::move(turned), colour);
    }
    colour += subject.followed ? 2 : 1;
  }
  if (position.curves.empty()) return;
  data.panels.push_back(std::move(position));
  data.panels.push_back(std::move(rotation));
}

/// The number of inputs that are left out.
std::size_t AddInputs(PlotData& data, const std::vector<PlotSubject>& subjects) {
  PlotPanel panel{"Recorded inputs", "", {}, {}};
  std::size_t left = 0;
  for (const PlotSubject& subject : subjects) {
    const auto& entries = subject.rig->GetProperties().entries;
    const auto& tracks = subject.rig->GetTracks();
    for (std::size_t i = 0; i < entries.size() && i < tracks.size(); ++i) {
      const auto& samples = tracks[i].samples;
      const bool silent = std::all_of(samples.begin(), samples.end(),
                                      [](const auto& sample) { return sample.value == 0.0; });
      if (silent) continue;
      if (panel.curves.size() == kMostInputs) {
        ++left;
        continue;
      }
      PlotCurve curve;
      curve.name = (subjects.size() > 1 ? subject.rig->GetInstanceName() + ":" : std::string()) +
                   entries[i].first;
      for (const auto& sample : samples) {
        curve.times.push_back(sample.time);
        curve.values.push_back(sample.value);
      }
      panel.Add(std::move(curve), static_cast<int>(panel.curves.size()));
    }
  }
  if (!panel.curves.empty()) data.panels.push_back(std::move(panel));
  return left;
}

/// Paths, heights and speeds.
void AddMovement(PlotData& data, const std::vector<PlotSubject>& subjects) {
  std::vector<const std::vector<Matrix>*> poses;
  for (const PlotSubject& subject : subjects) {
    data.paths.push_back(PathOf(*subject.chief, subject.chiefPoses));
    data.chief.push_back(true);
    poses.push_back(&subject.chiefPoses);
    if (!subject.followed) continue;
    data.paths.push_back(PathOf(*subject.followed, subject.followedPoses));
    data.chief.push_back(false);
    poses.push_back(&subject.followedPoses);
  }
  PlotPanel height{"Height", "m", {}, {}, false};
  PlotPanel speed{"Speed", "m/s", {}, {}};
  PlotPanel turn{"Turn speed", "degrees/s", {}, {}};
  // What is followed is drawn first, so that the follower's curve lies on it.
  for (std::size_t i = data.paths.size(); i-- > 0;) {
    const PlotPath& path = data.paths[i];
    height.Add(HeightCurve(path, data.times), static_cast<int>(i));
    speed.Add(SpeedCurve(path, data.times), static_cast<int>(i));
    turn.Add(TurnSpeedCurve(path.name, *poses[i], data.times), static_cast<int>(i));
  }
  if (HasMovement(height)) data.panels.push_back(std::move(height));
  data.panels.push_back(std::move(speed));
  if (HasMovement(turn)) data.panels.push_back(std::move(turn));
}

std::string ViewsOf(const PlotData& data) {
  return data.views.empty() ? "top view and curves" : "top view, side views and curves";
}

}  // namespace

PlottedScene PlotScene(const rws::adaptor::headless::Scene& scene,
                       const std::vector<Instance*>& rigs, const TimeSpan& span,
                       const std::string& file, const Monitor& monitor) {
  PlottedScene result;
  result.file = file;
  PlotData& data = result.data;
  data.start = span.from;
  data.end = span.to;
  const FrameTimes frames(span.from, span.to, scene.GetFrameDuration());
  for (long i = 0; i < frames.Count(); ++i) data.times.push_back(frames.Time(frames.first + i));
  if (data.times.empty()) return result;
  std::vector<PlotSubject> subjects;
  for (Instance* rig : rigs) {
    result.cancelled = monitor.IsCancelled();
    if (result.cancelled) return result;
    PlotSubject subject = PlotSubjectOf(*rig, data.times);
    if (subject.chief) subjects.push_back(std::move(subject));
    monitor.Tell(static_cast<long>(subjects.size()), static_cast<long>(rigs.size()));
  }
  if (subjects.empty()) return result;

  AddMovement(data, subjects);
  AddDifferences(data, subjects);
  if (const std::size_t left = AddWheels(data, subjects))
    result.warnings.push_back("the wheels of " + util::counted(left, "more rig") +
                              " are not drawn");
  AddBelts(data, subjects, scene);
  AddGround(data, subjects);
  AddShots(data, subjects, scene);
  if (const std::size_t left = AddInputs(data, subjects))
    result.warnings.push_back(util::counted(left, "more input is", "more inputs are") +
                              " not drawn");
  std::vector<std::string> names, profiles;
  for (const PlotSubject& subject : subjects) {
    names.push_back(subject.rig->GetInstanceName());
    profiles.push_back(subject.rig->GetCurrentProfile());
  }
  result.rigs = Joined(names);
  result.profiles = Joined(profiles);
  result.frames = util::shortText(span.from) + " to " + util::shortText(span.to) + " s at " +
                  util::shortText(scene.GetFrameRate()) + " frames/s";
  return result;
}

PlotSheet SheetOf(std::vector<PlottedScene> scenes) {
  PlotSheet sheet;
  const bool alone = scenes.size() == 1;
  std::vector<std::string> titles;
  for (PlottedScene& scene : scenes) {
    if (!alone) scene.data.heading = scene.file + ": " + scene.profiles;
    if (std::find(titles.begin(), titles.end(), scene.rigs) == titles.end())
      titles.push_back(scene.rigs);
    sheet.subtitle = (alone ? scene.file + ", " : "") + ViewsOf(scene.data) + ", " + scene.frames;
    sheet.scenes.push_back(std::move(scene.data));
  }
  sheet.title = Joined(titles, "; ");
  return sheet;
}

}  // namespace orv::app
