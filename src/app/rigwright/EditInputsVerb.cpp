// edit-inputs.
#include <cmath>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/ProgressBar.h"
#include "app/rigwright/RunOptions.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"
#include "app/session/SceneRange.h"
#include "app/session/anyhost/InputFile.h"
#include "app/session/anyhost/Names.h"
#include "app/session/anyhost/RunRigs.h"
#include "app/session/anyhost/TrackEdit.h"
#include "app/session/anyhost/UndoBlock.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "unidevice/Property.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using Kind = TrackEdit::Kind;

struct EditKindName {
  const char* name;
  Kind kind;
};
constexpr EditKindName kEditKinds[] = {{"smooth", Kind::kSmooth}, {"shift", Kind::kShift},
                                       {"scale", Kind::kScale},   {"cut", Kind::kCut},
                                       {"blend", Kind::kBlend},   {"draw", Kind::kDraw}};

struct EditInputsOptions {
  std::string scene, kind, range, with, points, output;
  std::vector<std::string> inputs;
  std::optional<double> by, about, fade;
  bool keepKeys = false;
};

Kind KindOf(const std::string& name) {
  std::vector<std::string> known;
  for (const EditKindName& each : kEditKinds) {
    if (name == each.name) return each.kind;
    known.emplace_back(each.name);
  }
  throw WrongUsage("there is no edit " + name + ", " + HintFor(name, known, "edits"));
}

/// "2=0,2.5=1" as times and values.
std::vector<std::pair<double, double>> PointsOf(const std::string& text) {
  std::vector<std::pair<double, double>> points;
  for (std::size_t from = 0; from <= text.size();) {
    const std::size_t comma = std::min(text.find(',', from), text.size());
    const std::string part = text.substr(from, comma - from);
    const std::size_t equals = part.find('=');
    std::pair<double, double> point;
    if (equals == std::string::npos || !util::parseNumber(part.substr(0, equals), point.first) ||
        !util::parseNumber(part.substr(equals + 1), point.second))
      throw WrongUsage("--points: \"" + part + "\" is no point such as 2.5=1 (seconds=value)");
    if (!points.empty() && !(point.first > points.back().first))
      throw WrongUsage("--points: the times must rise");
    points.push_back(point);
    from = comma + 1;
  }
  return points;
}

/// What the edit takes, and nothing that it would not look at.
void CheckOptions(const EditInputsOptions& o, Kind kind) {
  const bool takesBy = kind == Kind::kSmooth || kind == Kind::kShift || kind == Kind::kScale;
  const auto check = [&o](bool takes, bool given, const char* option) {
    if (takes && !given) throw WrongUsage(o.kind + " needs " + option);
    if (!takes && given) throw WrongUsage(o.kind + " takes no " + option);
  };
  check(takesBy, o.by.has_value(), "--by");
  check(kind == Kind::kBlend, !o.with.empty(), "--with");
  check(kind == Kind::kDraw, !o.points.empty(), "--points");
  if (kind != Kind::kScale) check(false, o.about.has_value(), "--about");
  if (kind == Kind::kSmooth && !(*o.by > 0.0)) throw WrongUsage("--by must be above 0");
  const std::string wrong =
      kind == Kind::kSmooth || kind == Kind::kShift ? MustBeTime(std::abs(*o.by)) : "";
  if (!wrong.empty()) throw WrongUsage("--by: " + wrong);
}

/// "RIG:INPUT", "INPUT", or "RIG:*" for all that has been recorded of a rig.
std::vector<FoundInput> InputsOf(SceneJob& job, const std::string& text) {
  std::vector<FoundInput> found;
  if (text.size() > 2 && text.compare(text.size() - 2, 2, ":*") == 0) {
    rws::core::Instance& rig = job.FindRig(text.substr(0, text.size() - 2));
    for (const auto& [name, property] : rig.GetProperties().entries) {
      const FoundInput input{&rig, property, {}};
      const auto* track = TrackOf(input);
      if (track && !track->samples.empty()) found.push_back(input);
    }
    if (found.empty()) throw Failure(text, "nothing has been recorded of it");
    return found;
  }
  found.push_back(FindInput(job.GetCore(), text));
  if (!found.back().input) throw Failure("input " + text, found.back().why);
  return found;
}

TrackEdit EditOf(SceneJob& job, const EditInputsOptions& o) {
  TrackEdit edit;
  edit.kind = KindOf(o.kind);
  if (edit.kind == Kind::kDraw) edit.points = PointsOf(o.points);
  edit.span = SpanOf(job.GetScene(), o.range);
  if (edit.kind == Kind::kDraw && o.range.empty())
    edit.span = {edit.points.front().first, edit.points.back().first};
  edit.amount = o.by.value_or(0.0);
  edit.about = o.about.value_or(0.0);
  edit.fade = o.fade.value_or(0.0);
  return edit;
}

void Resimulated(SceneJob& job) {
  const ProgressBar bar(job.GetProgram().GetOutput(), "edit-inputs");
  const RunResult run = Resimulate(job.GetCore(), PlaybackRange(job.GetScene()), bar.GetMonitor());
  CheckInterrupt();
  if (!run.began)
    throw Failure("edit-inputs", "no rig could be simulated",
                  "check one with rigwright check, or give --keep-keys");
}

TrackEdit::Track Edited(const FoundInput& input, const TrackEdit::Track& track,
                        const TrackEdit& edit, double frame) {
  if (track.samples.empty() && edit.kind != Kind::kBlend && edit.kind != Kind::kDraw)
    throw Failure("input " + input.Name(), "nothing has been recorded of it",
                  "record it with rigwright take, or draw it");
  TrackEdit::Track edited = EditTrack(track, edit, frame);
  for (const auto& sample : edited.samples)
    if (!std::isfinite(sample.value))
      throw Failure("input " + input.Name(), "its values would pass what a number can hold",
                    "give a --by nearer to 1");
  return edited;
}

void RunEditInputs(Program& program, const EditInputsOptions& o) {
  CheckOptions(o, KindOf(o.kind));
  SceneJob job(program, o.scene);
  RequireRigs(job);
  TrackEdit edit = EditOf(job, o);
  std::vector<FoundInput> inputs;
  for (const std::string& text : o.inputs)
    for (const FoundInput& input : InputsOf(job, text)) inputs.push_back(input);
  InputFile with;
  if (edit.kind == Kind::kBlend) with = ReadInputs(job, o.with);

  UndoBlock block(*job.GetCore().GetAdaptor(), "Edit Inputs");
  std::vector<std::string> names;
  bool hasChanged = false;
  for (const FoundInput& input : inputs) {
    const auto* track = TrackOf(input);
    if (!track) throw Failure("input " + input.Name(), "it can't be recorded");
    edit.other = nullptr;
    for (std::size_t i = 0; i < with.GetTargets().size(); ++i)
      if (with.GetTargets()[i].input == input.input) edit.other = &with.GetInput().columns[i].track;
    if (edit.kind == Kind::kBlend && !edit.other)
      throw Failure(o.with, "has no column for " + input.Name());
    auto edited = Edited(input, *track, edit, job.GetScene().GetFrameDuration());
    for (const auto& sample : edited.samples)
      hasChanged =
          hasChanged || track->samples.empty() || sample.value != track->value(sample.time);
    ReplaceTrack(input, std::move(edited));
    names.push_back(input.Name());
  }
  if (!hasChanged) program.GetOutput().Warn("no input has changed from " + RangeText(edit.span));
  if (!o.keepKeys) Resimulated(job);
  block.Keep();
  job.Save(o.output);
  program.GetOutput().GetObject()["inputs"] = names;
  program.GetOutput().GetObject()["range"] = {edit.span.from, edit.span.to};
  program.GetOutput().Note("edit-inputs: " + o.kind + " of " + Joined(names) + ", " +
                           RangeText(edit.span) + ", written to " + o.output);
}

}  // namespace

void AddEditInputsVerb(Program& program) {
  auto o = std::make_shared<EditInputsOptions>();
  CLI::App& verb = program.AddVerb(
      "edit-inputs",
      "Edit recorded inputs, and simulate the rigs again from them\n"
      "smooth: by a bell of --by seconds. shift: later by --by seconds. scale: by the factor --by\n"
      "away from --about (0). cut: at rest. blend: into the column of the file --with. draw: "
      "through\n"
      "--points. Values are those of the control, before dead zone and curve.",
      "rigwright edit-inputs take.glb smooth \"Car:Gas\" --by 0.2 --range 12:15 -o calmer.glb",
      [o](Program& p) { RunEditInputs(p, *o); });
  AddScene(verb, o->scene);
  verb.add_option("EDIT", o->kind, "smooth, shift, scale, cut, blend or draw")
      ->required()
      ->type_name("");
  verb.add_option("INPUT", o->inputs, "RIG:INPUT, or RIG:* for all that was recorded of a rig")
      ->required()
      ->type_name("")
      ->expected(-1)
      ->check(CheckNotEmpty);
  AddRange(verb, o->range, "Seconds from and to (default: the playback range)");
  AddNumber(verb, "--by", o->by, "How much: seconds, or the factor of scale");
  AddNumber(verb, "--about", o->about, "Value that scale leaves alone (default: 0)");
  verb.add_option("--with", o->with, "Input file (CSV) to blend into")->type_name("FILE");
  verb.add_option("--points", o->points, "Points to draw through, times rising")
      ->type_name("s=value,s=value");
  AddNumber(verb, "--fade", o->fade, "Seconds at either end over which it comes and goes",
            [](double value) { return value >= 0.0 ? std::string() : "must not be below 0"; });
  verb.add_flag("--keep-keys", o->keepKeys, "Leave the keys as they are: no simulation");
  AddSceneOutput(verb, o->output);
}

}  // namespace orv::app
