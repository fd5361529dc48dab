// plot.
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>

#include "adaptor/headless/Scene.h"
#include "app/plot/PlotPainter.h"
#include "app/plot/PlotScene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/RunOptions.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"
#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/Names.h"
#include "util/AtomicFile.h"

namespace orv::app {

namespace {

struct PlotOptions {
  std::vector<std::string> scenes;
  std::string rig, range, output;
};

PlottedScene Gather(Program& program, const PlotOptions& options, const std::string& path) {
  SceneJob job(program, path);
  PlottedScene plotted =
      PlotScene(job.GetScene(), RigsNamed(job, options.rig), SpanOf(job.GetScene(), options.range),
                FileNameOf(path), Monitor({}, &InterruptFlag()));
  CheckInterrupt();
  if (plotted.data.times.empty()) throw Failure(path, "there is no frame in the range");
  if (plotted.data.paths.empty())
    throw Failure(path, "the scene has no rig to plot", "create one with rigwright add");
  for (const std::string& text : plotted.warnings)
    program.GetOutput().Warn(text + " (choose a rig by --rig)");
  return plotted;
}

void RunPlot(Program& program, const PlotOptions& options) {
  if (options.scenes.size() > kMostScenes)
    throw WrongUsage("a page has room for " + std::to_string(kMostScenes) + " scenes");
  std::vector<PlottedScene> scenes;
  for (const std::string& path : options.scenes) scenes.push_back(Gather(program, options, path));
  const PlotSheet sheet = SheetOf(std::move(scenes));
  const std::string picture = EndingOf(options.output) == ".png" ? DrawPng(sheet) : DrawSvg(sheet);
  if (picture.empty()) throw Failure(options.output, "the picture could not be made");
  CheckInterrupt();
  std::string error;
  if (!util::writeFile(options.output, picture, &error)) FailWriting(error);
  program.GetOutput().GetObject()["output"] = options.output;
  program.GetOutput().Note("plot: written to " + options.output);
}

std::string CheckPictureEnding(const std::string& path) {
  const std::string ending = EndingOf(path);
  if (ending == ".svg" || ending == ".png") return {};
  // /dev/stdout may be a file, too.
  std::error_code ignored;
  const bool device = path.rfind("/dev/", 0) == 0 ||
                      std::filesystem::is_other(std::filesystem::status(path, ignored));
  if (ending.empty() && device) return {};
  return path + " does not end in .svg or .png";
}

}  // namespace

void AddPlotVerb(Program& program) {
  auto o = std::make_shared<PlotOptions>();
  CLI::App& verb = program.AddVerb(
      "plot",
      "Draw what rigs do: their paths from above with time marks, belts and shots from the side, "
      "and curves of speed and inputs",
      "rigwright plot out.glb --rig Cam -o paths.svg", [o](Program& p) { RunPlot(p, *o); });
  program.MarkReadOnly(verb);
  program.MarkDrawing(verb);
  verb.add_option("SCENE", o->scenes, "Scene to read (.glb or .gltf); several stand side by side")
      ->required()
      ->type_name("")
      ->expected(-1)
      ->check(CheckNotEmpty);
  verb.add_option("--rig", o->rig, "Only this rig (default: all)")
      ->type_name("RIG")
      ->check(CheckNotEmpty);
  AddRange(verb, o->range, "Seconds from and to (default: the playback range)");
  AddOutput(verb, o->output, "Picture to write (.svg or .png; SVG into a pipe)")
      ->check(CheckPictureEnding);
}

}  // namespace orv::app
