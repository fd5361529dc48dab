// take.
#include <QCoreApplication>
#include <cmath>
#include <filesystem>
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
#include "app/session/TakeSize.h"
#include "app/session/anyhost/Names.h"
#include "app/session/anyhost/PlayedInputs.h"
#include "app/session/anyhost/Punch.h"
#include "app/session/anyhost/RunRigs.h"
#include "app/session/takes/KeptTakes.h"
#include "app/session/takes/SceneTake.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/interface/CInterface.h"
#include "core/services/DataRoot.h"
#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

struct TakeOptions {
  std::string scene, play, output;
  std::optional<double> seconds, slow, countdown, from, to, blend, preRoll;
  std::vector<std::string> only, arm;
  bool goOn = false;
};

/// Asks before a recorded performance is written over by controls that are not there.
void AskBeforeLosing(SceneJob& job, double start, const RowsToStep& only) {
  std::vector<std::string> inputs;
  auto& core = job.GetCore();
  for (const StakedInput& input : InputsAtStake(core, core.SnapToFrame(start), only))
    inputs.push_back(input.name + " (" + RangeText(input.moved) + ")");
  if (inputs.empty()) return;
  const int answer = core.MessageBox(
      "take",
      "no device drives " + Joined(inputs) + ", and the take would record zeros in place of what " +
          (inputs.size() == 1 ? "this input" : "these inputs") + " recorded. Go on?",
      rws::kButtonsYesNo);
  if (answer != rws::kAnswerYes) {
    throw Failure("take", "nothing was recorded or written",
                  "plug the device in, give --play FILE, step other rigs by --only, or say --yes");
  }
}

/// Asks before a take that can't be saved afterwards.
void AskBeforeTooMuch(SceneJob& job, const TakeOptions& options, double start,
                      const RowsToStep& only) {
  if (QString::fromStdString(options.output).endsWith(".gltf", Qt::CaseInsensitive)) return;
  const std::string why =
      WhyTakeTooLong(job.GetCore(), SizeOf(job.GetPath()), {start, start + *options.seconds}, only)
          .filled();
  if (why.empty()) return;
  if (job.GetCore().MessageBox("take", why + ". Go on?", rws::kButtonsYesNo) != rws::kAnswerYes)
    throw Failure("take", "nothing was recorded or written: " + why,
                  "give fewer --seconds or an output that ends with .gltf, step other rigs by "
                  "--only, lower the frame rate, or say --yes");
}

/// Lets Qt's event loop run until the take has ended.
void RunTake(SceneJob& job, SceneTake& take, const TakeWish& wish) {
  ProgressBar bar(job.GetProgram().GetOutput(), "take");
  job.GetUi().SetProgress(&bar);
  if (!take.Begin(wish, bar.GetMonitor(), [] { QCoreApplication::quit(); }))
    throw Failure("take", "the take could not begin");
  QCoreApplication::exec();
  job.GetUi().SetProgress(nullptr);
  CheckInterrupt();
}

/// The length that was asked for, by one option or the other.
double LengthOf(const TakeOptions& options, double start) {
  if (options.seconds.has_value() == options.to.has_value())
    throw WrongUsage("give either --seconds or --to");
  if (options.blend && !options.goOn && !options.from)
    throw WrongUsage("--blend needs --from or --go-on");
  if (options.seconds) return *options.seconds;
  if (!(*options.to > start))
    throw Failure("--to", util::shortText(*options.to) + " s is not behind the take's start, " +
                              util::shortText(start) + " s");
  return *options.to - start;
}

/// "none" arms nothing: all inputs play what they have.
void Arm(SceneJob& job, const std::vector<std::string>& names) {
  if (names == std::vector<std::string>{"none"}) {
    for (rws::core::Instance* rig : job.GetCore().List(false)) rig->SetArmed(std::vector<bool>());
    return;
  }
  const std::string problem = ArmInputs(job.GetCore(), names);
  if (!problem.empty()) throw Failure("--arm", problem);
}

/// A file that is not there yet, for the kept take that its scene could not be saved with. Empty
/// where there is none to be kept, or no place either.
std::string RescueTake(SceneJob& job) {
  const KeptTakes& takes = job.GetSession().GetTakes();
  if (takes.GetCurrent() == 0) return {};
  const std::string folder = rws::core::DataRoot::GetDataFolder() + "/takes";
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  std::string file;
  for (int i = 1; file.empty() || std::filesystem::exists(file, error); ++i)
    file = folder + "/unsaved-" + std::to_string(i) + ".takes";
  return util::writeFile(file, takes.Export(takes.GetCurrent())) ? file : std::string();
}

/// Nobody performs the same again.
void SaveTake(SceneJob& job, const std::string& output) {
  const std::string why = "a take drops what lies behind its end";
  try {
    job.Save(output, {why, why});
  } catch (const Failure& failure) {
    const std::string file = RescueTake(job);
    if (file.empty()) throw;
    throw Failure("", failure.what(),
                  "the take is not lost: rigwright takes " + job.GetPath() + " import " + file +
                      " -o SCENE, and then use it");
  }
}

void RunTakeVerb(Program& program, TakeOptions options) {
  const DeviceNotes devices(program.GetOutput());
  SceneJob job(program, options.scene);
  RequireRigs(job);
  RequireWritable(options.output);
  auto& core = job.GetCore();
  const double start = options.from.value_or(job.GetScene().GetRangeStart());
  options.seconds = LengthOf(options, start);
  Arm(job, options.arm);
  const double rate = job.GetScene().GetFrameRate();
  const TimeSpan range = PlaybackRange(job.GetScene());
  RequireFrameNumbers({start, start}, rate, options.from ? "--from" : "the playback range",
                      options.from ? "give a time nearer to 0" : "give a --from");
  RequireFrameNumbers({start, start + *options.seconds}, rate, "--seconds", "give a shorter take");
  if (options.slow) core.SetSlowFactorIndex(static_cast<int>(*options.slow));
  if (options.countdown)
    core.GetPreferences().countdownSeconds = static_cast<int>(*options.countdown);

  SceneTake take(job.GetSession());
  {
    std::unique_ptr<PlayedInputs> played;
    if (!options.play.empty())
      played = std::make_unique<PlayedInputs>(core, ReadInputs(job, options.play));
    const RowsToStep only = RowsToRun(job, options.only);
    AskBeforeTooMuch(job, options, start, only);
    AskBeforeLosing(job, SceneTake::BeginOf(core, start, only), only);
    RunTake(job, take,
            {start, *options.seconds, options.preRoll.value_or(0.0), options.goOn,
             options.blend.value_or(0.0), only});
  }
  const long frames = take.GetResult().frames;
  const TimeSpan performed = take.GetPerformed();
  const double end = take.GetWhole().to;
  SettleRange(job.GetSession(), range, {performed.from, end});
  TellRange(job, range);
  SaveTake(job, options.output);
  auto& object = program.GetOutput().GetObject();
  object["frames"] = frames;
  object["range"] = {performed.from, performed.to};
  program.GetOutput().Note("take: " + util::counted(frames, "frame") + " from " +
                           RangeText(performed) + ", written to " + options.output);
}

std::string MustBeWholeUpTo(double value, double least, double most) {
  if (value == std::floor(value) && value >= least && value <= most) return {};
  return "must be a whole number from " + util::shortText(least) + " to " + util::shortText(most);
}

}  // namespace

void AddTakeVerb(Program& program) {
  auto o = std::make_shared<TakeOptions>();
  CLI::App& verb = program.AddVerb(
      "take",
      "Perform a take against the real clock, with the devices that are present\n"
      "Records the inputs, and writes the keys when it ends. Ctrl-C throws it away.",
      "rigwright take hand.glb --seconds 5 --play hand.csv -o take.glb",
      [o](Program& p) { RunTakeVerb(p, *o); });
  AddScene(verb, o->scene);
  AddNumber(verb, "--seconds", o->seconds, "Length of the take (s)", [](double value) {
    const std::string wrong = MustBePositive(value);
    return wrong.empty() ? MustBeTime(value) : wrong;
  });
  AddNumber(verb, "--to", o->to, "End of the take (s), in place of --seconds", MustBeTime);
  verb.add_option("--play", o->play, "Input file (CSV) in place of devices, for its columns")
      ->type_name("FILE")
      ->check(CheckNotEmpty);
  AddNumber(verb, "--from", o->from, "Start of the take (s; default: the playback range's)",
            MustBeTime);
  AddNumber(verb, "--slow", o->slow,
            "Slow motion: 1 is real time, each step up halves the speed (1 to 10)",
            [](double value) { return MustBeWholeUpTo(value, 1.0, 10.0); });
  AddNumber(verb, "--countdown", o->countdown,
            "Seconds before the take begins (default: the preference)",
            [](double value) { return MustBeWholeUpTo(value, 0.0, 3600.0); });
  AddList(verb, "--only", o->only, "Step only this rig; may be repeated")->type_name("RIG");
  AddList(
      verb, "--arm", o->arm,
      "Record only this input, or RIG:* for all of a rig; the others play what was recorded. May "
      "be repeated; none arms nothing")
      ->type_name("RIG:INPUT");
  verb.add_flag("--go-on", o->goOn, "Behind the take go on with what was recorded before");
  const auto upToAnHour = [](double value) { return MustBeFrom(value, 0.0, 3600.0); };
  AddNumber(verb, "--blend", o->blend,
            "Seconds over which inputs go from the old ones to the new, and back with --go-on",
            upToAnHour);
  AddNumber(verb, "--pre-roll", o->preRoll,
            "Seconds ahead of --from at which time begins to run over what is keyed", upToAnHour);
  AddSceneOutput(verb, o->output);
}

}  // namespace orv::app
