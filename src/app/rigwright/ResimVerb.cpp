// resim.
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
#include "app/session/anyhost/RunRigs.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

struct ResimOptions {
  std::string scene, inputs, range, output;
  std::optional<double> fps;
  std::vector<std::string> assignments, only;
};

RunResult RunFrames(SceneJob& job, const TimeSpan& span, const RowsToStep& only) {
  const ProgressBar bar(job.GetProgram().GetOutput(), "resim");
  const RunResult result = Resimulate(job.GetCore(), span, bar.GetMonitor(), only);
  if (!result.began) throw Failure("resim", "the run could not begin");
  CheckInterrupt();
  return result;
}

void RunResim(Program& program, const ResimOptions& options) {
  SceneJob job(program, options.scene);
  RequireRigs(job);
  for (const std::string& assignment : options.assignments) job.SetParameter(assignment);
  const TimeSpan span = SpanOf(job.GetScene(), options.range);
  if (options.fps) {
    WarnOfRate(job, *options.fps);
    ChangeTiming(job, PlaybackRange(job.GetScene()), options.fps);
    RequireFrameNumbers(span, *options.fps, "--fps", "give a lower rate or a shorter --range");
  }
  if (!options.inputs.empty()) ReadInputs(job, options.inputs).PutIntoTracks();

  const RunResult run = RunFrames(job, span, RowsToRun(job, options.only));
  const TimeSpan range = PlaybackRange(job.GetScene());
  StretchRange(job.GetSession(), span);
  TellRange(job, range);
  job.Save(options.output, {"they lie behind the end of the run (a longer --range keeps them)",
                            "the columns of " + options.inputs + " stand in their place"});
  const double seconds = run.seconds;
  const double rate = seconds > 0.0 ? static_cast<double>(run.frames) / seconds : 0.0;
  auto& object = program.GetOutput().GetObject();
  object["frames"] = run.frames;
  object["range"] = {span.from, span.to};
  object["seconds"] = seconds;
  object["framesPerSecond"] = rate;
  const std::string time =
      seconds < 0.01 ? "" : " in " + util::shortText(std::round(seconds * 100.0) / 100.0) + " s";
  program.GetOutput().Note("resim: " + util::counted(run.frames, "frame") + time + ", " +
                           std::to_string(std::lround(rate)) + " frames/s, written to " +
                           options.output);
}

}  // namespace

void AddResimVerb(Program& program) {
  auto o = std::make_shared<ResimOptions>();
  CLI::App& verb = program.AddVerb(
      "resim",
      "Simulate the rigs again from their recorded inputs, or from a file's, and write the keys\n"
      "The frame at the start of the range is where the rigs begin; it is not simulated.",
      "rigwright resim cam.glb --range 0:20 --set \"Cam:Translation Response Factor=50\" "
      "-o out.glb",
      [o](Program& p) { RunResim(p, *o); });
  AddScene(verb, o->scene);
  verb.add_option("--inputs", o->inputs, "Input file (CSV) whose columns replace recorded tracks")
      ->type_name("FILE")
      ->check(CheckNotEmpty);
  AddRange(verb, o->range, "Seconds from and to (default: the playback range)");
  AddFrameRate(verb, o->fps);
  AddList(verb, "--set", o->assignments, "Set a parameter first; may be repeated")
      ->type_name("RIG:LABEL=VALUE")
      ->check(CheckAssignment);
  AddList(verb, "--only", o->only, "Step only this rig; may be repeated")->type_name("RIG");
  AddSceneOutput(verb, o->output);
}

}  // namespace orv::app
