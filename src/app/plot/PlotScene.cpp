// plot.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>

#include "adaptor/headless/Scene.h"
#include "adaptor/headless/SceneNode.h"
#include "app/plot/PlotBelt.h"
#include "app/plot/PlotData.h"
#include "app/plot/PlotGround.h"
#include "app/plot/PlotPainter.h"
#include "app/plot/PlotShots.h"
#include "app/plot/PlotSubject.h"
#include "app/plot/PlotWheels.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Texts.h"
#include "app/rigwright/Verbs.h"
#include "app/session/anyhost/FrameTimes.h"
#include "app/session/anyhost/RunRigs.h"
#include "core/CoreImplementation.h"
#include "core/Instance.h"
#include "unidevice/Property.h"
#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using rws::adaptor::headless::SceneNode;
using rws::core::Instance;
using Matrix = util::Matrix<double>;
using Vector = util::Vector3<double>;

struct PlotOptions {
  std::vector<std::string> scenes;
  std::string rig, range, output;
};

constexpr int kMostScenes = 8;          ///< that a page has room for
constexpr std::size_t kMostInputs = 7;  ///< curves that can be told apart in one panel

PlotPath pathOf(const SceneNode& node, const std::vector<Matrix>& poses) {
  PlotPath path;
  path.name = node.name();
  for (const Matrix& pose : poses) path.points.push_back(pose.translation());
  return path;
}

PlotCurve speedCurve(const PlotPath& path, const std::vector<double>& times) {
  PlotCurve curve;
  curve.name = path.name;
  for (std::size_t i = 1; i < times.size(); ++i) {
    curve.times.push_back(times[i]);
    curve.values.push_back((path.points[i] - path.points[i - 1]).length() /
                           (times[i] - times[i - 1]));
  }
  return curve;
}

PlotCurve heightCurve(const PlotPath& path, const std::vector<double>& times) {
  PlotCurve curve{path.name, times, {}};
  for (const Vector& point : path.points) curve.values.push_back(point.y);
  return curve;
}

PlotCurve turnSpeedCurve(const std::string& name, const std::vector<Matrix>& poses,
                         const std::vector<double>& times) {
  PlotCurve curve;
  curve.name = name;
  for (std::size_t i = 1; i < times.size(); ++i) {
    curve.times.push_back(times[i]);
    curve.values.push_back(angleBetween(poses[i - 1], poses[i]) / (times[i] - times[i - 1]));
  }
  return curve;
}

/// Whether the curves of a panel show more than rounding.
bool hasMovement(const PlotPanel& panel) {
  for (const PlotCurve& curve : panel.curves) {
    const auto [low, high] = std::minmax_element(curve.values.begin(), curve.values.end());
    if (low != curve.values.end() && *high - *low > 1e-6) return true;
  }
  return false;
}

/// How far the follower is from what it follows.
void addDifferences(PlotData& data, const std::vector<PlotSubject>& subjects) {
  PlotPanel position{"Distance to what it follows", "m", {}, {}};
  PlotPanel rotation{"Turn against what it follows", "degrees", {}, {}};
  int colour = 0;
  for (const PlotSubject& subject : subjects) {
    if (subject.followed && isCameraRig(*subject.rig)) {
      PlotCurve far{subject.chief->name(), data.times, {}};
      PlotCurve turned = far;
      for (std::size_t i = 0; i < data.times.size(); ++i) {
        const Matrix& a = subject.chiefPoses[i];
        const Matrix& b = subject.followedPoses[i];
        far.values.push_back((a.translation() - b.translation()).length());
        turned.values.push_back(angleBetween(a, b));
      }
      position.add(std::move(far), colour);
      rotation.add(std::move(turned), colour);
    }
    colour += subject.followed ? 2 : 1;
  }
  if (position.curves.empty()) return;
  data.panels.push_back(std::move(position));
  data.panels.push_back(std::move(rotation));
}

void addInputs(PlotData& data, const std::vector<PlotSubject>& subjects, Output& out) {
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
      panel.add(std::move(curve), static_cast<int>(panel.curves.size()));
    }
  }
  if (left) out.warn(std::to_string(left) + " more inputs are not drawn (choose a rig by --rig)");
  if (!panel.curves.empty()) data.panels.push_back(std::move(panel));
}

/// Paths, heights and speeds.
void addMovement(PlotData& data, const std::vector<PlotSubject>& subjects) {
  std::vector<const std::vector<Matrix>*> poses;
  for (const PlotSubject& subject : subjects) {
    data.paths.push_back(pathOf(*subject.chief, subject.chiefPoses));
    data.chief.push_back(true);
    poses.push_back(&subject.chiefPoses);
    if (!subject.followed) continue;
    data.paths.push_back(pathOf(*subject.followed, subject.followedPoses));
    data.chief.push_back(false);
    poses.push_back(&subject.followedPoses);
  }
  PlotPanel height{"Height", "m", {}, {}, false};
  PlotPanel speed{"Speed", "m/s", {}, {}};
  PlotPanel turn{"Turn speed", "degrees/s", {}, {}};
  // What is followed is drawn first, so that the follower's curve lies on it.
  for (std::size_t i = data.paths.size(); i-- > 0;) {
    const PlotPath& path = data.paths[i];
    height.add(heightCurve(path, data.times), static_cast<int>(i));
    speed.add(speedCurve(path, data.times), static_cast<int>(i));
    turn.add(turnSpeedCurve(path.name, *poses[i], data.times), static_cast<int>(i));
  }
  if (hasMovement(height)) data.panels.push_back(std::move(height));
  data.panels.push_back(std::move(speed));
  if (hasMovement(turn)) data.panels.push_back(std::move(turn));
}

/// The part of a page that shows one scene, and what to say of the whole.
struct Gathered {
  PlotData data;
  std::string rigs;      ///< their names
  std::string profiles;  ///< of the rigs, as a heading has them
  std::string frames;    ///< which times are shown
};

Gathered gather(SceneJob& job, const PlotOptions& options) {
  const auto& scene = job.scene();
  const TimeSpan span = spanOf(scene, options.range);
  Gathered result;
  PlotData& data = result.data;
  data.start = span.from;
  data.end = span.to;
  const FrameTimes frames(span.from, span.to, scene.frameDuration());
  for (long i = 0; i < frames.count(); ++i) data.times.push_back(frames.time(frames.first + i));
  if (data.times.empty()) throw Failure(job.path(), "there is no frame in the range");
  const std::vector<Instance*> rigs =
      options.rig.empty() ? job.core().List(false) : std::vector<Instance*>{&job.rig(options.rig)};
  std::vector<PlotSubject> subjects;
  for (Instance* rig : rigs) {
    checkInterrupt();
    PlotSubject subject = plotSubjectOf(*rig, data.times);
    if (subject.chief) subjects.push_back(std::move(subject));
  }
  if (subjects.empty())
    throw Failure(job.path(), "the scene has no rig to plot", "create one with rigwright add");

  addMovement(data, subjects);
  addDifferences(data, subjects);
  addWheels(data, subjects, job.program().output());
  addBelts(data, subjects, scene);
  addGround(data, subjects);
  addShots(data, subjects, scene);
  addInputs(data, subjects, job.program().output());
  std::vector<std::string> names, profiles;
  for (const PlotSubject& subject : subjects) {
    names.push_back(subject.rig->GetInstanceName());
    profiles.push_back(subject.rig->GetCurrentProfile());
  }
  result.rigs = joined(names);
  result.profiles = joined(profiles);
  result.frames = util::shortText(span.from) + " to " + util::shortText(span.to) + " s at " +
                  util::shortText(scene.frameRate()) + " frames/s";
  return result;
}

std::string viewsOf(const PlotData& data) {
  return data.views.empty() ? "top view and curves" : "top view, side views and curves";
}

PlotSheet sheetOf(Program& program, const PlotOptions& options) {
  if (options.scenes.size() > kMostScenes)
    throw WrongUsage("a page has room for " + std::to_string(kMostScenes) + " scenes");
  PlotSheet sheet;
  std::vector<std::string> titles;
  for (const std::string& path : options.scenes) {
    SceneJob job(program, path);
    Gathered scene = gather(job, options);
    if (options.scenes.size() == 1) {
      sheet.title = scene.rigs;
      sheet.subtitle = fileNameOf(path) + ", " + viewsOf(scene.data) + ", " + scene.frames;
    } else {
      scene.data.heading = fileNameOf(path) + ": " + scene.profiles;
      if (std::find(titles.begin(), titles.end(), scene.rigs) == titles.end())
        titles.push_back(scene.rigs);
      sheet.title = joined(titles, "; ");
      sheet.subtitle = viewsOf(scene.data) + ", " + scene.frames;
    }
    sheet.scenes.push_back(std::move(scene.data));
  }
  return sheet;
}

void runPlot(Program& program, const PlotOptions& options) {
  const PlotSheet sheet = sheetOf(program, options);
  const std::string picture = endingOf(options.output) == ".png" ? drawPng(sheet) : drawSvg(sheet);
  if (picture.empty()) throw Failure(options.output, "the picture could not be made");
  checkInterrupt();
  std::string error;
  if (!util::writeFile(options.output, picture, &error)) failWriting(error);
  program.output().object()["output"] = options.output;
  program.output().note("plot: written to " + options.output);
}

std::string checkPictureEnding(const std::string& path) {
  const std::string ending = endingOf(path);
  if (ending == ".svg" || ending == ".png") return {};
  // /dev/stdout may be a file, too.
  std::error_code ignored;
  const bool device = path.rfind("/dev/", 0) == 0 ||
                      std::filesystem::is_other(std::filesystem::status(path, ignored));
  if (ending.empty() && device) return {};
  return path + " does not end in .svg or .png";
}

}  // namespace

void addPlotVerb(Program& program) {
  auto o = std::make_shared<PlotOptions>();
  CLI::App& verb = program.addVerb(
      "plot",
      "Draw what rigs do: their paths from above with time marks, belts and shots from the side, "
      "and curves of speed and inputs",
      "rigwright plot out.glb --rig Cam -o paths.svg", [o](Program& p) { runPlot(p, *o); });
  program.markReadOnly(verb);
  program.markDrawing(verb);
  verb.add_option("SCENE", o->scenes, "Scene to read (.glb or .gltf); several stand side by side")
      ->required()
      ->type_name("")
      ->expected(-1)
      ->check(checkNotEmpty);
  verb.add_option("--rig", o->rig, "Only this rig (default: all)")
      ->type_name("RIG")
      ->check(checkNotEmpty);
  addRange(verb, o->range, "Seconds from and to (default: the playback range)");
  addOutput(verb, o->output, "Picture to write (.svg or .png; SVG into a pipe)")
      ->check(checkPictureEnding);
}

}  // namespace orv::app
