// take.
#include <QCoreApplication>
#include <cmath>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "adaptor/headless/Scene.h"
#include "app/rigwright/DeviceNotes.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/ProgressBar.h"
#include "app/rigwright/RunOptions.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"
#include "app/session/SceneRange.h"
#include "app/session/anyhost/Names.h"
#include "app/session/anyhost/PlayedInputs.h"
#include "app/session/anyhost/RunRigs.h"
#include "core/CoreImplementation.h"
#include "core/interface/CInterface.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

struct TakeOptions {
  std::string scene, play, output;
  std::optional<double> seconds, slow, countdown, from;
  std::vector<std::string> only;
};

/// Asks before a recorded performance is written over by controls that are not there.
void askBeforeLosing(SceneJob& job, double start) {
  std::vector<std::string> inputs;
  for (const StakedInput& input : inputsAtStake(job.core(), job.core().SnapToFrame(start)))
    inputs.push_back(input.name + " (" + rangeText(input.moved) + ")");
  if (inputs.empty()) return;
  const int answer = job.core().MessageBox(
      "take",
      "no device drives " + joined(inputs) + ", and the take would record zeros in place of what " +
          (inputs.size() == 1 ? "this input" : "these inputs") + " recorded. Go on?",
      rws::kButtonsYesNo);
  if (answer != rws::kAnswerYes) {
    throw Failure("take", "nothing was recorded or written",
                  "plug the device in, give --play FILE, step other rigs by --only, or say --yes");
  }
}

/// Lets Qt's event loop run until the take has ended.
void runTake(SceneJob& job, TakeRun& take, double start, double length) {
  ProgressBar bar(job.program().output(), "take");
  job.ui().setProgress(&bar);
  if (!take.begin(start, length, bar.monitor(), [] { QCoreApplication::quit(); }))
    throw Failure("take", "the take could not begin");
  QCoreApplication::exec();
  job.ui().setProgress(nullptr);
  checkInterrupt();
}

void runTakeVerb(Program& program, const TakeOptions& options) {
  const DeviceNotes devices(program.output());
  SceneJob job(program, options.scene);
  requireRigs(job);
  auto& core = job.core();
  const double start = options.from.value_or(job.scene().rangeStart());
  const double rate = job.scene().frameRate();
  const TimeSpan range = playbackRange(job.scene());
  requireFrameNumbers({start, start}, rate, options.from ? "--from" : "the playback range",
                      options.from ? "give a time nearer to 0" : "give a --from");
  requireFrameNumbers({start, start + *options.seconds}, rate, "--seconds", "give a shorter take");
  if (options.slow) core.SetSlowFactorIndex(static_cast<int>(*options.slow));
  if (options.countdown)
    core.GetPreferences().countdownSeconds = static_cast<int>(*options.countdown);

  TakeRun take(core);
  {
    std::unique_ptr<PlayedInputs> played;
    if (!options.play.empty())
      played = std::make_unique<PlayedInputs>(core, readInputs(job, options.play));
    const OnlyRigs only(core, rowsToRun(job, options.only));
    askBeforeLosing(job, start);
    runTake(job, take, start, *options.seconds);
  }
  const long frames = take.result().frames;
  const TimeSpan performed = take.performed();
  settleRange(job.session(), range, performed);
  tellRange(job, range);
  const std::string why = "a take drops what lies behind its end";
  job.save(options.output, {why, why});
  auto& object = program.output().object();
  object["frames"] = frames;
  object["range"] = {performed.from, performed.to};
  program.output().note("take: " + std::to_string(frames) + " frames from " + rangeText(performed) +
                        ", written to " + options.output);
}

std::string mustBeWholeUpTo(double value, double least, double most) {
  if (value == std::floor(value) && value >= least && value <= most) return {};
  return "must be a whole number from " + util::shortText(least) + " to " + util::shortText(most);
}

}  // namespace

void addTakeVerb(Program& program) {
  auto o = std::make_shared<TakeOptions>();
  CLI::App& verb = program.addVerb(
      "take",
      "Perform a take against the real clock, with the devices that are present\n"
      "Records the inputs, and writes the keys when it ends. Ctrl-C throws it away.",
      "rigwright take hand.glb --seconds 5 --play hand.csv -o take.glb",
      [o](Program& p) { runTakeVerb(p, *o); });
  addScene(verb, o->scene);
  addNumber(verb, "--seconds", o->seconds, "Length of the take (s)", [](double value) {
    const std::string wrong = mustBePositive(value);
    return wrong.empty() ? mustBeTime(value) : wrong;
  })->required();
  verb.add_option("--play", o->play, "Input file (CSV) in place of devices, for its columns")
      ->type_name("FILE")
      ->check(checkNotEmpty);
  addNumber(verb, "--from", o->from, "Start of the take (s; default: the playback range's)",
            mustBeTime);
  addNumber(verb, "--slow", o->slow,
            "Slow motion: 1 is real time, each step up halves the speed (1 to 10)",
            [](double value) { return mustBeWholeUpTo(value, 1.0, 10.0); });
  addNumber(verb, "--countdown", o->countdown,
            "Seconds before the take begins (default: the preference)",
            [](double value) { return mustBeWholeUpTo(value, 0.0, 3600.0); });
  addList(verb, "--only", o->only, "Step only this rig; may be repeated")->type_name("RIG");
  addSceneOutput(verb, o->output);
}

}  // namespace orv::app
