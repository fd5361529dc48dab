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

  bool changes() const { return start || end || fps; }
};

void runRange(Program& program, const RangeOptions& options) {
  SceneJob job(program, options.scene);
  auto& scene = job.scene();
  const TimeSpan span{options.start.value_or(scene.rangeStart()),
                      options.end.value_or(scene.rangeEnd())};
  if (span.to < span.from) {
    throw Failure(options.start ? "--start" : "--end",
                  "the range would go from " + rangeText(span) + ", backwards",
                  "give both --start and --end");
  }
  if (options.fps) setFrameRate(job, *options.fps);
  if (options.changes()) {
    requireFrameNumbers(span, scene.frameRate(), "the playback range",
                        "give times nearer to 0 or a lower --fps");
    scene.setRange(span.from, span.to);
    job.save(options.output);
  }
  program.output().object()["frameRate"] = scene.frameRate();
  program.output().object()["range"] = {span.from, span.to};
  program.output().line(rangeText(span) + " at " +
                        rws::adaptor::headless::frameRateText(scene.frameRate()) +
                        " frames per second");
}

}  // namespace

void addRangeVerb(Program& program) {
  auto o = std::make_shared<RangeOptions>();
  CLI::App& verb = program.addVerb(
      "range",
      "Set the playback range and the frame rate of a scene, or print them when nothing is given\n"
      "Keys and recorded inputs keep their times and their number. What lies outside of the range\n"
      "stays until a resim or take ends before it.",
      "rigwright range shot.glb --end 20 --fps 24000/1001 -o shot.glb",
      [o](Program& p) { runRange(p, *o); });
  addScene(verb, o->scene);
  addNumber(verb, "--start", o->start, "Start of the playback range (s)", mustBeTime);
  addNumber(verb, "--end", o->end, "End of the playback range (s)", mustBeTime);
  addFrameRate(verb, o->fps);
  addSceneOutput(verb, o->output)->required(false);
  verb.callback([o] {
    if (o->changes() && o->output.empty()) throw CLI::RequiredError("--output");
    if (!o->changes() && !o->output.empty())
      throw CLI::RequiredError("--start, --end or --fps, since -o is given,");
  });
}

}  // namespace orv::app
