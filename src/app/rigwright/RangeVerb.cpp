// range.
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "adaptor/headless/FrameRate.h"
#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/RunOptions.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"

namespace orv::app {

namespace {

struct RangeOptions {
  std::string scene, output;
  std::optional<double> start, end, fps;

  bool Changes() const { return start || end || fps; }
};

void RunRange(Program& program, const RangeOptions& options) {
  SceneJob job(program, options.scene);
  auto& scene = job.GetScene();
  const TimeSpan span{options.start.value_or(scene.GetRangeStart()),
                      options.end.value_or(scene.GetRangeEnd())};
  if (span.to < span.from) {
    throw Failure(options.start ? "--start" : "--end",
                  "the range would go from " + RangeText(span) + ", backwards",
                  "give both --start and --end");
  }
  const double rate = options.fps.value_or(scene.GetFrameRate());
  WarnOfRate(job, rate);
  if (options.Changes()) {
    RequireFrameNumbers(span, rate, "the playback range",
                        "give times nearer to 0 or a lower --fps");
    ChangeTiming(job, span, options.fps);
    job.Save(options.output);
  }
  program.GetOutput().GetObject()["frameRate"] = rate;
  program.GetOutput().GetObject()["range"] = {span.from, span.to};
  program.GetOutput().Line(RangeText(span) + " at " + rws::adaptor::headless::FrameRateText(rate) +
                           " frames per second");
}

}  // namespace

void AddRangeVerb(Program& program) {
  auto o = std::make_shared<RangeOptions>();
  CLI::App& verb = program.AddVerb(
      "range",
      "Set the playback range and the frame rate of a scene, or print them when nothing is given\n"
      "Keys and recorded inputs keep their times and their number. What lies outside of the range\n"
      "stays until a resim or take ends before it.",
      "rigwright range shot.glb --end 20 --fps 24000/1001 -o shot.glb",
      [o](Program& p) { RunRange(p, *o); });
  AddScene(verb, o->scene);
  AddNumber(verb, "--start", o->start, "Start of the playback range (s)", MustBeTime);
  AddNumber(verb, "--end", o->end, "End of the playback range (s)", MustBeTime);
  AddFrameRate(verb, o->fps);
  AddSceneOutput(verb, o->output)->required(false);
  verb.callback([o] {
    if (o->Changes() && o->output.empty()) throw CLI::RequiredError("--output");
    if (!o->Changes() && !o->output.empty())
      throw CLI::RequiredError("--start, --end or --fps, since -o is given,");
  });
}

}  // namespace orv::app
