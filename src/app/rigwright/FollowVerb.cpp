// follow.
#include <QString>
#include <memory>
#include <nlohmann/json.hpp>

#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/ProgressBar.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"
#include "app/session/LineFollowing.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/tools/Tool.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

struct FollowOptions {
  std::string scene, output;
  FollowWish wish;
};

/// To the millimetre or millisecond.
std::string FineText(double value) {
  return QString::number(value, 'f', 3).toStdString();
}

std::string SecondsText(double time) {
  return "at " + QString::number(time, 'g', 9).toStdString() + " s";
}

void TellFollowing(Output& out, const FollowResult& result) {
  const LineDistances& off = result.off;
  auto& object = out.GetObject();
  object["rig"] = result.driver;
  object["target"] = result.target;
  object["range"] = {result.span.from, result.span.to};
  object["frames"] = off.frames;
  object["length"] = off.length;
  object["distance"] = {{"mean", off.mean},
                        {"p95", off.p95},
                        {"largest", off.largest},
                        {"largestTime", off.largestTime}};
  object["delay"] = off.delay ? nlohmann::ordered_json(*off.delay) : nlohmann::ordered_json();
  object["speedDifference"] = {{"largest", off.speed}, {"time", off.speedTime}};
  object["margin"] = off.margin;
  object["left"] = off.left ? nlohmann::ordered_json(*off.left) : nlohmann::ordered_json();
  out.Line(result.driver + " follows " + result.target + ": " + util::counted(off.frames, "frame") +
           ", " + FineText(off.length) + " m, " + RangeText(result.span));
  out.Line("off the line  mean " + FineText(off.mean) + " m, 95% within " + FineText(off.p95) +
           " m, largest " + FineText(off.largest) + " m " + SecondsText(off.largestTime));
  if (off.delay)
    out.Line("at the end    " + FineText(std::abs(*off.delay)) +
             (*off.delay < 0.0 ? " s early" : " s late"));
  out.Line("speed         differs by " + FineText(off.speed) + " m/s at most, " +
           SecondsText(off.speedTime));
  if (off.left)
    out.Line("left          the line for good " + SecondsText(*off.left) + " (farther off than " +
             FineText(off.margin) + " m)");
}

void RunFollow(Program& program, const FollowOptions& o) {
  if (o.wish.inPlace && !o.wish.name.empty())
    throw WrongUsage("--as names a copy, and with --in-place there is none");
  SceneJob job(program, o.scene);
  rws::core::Instance& rig = job.FindRig(o.wish.rig);
  const std::string old = rig.GetTool()->GetConfigProfiles().GetVersionWarning(o.wish.profile);
  if (!o.wish.profile.empty() && !old.empty())
    program.GetOutput().Warn("profile " + o.wish.profile + ": " + old);
  FollowResult result;
  {
    const ProgressBar bar(program.GetOutput(), "follow");
    result = FollowPath(job.GetSession(), o.wish, bar.GetMonitor());
  }
  CheckInterrupt();
  if (result.problem) throw Failure(o.wish.rig, result.problem.filled(), result.hint.filled());
  job.Save(o.output);
  TellFollowing(program.GetOutput(), result);
}

}  // namespace

void AddFollowVerb(Program& program) {
  auto o = std::make_shared<FollowOptions>();
  CLI::App& verb = program.AddVerb(
      "follow",
      "Drive a rig's recorded path once more by itself, with another profile: same line, other "
      "feel\n"
      "A copy of the rig follows a target that leads it to where the path was, frame by frame; "
      "the\n"
      "rig stays as it is. Tells how far off the line the copy is.",
      "rigwright follow drive.glb --rig Car --profile Truck --as Truck -o truck.glb",
      [o](Program& p) { RunFollow(p, *o); });
  AddScene(verb, o->scene);
  const auto add = [&verb](const char* name, std::string& value, const char* text) {
    return verb.add_option(name, value, text)->type_name("NAME")->check(CheckNotEmpty);
  };
  add("--rig", o->wish.rig, "Name of the rig whose path it is")->required();
  add("--profile", o->wish.profile, "Config profile that drives (default: the rig as it stands)");
  add("--as", o->wish.name, "Name of the copy (default: a free one)");
  verb.add_flag("--in-place", o->wish.inPlace, "No copy: the rig itself drives anew");
  verb.add_flag("--to-end", o->wish.toEnd,
                "A rig that is late goes on behind the path's time, until the path ends");
  verb.add_flag("--as-profile", o->wish.asProfile,
                "Follow as the profile's own autonomous settings do, not as closely as can be");
  AddSceneOutput(verb, o->output);
}

}  // namespace orv::app
